#include "ScenarioRunner.h"

#include "scenario/ScenarioParts.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <sys/wait.h>
#include <unistd.h>

namespace sim {

ScenarioRunner::ScenarioRunner(Settings settings, Warnings& warnings)
    : m_settings(std::move(settings))
    , m_warnings(warnings)
{
}

std::string ScenarioRunner::summary(const RunCounts& counts, const std::filesystem::path& outputDirectory)
{
    auto plural = [](size_t count, const char* word) { return std::to_string(count) + " " + word + (count == 1 ? "" : "s"); };
    return "played " + plural(counts.played, "command") + ", " + plural(counts.expectsHeld, "expect") + " held, "
        + std::to_string(counts.expectsFailed) + " failed, wrote " + plural(counts.filesWritten, "file") + " in " + outputDirectory.string();
}

int ScenarioRunner::playPart(const std::vector<Command>& commands, const std::filesystem::path& root, RunCounts& counts)
{
    Simulator simulator(m_settings.outputDirectory, root);
    simulator.setWarnings(m_warnings);
    simulator.setTrace(m_settings.trace);
    simulator.setRecordPolicy(m_settings.recordPolicy);
    if (auto error = simulator.prepare(); !error.empty()) {
        std::cerr << "kavelin-sim: " << error << "\n";
        return ExitHostFailed;
    }
    int status = simulator.play(commands);
    counts = simulator.counts();
    if (m_settings.listWrittenFiles) {
        for (auto& file : simulator.writtenFiles())
            std::cout << "  " << file.string() << "\n";
    }
    return status;
}

// The child plays the part and sends its exit status and counts back through a pipe.
int ScenarioRunner::playPartInChild(const std::vector<Command>& commands, const std::filesystem::path& root, RunCounts& counts)
{
    struct Report {
        int status;
        RunCounts counts;
    };
    int channel[2];
    if (pipe(channel) != 0) {
        std::cerr << "kavelin-sim: cannot start a fresh host: " << std::strerror(errno) << "\n";
        return ExitHostFailed;
    }
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
    pid_t child = fork();
    if (child < 0) {
        std::cerr << "kavelin-sim: cannot start a fresh host: " << std::strerror(errno) << "\n";
        close(channel[0]);
        close(channel[1]);
        return ExitHostFailed;
    }
    if (child == 0) {
        close(channel[0]);
        Report report {};
        report.status = playPart(commands, root, report.counts);
        std::cout.flush();
        std::cerr.flush();
        bool sent = write(channel[1], &report, sizeof report) == static_cast<ssize_t>(sizeof report);
        close(channel[1]);
        _exit(sent ? report.status : ExitHostFailed);
    }
    close(channel[1]);
    Report report {};
    bool received = read(channel[0], &report, sizeof report) == static_cast<ssize_t>(sizeof report);
    close(channel[0]);
    int waitStatus = 0;
    if (waitpid(child, &waitStatus, 0) < 0 || !WIFEXITED(waitStatus) || !received) {
        auto boot = std::find_if(commands.begin(), commands.end(), [](const Command& c) { return c.kind == CommandKind::Boot; });
        std::cerr << "kavelin-sim: the host booted at " << (boot == commands.end() ? commands.front() : *boot).location() << " did not finish\n";
        return ExitHostFailed;
    }
    counts = report.counts;
    return report.status;
}

int ScenarioRunner::run(const std::vector<Command>& commands)
{
    std::vector<ScenarioPart> parts = splitIntoParts(commands);
    int worst = ExitSuccess;
    for (size_t k = 0; k < parts.size(); ++k) {
        std::filesystem::path root;
        if (m_settings.root)
            root = parts.size() == 1 ? *m_settings.root : *m_settings.root / ("part-" + std::to_string(k + 1));
        RunCounts counts;
        int status = parts.size() == 1 ? playPart(parts[k].commands, root, counts) : playPartInChild(parts[k].commands, root, counts);
        m_counts.played += counts.played - std::min(counts.played, parts[k].replayedSetup);
        m_counts.expectsHeld += counts.expectsHeld;
        m_counts.expectsFailed += counts.expectsFailed;
        m_counts.filesWritten += counts.filesWritten;
        worst = std::max(worst, status);
        // A failed expect lets the scenario go on; a mistake or a failing host ends it.
        if (status != ExitSuccess && status != ExitExpectationFailed)
            return status;
    }
    std::cout << summary(m_counts, m_settings.outputDirectory) << "\n";
    return worst;
}

}
