#pragma once

#include "Phone.h"

#include <atomic>
#include <filesystem>
#include <memory>
#include <mutex>
#include <sys/types.h>

namespace sim::live {

// The phone as a child process: kavelin-sim itself, started again with
// `--live-worker` (spawned, never forked from the server's threads), talking
// over two pipes. Each start() ends the previous worker and starts a fresh
// one, so that the extension loads into a fresh process.
class WorkerProcess final : public Phone {
public:
    struct Folders {
        std::filesystem::path output;
        std::filesystem::path root; // empty: each worker makes a temporary one
        std::filesystem::path scenario; // where relative host paths resolve
        std::string recordMode { "missing" }; // what expect-shot does with references
    };
    explicit WorkerProcess(Folders);
    ~WorkerProcess() override;

    std::string start() override;
    PlayOutcome play(const PlayRequest&, const ProgressHandler&) override;
    std::optional<std::string> shot() override;
    std::optional<std::string> dump() override;
    std::optional<std::string> settings() override;
    void requestStop() override;
    void kill() override;

private:
    void end();
    std::optional<std::string> ask(const char* op);
    // Why the worker is gone, once it is (reaped here).
    std::string exitDescription();

    Folders m_folders;
    std::unique_ptr<WorkerChannel> m_channel;
    // Read by requestStop() and kill() from other threads.
    std::atomic<pid_t> m_pid { -1 };
    std::mutex m_reapLock;
};

}
