#include "LiveWorker.h"

#include "WorkerPlayer.h"
#include "WorkerChannel.h"

#include "Simulator.h"

#include <UIKit/RecordPolicy.h>

#include <csignal>
#include <filesystem>
#include <cstdlib>
#include <sys/prctl.h>
#include <unistd.h>

namespace sim::live {

static volatile sig_atomic_t stopRequested = 0;

static void requestStop(int) { stopRequested = 1; }

// A fresh host must start from the device as it was when the session began,
// whatever earlier hosts wrote into it: with --root, each worker gets a
// copy of that folder (the folder itself is left as it is), removed when
// the worker ends.
class DeviceRootCopy {
public:
    std::string make(const std::filesystem::path& original)
    {
        char name[] = "/tmp/kavelin-live-root-XXXXXX";
        if (!mkdtemp(name))
            return "cannot make a copy of the device root " + original.string();
        m_path = name;
        std::error_code error;
        std::filesystem::copy(original, m_path, std::filesystem::copy_options::recursive | std::filesystem::copy_options::copy_symlinks, error);
        return error ? "cannot copy the device root " + original.string() + ": " + error.message() : std::string();
    }
    ~DeviceRootCopy()
    {
        std::error_code ignored;
        if (!m_path.empty())
            std::filesystem::remove_all(m_path, ignored);
    }
    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

int LiveWorker::run()
{
    // The worker never outlives its server.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() == 1)
        return ExitHostFailed;
    struct sigaction action {};
    action.sa_handler = requestStop;
    action.sa_flags = SA_RESTART;
    sigaction(SIGUSR1, &action, nullptr);

    WorkerChannel channel(requestDescriptor, answerDescriptor);
    auto hello = channel.receive();
    if (!hello || hello->header.value("op", "") != "hello")
        return ExitHostFailed;
    const auto& header = hello->header;
    std::error_code ignored;
    std::filesystem::current_path(header.value("folder", "."), ignored);

    DeviceRootCopy root;
    if (std::string original = header.value("root", ""); !original.empty()) {
        if (std::string error = root.make(original); !error.empty()) {
            channel.send({ { "op", "ready" }, { "error", error } });
            return ExitHostFailed;
        }
    }
    Simulator simulator(header.value("out", "."), root.path());
    simulator.setRecordPolicy(RecordPolicy(RecordPolicy::modeNamed(header.value("record", "")).value_or(RecordMode::Missing)));
    if (auto error = simulator.prepare(); !error.empty()) {
        channel.send({ { "op", "ready" }, { "error", error } });
        return ExitHostFailed;
    }
    auto shouldStop = [] { return stopRequested != 0; };
    simulator.setStopRequest(shouldStop);
    WorkerPlayer player(simulator, channel, shouldStop);
    if (!channel.send({ { "op", "ready" } }))
        return ExitHostFailed;

    while (auto request = channel.receive()) {
        std::string op = request->header.value("op", "");
        bool answered = false;
        if (op == "play") {
            stopRequested = 0;
            answered = player.play(request->header.value("file", "live"), request->header.value("text", ""), request->header.value("afterBoot", true));
        } else if (op == "shot") {
            answered = player.sendShot();
        } else if (op == "dump") {
            answered = player.sendDump();
        } else if (op == "settings") {
            answered = player.sendSettings();
        } else {
            answered = channel.send({ { "op", "error" }, { "error", "unknown request '" + op + "'" } });
        }
        if (!answered)
            break;
    }
    return ExitSuccess;
}

}
