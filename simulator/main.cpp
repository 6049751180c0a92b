// kavelin-sim: plays the home screen process of a phone on a virtual clock,
// loads the extension into it, plays a scenario and shows what the screen
// shows.

#include "BuiltInDemo.h"
#include "CommandLine.h"
#include "Simulator.h"
#include "settings/PreferenceChecks.h"
#include "live/LiveServer.h"
#include "live/LiveWorker.h"
#include "scenario/ScenarioParser.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

int play(const sim::ScenarioParseResult& parsed, const std::string& output, const std::string& root, const RecordPolicy& recordPolicy,
    bool listWrittenFiles)
{
    if (!parsed.ok()) {
        std::cerr << parsed.diagnosticText();
        return sim::ExitCannotPlay;
    }
    sim::PreferenceChecks::printWarnings(parsed.commands, std::cerr);
    sim::Simulator simulator(output, root);
    simulator.setRecordPolicy(recordPolicy);
    if (auto error = simulator.prepare(); !error.empty()) {
        std::cerr << "kavelin-sim: " << error << "\n";
        return sim::ExitHostFailed;
    }
    int status = simulator.play(parsed.commands);
    if (listWrittenFiles && status == sim::ExitSuccess) {
        for (auto& file : simulator.writtenFiles())
            std::cout << "  " << file.string() << "\n";
    }
    return status;
}

// Each part of the demo is a boot of its own: the extension's load-time state
// (its hooks, its single instances) lives as long as the process, exactly as
// on the phone, so every part plays in a fresh child process.
int playDemo(const sim::CommandLineOptions& options, const RecordPolicy& recordPolicy)
{
    std::cout << "The demo wrote:\n" << std::flush;
    int worst = sim::ExitSuccess;
    for (auto& part : sim::builtInDemo()) {
        std::string root;
        if (options.rootDirectory)
            root = (std::filesystem::path(*options.rootDirectory) / part.name).string();
        std::fflush(nullptr);
        pid_t child = fork();
        if (child < 0) {
            std::cerr << "kavelin-sim: cannot start the demo's " << part.name << ": " << std::strerror(errno) << "\n";
            return sim::ExitHostFailed;
        }
        if (child == 0) {
            auto parsed = sim::ScenarioParser::parseText(part.scenario, "<demo: " + part.name + ">");
            int status = play(parsed, options.outputDirectory, root, recordPolicy, true);
            std::cout << std::flush;
            _exit(status);
        }
        int waitStatus = 0;
        if (waitpid(child, &waitStatus, 0) < 0 || !WIFEXITED(waitStatus)) {
            std::cerr << "kavelin-sim: the demo's " << part.name << " did not finish\n";
            return sim::ExitHostFailed;
        }
        int status = WEXITSTATUS(waitStatus);
        if (status != sim::ExitSuccess)
            std::cerr << "kavelin-sim: the demo's " << part.name << " failed (exit " << status << ")\n";
        worst = std::max(worst, status);
    }
    return worst;
}

// --record=MODE wins over KAVELIN_RECORD; a word that names no mode is a
// usage mistake either way.
std::optional<RecordPolicy> recordPolicy(const sim::CommandLineOptions& options)
{
    std::optional<RecordMode> option;
    if (options.recordMode) {
        option = RecordPolicy::modeNamed(*options.recordMode);
        if (!option) {
            std::cerr << "kavelin-sim: --record=" << *options.recordMode << ": expected " << RecordPolicy::modeNames() << "\n"
                      << sim::CommandLine::usage();
            return std::nullopt;
        }
    }
    auto choice = RecordPolicy::fromEnvironment(option);
    if (!choice.policy)
        std::cerr << "kavelin-sim: " << choice.error << "\n";
    return choice.policy;
}

}

int main(int argc, char** argv)
{
    // The live preview's phone: started by the server itself, never by hand.
    if (argc == 2 && std::string_view(argv[1]) == sim::live::LiveWorker::option)
        return sim::live::LiveWorker::run();
    auto commandLine = sim::CommandLine::parse(argc, argv);
    if (!commandLine.isValid()) {
        std::cerr << "kavelin-sim: " << commandLine.error() << "\n" << sim::CommandLine::usage();
        return sim::ExitCannotPlay;
    }
    const auto& options = commandLine.options();
    if (options.help) {
        std::cout << sim::CommandLine::usage();
        return sim::ExitSuccess;
    }
    auto policy = recordPolicy(options);
    if (!policy)
        return sim::ExitCannotPlay;
    if (options.live)
        return sim::live::LiveServer::run(options, *policy);
    if (!options.scenario)
        return playDemo(options, *policy);
    return play(sim::ScenarioParser::parseFile(*options.scenario), options.outputDirectory, options.rootDirectory.value_or(""), *policy, false);
}
