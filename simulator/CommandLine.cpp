#include "CommandLine.h"

namespace sim {

CommandLine CommandLine::parse(int argc, const char* const* argv)
{
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i)
        arguments.emplace_back(argv[i] ? argv[i] : "");
    return parse(arguments);
}

CommandLine CommandLine::parse(std::span<const std::string> arguments)
{
    CommandLine commandLine;
    CommandLineOptions& options = commandLine.m_options;
    bool seenOut = false;
    bool seenRoot = false;
    bool seenRecord = false;
    bool onlyScenarios = false;

    auto fail = [&](std::string message) {
        commandLine.m_error = std::move(message);
        return commandLine;
    };

    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        bool isOption = !onlyScenarios && argument.size() > 1 && argument[0] == '-';
        if (!isOption) {
            if (options.scenario)
                return fail("more than one scenario: '" + *options.scenario + "' and '" + argument + "'");
            if (argument.empty())
                return fail("the scenario's path is empty");
            options.scenario = argument;
            continue;
        }
        if (argument == "--") {
            onlyScenarios = true;
            continue;
        }
        if (argument == "--help" || argument == "-h") {
            options.help = true;
            continue;
        }

        // --out DIR and --out=DIR alike.
        std::string name = argument;
        std::optional<std::string> value;
        if (size_t equals = argument.find('='); equals != std::string::npos) {
            name = argument.substr(0, equals);
            value = argument.substr(equals + 1);
        }
        if (name != "--out" && name != "--root" && name != "--record")
            return fail("unknown option '" + name + "'");
        std::string valueName = name == "--record" ? "a mode (missing, all, failed or never)" : "a folder";
        if (!value) {
            if (i + 1 == arguments.size())
                return fail("option '" + name + "' needs " + valueName);
            value = arguments[++i];
        }
        if (value->empty())
            return fail("option '" + name + "' needs " + valueName);
        bool& seen = name == "--out" ? seenOut : name == "--root" ? seenRoot : seenRecord;
        if (seen)
            return fail("option '" + name + "' is given twice");
        seen = true;
        if (name == "--out")
            options.outputDirectory = *value;
        else if (name == "--root")
            options.rootDirectory = *value;
        else
            options.recordMode = *value;
    }
    return commandLine;
}

std::string CommandLine::usage(std::string_view programName)
{
    std::string name(programName);
    return "usage: " + name + " [SCENARIO] [--out DIR] [--root DIR] [--record=MODE]\n"
        "\n"
        "Plays SCENARIO (a scenario file, or - for standard input) on the simulated phone;\n"
        "without one, plays the built-in demo.\n"
        "\n"
        "  --out DIR   where shot and dump write (default ./kavelin-out, created if missing)\n"
        "  --root DIR  the device's file system root (default: a fresh temporary folder)\n"
        "  --record=MODE\n"
        "              what expect-shot does with reference pictures: missing (the default:\n"
        "              record those not there yet), all, failed (those missing or differing)\n"
        "              or never; without it, the environment's KAVELIN_RECORD=MODE decides\n"
        "  --help      show this text\n"
        "\n"
        "Exit status: 0 played to the end with every expect holding; 1 an expect failed;\n"
        "2 the scenario cannot be played; 3 the host or the extension failed.\n";
}

}
