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
        if (argument == "--live") {
            options.live = true;
            continue;
        }

        // --out DIR and --out=DIR alike.
        std::string name = argument;
        std::optional<std::string> value;
        if (size_t equals = argument.find('='); equals != std::string::npos) {
            name = argument.substr(0, equals);
            value = argument.substr(equals + 1);
        }
        if (name == "--port") {
            if (!value && i + 1 < arguments.size())
                value = arguments[++i];
            int port = -1;
            auto digits = value.value_or("");
            if (!digits.empty() && digits.size() <= 5 && digits.find_first_not_of("0123456789") == std::string::npos)
                port = std::stoi(digits);
            if (port < 0 || port > 65535)
                return fail("option '--port' needs a port number from 0 to 65535 (0 picks a free one)");
            if (options.port)
                return fail("option '--port' is given twice");
            options.port = port;
            continue;
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
    if (options.port && !options.live)
        return fail("option '--port' goes with --live");
    return commandLine;
}

std::string CommandLine::usage(std::string_view programName)
{
    std::string name(programName);
    return "usage: " + name + " [SCENARIO] [--out DIR] [--root DIR] [--record=MODE] [--live [--port N]]\n"
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
        "  --live      after SCENARIO, show the phone in a browser: prints the address to open\n"
        "  --port N    the live preview's port on 127.0.0.1 (default 8470; 0 picks a free one)\n"
        "  --help      show this text\n"
        "\n"
        "Exit status: 0 played to the end with every expect holding; 1 an expect failed;\n"
        "2 the scenario cannot be played; 3 the host or the extension failed.\n";
}

}
