// kavelin-sim: plays the home screen process of a phone on a virtual clock,
// loads the extension into it, plays a scenario and shows what the screen
// shows.

#include "CommandLine.h"
#include "DemoScenario.h"
#include "ScenarioChecks.h"
#include "ScenarioRunner.h"
#include "Simulator.h"
#include "live/LiveServer.h"
#include "live/LiveWorker.h"
#include "scenario/ScenarioParser.h"

#include <filesystem>
#include <iostream>

namespace {

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

#ifndef KAVELIN_VERSION
#define KAVELIN_VERSION "unknown"
#endif

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
    if (options.version) {
        std::cout << "kavelin-sim " << KAVELIN_VERSION << "\n";
        return sim::ExitSuccess;
    }
    if (options.printDemo) {
        std::cout << sim::demoScenario();
        return sim::ExitSuccess;
    }

    auto policy = recordPolicy(options);
    if (!policy)
        return sim::ExitCannotPlay;
    if (options.live)
        return sim::live::LiveServer::run(options, *policy);

    bool playsDemo = !options.scenario;
    auto parsed = playsDemo ? sim::ScenarioParser::parseText(sim::demoScenario(), sim::demoScenarioName) : sim::ScenarioParser::parseFile(*options.scenario);
    if (!parsed.ok()) {
        std::cerr << parsed.diagnosticText();
        return sim::ExitCannotPlay;
    }
    sim::Warnings warnings;
    warnings.setStrict(options.strict);
    sim::ScenarioChecks::run(parsed.commands, warnings);
    if (options.strict && warnings.count()) {
        std::cerr << "kavelin-sim: --strict makes every warning a mistake; nothing was played\n";
        return sim::ExitCannotPlay;
    }

    std::error_code error;
    std::filesystem::create_directories(options.outputDirectory, error);
    if (error) {
        std::cerr << "kavelin-sim: cannot make the output folder " << options.outputDirectory << ": " << error.message() << "\n";
        return sim::ExitCannotPlay;
    }

    sim::ScenarioRunner::Settings settings;
    settings.outputDirectory = options.outputDirectory;
    if (options.rootDirectory)
        settings.root = *options.rootDirectory;
    settings.trace = options.trace;
    settings.recordPolicy = *policy;
    settings.listWrittenFiles = playsDemo;
    if (playsDemo)
        std::cout << "The demo wrote:\n";
    return sim::ScenarioRunner(settings, warnings).run(parsed.commands);
}
