// kavelin-sim: plays the home screen process of a phone on a virtual clock,
// loads the extension into it, plays a scenario and shows what the screen
// shows.

#include "BuiltInDemo.h"
#include "CommandLine.h"
#include "Simulator.h"
#include "scenario/ScenarioParser.h"

#include <iostream>

int main(int argc, char** argv)
{
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

    auto parsed = options.scenario ? sim::ScenarioParser::parseFile(*options.scenario)
                                   : sim::ScenarioParser::parseText(sim::builtInDemoScenario(), "<demo>");
    if (!parsed.ok()) {
        std::cerr << parsed.diagnosticText();
        return sim::ExitCannotPlay;
    }

    sim::Simulator simulator(options.outputDirectory, options.rootDirectory.value_or(""));
    if (auto error = simulator.prepare(); !error.empty()) {
        std::cerr << "kavelin-sim: " << error << "\n";
        return sim::ExitHostFailed;
    }
    int status = simulator.play(parsed.commands);
    if (!options.scenario && status == sim::ExitSuccess) {
        std::cout << "The demo wrote:\n";
        for (auto& file : simulator.writtenFiles())
            std::cout << "  " << file.string() << "\n";
    }
    return status;
}
