#include "WorkerProcess.h"

#include "LiveWorker.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace sim::live {

WorkerProcess::WorkerProcess(Folders folders)
    : m_folders(std::move(folders))
{
}

WorkerProcess::~WorkerProcess() { end(); }

// Keeps a pipe's end clear of the descriptors the worker is handed, so that
// every one of them is a real dup2 in the child.
static int aboveWorkerDescriptors(int descriptor)
{
    if (descriptor > LiveWorker::answerDescriptor)
        return descriptor;
    int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, 10);
    close(descriptor);
    return moved;
}

std::string WorkerProcess::start()
{
    end();
    int toWorker[2], fromWorker[2];
    if (pipe2(toWorker, O_CLOEXEC) != 0)
        return std::string("cannot make a pipe: ") + std::strerror(errno);
    if (pipe2(fromWorker, O_CLOEXEC) != 0) {
        close(toWorker[0]), close(toWorker[1]);
        return std::string("cannot make a pipe: ") + std::strerror(errno);
    }
    for (int* end : { &toWorker[0], &toWorker[1], &fromWorker[0], &fromWorker[1] })
        *end = aboveWorkerDescriptors(*end);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, toWorker[0], LiveWorker::requestDescriptor);
    posix_spawn_file_actions_adddup2(&actions, fromWorker[1], LiveWorker::answerDescriptor);
    // What the phone prints outside a line's answer goes with the server's messages.
    posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions, LiveWorker::answerDescriptor + 1);

    // The server blocks its stop signals for a thread of its own; the worker
    // starts with none blocked, in a process group of its own, so that a ^C
    // reaches the server, which then ends the worker.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none, defaults;
    sigemptyset(&none);
    sigemptyset(&defaults);
    for (int signal : { SIGPIPE, SIGINT, SIGTERM, SIGUSR1 })
        sigaddset(&defaults, signal);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);

    std::error_code error;
    std::string program = std::filesystem::read_symlink("/proc/self/exe", error).string();
    std::string option = LiveWorker::option;
    char* arguments[] = { program.data(), option.data(), nullptr };
    pid_t pid = -1;
    int spawned = posix_spawn(&pid, program.c_str(), &actions, &attributes, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    close(toWorker[0]);
    close(fromWorker[1]);
    if (spawned != 0) {
        close(toWorker[1]), close(fromWorker[0]);
        return "cannot start the phone: " + std::string(std::strerror(spawned));
    }
    m_pid = pid;
    m_channel = std::make_unique<WorkerChannel>(fromWorker[0], toWorker[1]);

    nlohmann::json hello { { "op", "hello" }, { "out", m_folders.output.string() }, { "root", m_folders.root.string() },
        { "folder", m_folders.scenario.string() }, { "record", m_folders.recordMode } };
    std::optional<WorkerMessage> ready;
    if (m_channel->send(hello))
        ready = m_channel->receive();
    if (!ready || ready->header.value("op", "") != "ready") {
        std::string why = exitDescription();
        end();
        return "the phone did not start (" + why + ")";
    }
    if (ready->header.contains("error")) {
        std::string why = ready->header.value("error", "");
        end();
        return "the phone did not start: " + why;
    }
    return {};
}

void WorkerProcess::end()
{
    if (m_channel)
        m_channel->close();
    m_channel.reset();
    // A worker reads the end of its requests and leaves; one busy in a long
    // line is stopped.
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    std::lock_guard lock(m_reapLock);
    pid_t pid = m_pid;
    if (pid <= 0)
        return;
    int status = 0;
    while (waitpid(pid, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            ::kill(pid, SIGKILL);
            waitpid(pid, &status, 0);
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    m_pid = -1;
}

std::string WorkerProcess::exitDescription()
{
    if (m_channel)
        m_channel->close();
    m_channel.reset();
    std::lock_guard lock(m_reapLock);
    pid_t pid = m_pid;
    if (pid <= 0)
        return "it was not running";
    int status = 0;
    pid_t reaped;
    do
        reaped = waitpid(pid, &status, 0);
    while (reaped < 0 && errno == EINTR);
    m_pid = -1;
    if (reaped != pid)
        return "it went away";
    if (WIFEXITED(status))
        return "exit status " + std::to_string(WEXITSTATUS(status));
    if (WIFSIGNALED(status))
        return std::string("ended by signal ") + std::to_string(WTERMSIG(status)) + ", " + strsignal(WTERMSIG(status));
    return "it went away";
}

PlayOutcome WorkerProcess::play(const PlayRequest& request, const ProgressHandler& progress)
{
    PlayOutcome outcome;
    auto stopped = [&] {
        outcome.phoneStopped = true;
        outcome.stopMessage = "the phone stopped (" + exitDescription() + ")";
        return outcome;
    };
    if (!m_channel || !m_channel->send({ { "op", "play" }, { "file", request.fileName }, { "text", request.text }, { "afterBoot", request.afterBoot } }))
        return stopped();
    while (auto message = m_channel->receive()) {
        const auto& header = message->header;
        std::string op = header.value("op", "");
        if (op == "progress") {
            if (progress)
                progress(*message);
        } else if (op == "line") {
            PlayedLine line;
            line.line = header.value("line", 0);
            line.status = header.value("status", 0);
            line.messages = header.value("messages", "");
            line.output = header.value("output", "");
            if (header.contains("playedAs") && header["playedAs"].is_string())
                line.playedAs = header["playedAs"].get<std::string>();
            outcome.lines.push_back(std::move(line));
        } else if (op == "warnings") {
            outcome.warnings += header.value("text", "");
        } else if (op == "done") {
            outcome.stoppedBetweenLines = header.value("stopped", false);
            // The worker reads what it was sent again; a mistake found there
            // comes back as a line that could not play.
            for (const auto& error : header.value("errors", nlohmann::json::array()))
                outcome.lines.push_back({ 0, 2, error.is_string() ? error.get<std::string>() + "\n" : "", "", std::nullopt });
            return outcome;
        }
    }
    return stopped();
}

std::optional<std::string> WorkerProcess::ask(const char* op)
{
    if (!m_channel || !m_channel->send({ { "op", op } }))
        return std::nullopt;
    auto answer = m_channel->receive();
    if (!answer) {
        exitDescription();
        return std::nullopt;
    }
    if (answer->header.value("op", "") != op || answer->header.contains("error"))
        return std::nullopt;
    return std::move(answer->payload);
}

std::optional<std::string> WorkerProcess::shot() { return ask("shot"); }
std::optional<std::string> WorkerProcess::dump() { return ask("dump"); }
std::optional<std::string> WorkerProcess::settings() { return ask("settings"); }

void WorkerProcess::requestStop()
{
    std::lock_guard lock(m_reapLock);
    if (m_pid > 0)
        ::kill(m_pid, SIGUSR1);
}

void WorkerProcess::kill()
{
    std::lock_guard lock(m_reapLock);
    if (m_pid > 0)
        ::kill(m_pid, SIGKILL);
}

}
