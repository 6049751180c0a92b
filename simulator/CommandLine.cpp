#include "CommandLine.h"

#include "scenario/ScenarioLineReader.h"

#include <algorithm>
#include <filesystem>
#include <functional>

namespace sim {

namespace {

// An option that stands alone (--strict).
struct Flag {
    std::string_view name;
    bool CommandLineOptions::*field;
};

// An option that takes a value, as `--out DIR` or `--out=DIR`.
struct ValuedOption {
    std::string_view name;
    std::string_view valueName; // for messages: "a folder"
    std::function<void(CommandLineOptions&, const std::string&)> set;
};

const std::vector<Flag>& flags()
{
    static const std::vector<Flag> list {
        { "--help", &CommandLineOptions::help },
        { "-h", &CommandLineOptions::help },
        { "--version", &CommandLineOptions::version },
        { "--print-demo", &CommandLineOptions::printDemo },
        { "--strict", &CommandLineOptions::strict },
        { "--trace", &CommandLineOptions::trace },
        { "--live", &CommandLineOptions::live },
    };
    return list;
}

const std::vector<ValuedOption>& valuedOptions()
{
    static const std::vector<ValuedOption> list {
        { "--out", "a folder", [](CommandLineOptions& o, const std::string& v) { o.outputDirectory = v; } },
        { "--root", "a folder", [](CommandLineOptions& o, const std::string& v) { o.rootDirectory = v; } },
        { "--record", "a mode (missing, all, failed or never)", [](CommandLineOptions& o, const std::string& v) { o.recordMode = v; } },
    };
    return list;
}

std::string unknownOption(std::string_view name)
{
    // Only long names are worth suggesting: any one-letter option is one letter from -h.
    std::vector<std::string_view> names;
    for (const Flag& flag : flags())
        names.push_back(flag.name);
    for (const ValuedOption& option : valuedOptions())
        names.push_back(option.name);
    names.push_back("--port");
    std::erase_if(names, [](std::string_view known) { return !known.starts_with("--"); });
    std::string hint = name.starts_with("--") ? suggestionFor(name, names) : std::string();
    // --outdir, --output: a known option with more letters after it.
    for (std::string_view known : names) {
        if (hint.empty() && name.starts_with(known))
            hint = ", did you mean " + std::string(known) + "?";
    }
    // "did you mean '--out'?" reads as "did you mean --out?" on a command line.
    hint.erase(std::remove(hint.begin(), hint.end(), '\''), hint.end());
    return "unknown option '" + std::string(name) + "'" + hint;
}

}

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
    std::vector<std::string_view> seen;
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
        auto flag = std::find_if(flags().begin(), flags().end(), [&](const Flag& f) { return f.name == name; });
        if (flag != flags().end()) {
            if (value)
                return fail("option '" + name + "' takes no value");
            options.*(flag->field) = true;
            continue;
        }
        auto valued = std::find_if(valuedOptions().begin(), valuedOptions().end(), [&](const ValuedOption& o) { return o.name == name; });
        if (valued == valuedOptions().end())
            return fail(unknownOption(name));
        if (!value) {
            if (i + 1 == arguments.size())
                return fail("option '" + name + "' needs " + std::string(valued->valueName));
            value = arguments[++i];
        }
        if (value->empty())
            return fail("option '" + name + "' needs " + std::string(valued->valueName));
        if (std::find(seen.begin(), seen.end(), valued->name) != seen.end())
            return fail("option '" + name + "' is given twice");
        seen.push_back(valued->name);
        valued->set(options, *value);
    }
    if (options.port && !options.live)
        return fail("option '--port' goes with --live");

    // The output folder is made when missing; a file in its place is the user's mistake.
    std::error_code error;
    if (std::filesystem::exists(options.outputDirectory, error) && !std::filesystem::is_directory(options.outputDirectory, error))
        return fail("--out names '" + options.outputDirectory + "', which is a file, not a folder");
    return commandLine;
}

std::string CommandLine::usage(std::string_view programName)
{
    std::string name(programName);
    return "usage: " + name + " [SCENARIO] [--out DIR] [--root DIR] [--record=MODE] [--live [--port N]] [--strict] [--trace]\n"
        "       " + name + " --print-demo | --version | --help\n"
        "\n"
        "Plays SCENARIO (a scenario file, or - for standard input) on the simulated phone;\n"
        "without one, plays the built-in demo.\n"
        "\n"
        "  --out DIR     where shot and dump write (default ./kavelin-out, created if missing)\n"
        "  --root DIR    the device's file system root (default: a fresh temporary folder)\n"
        "  --record=MODE\n"
        "                what expect-shot does with reference pictures: missing (the default:\n"
        "                record those not there yet), all, failed (those missing or differing)\n"
        "                or never; without it, the environment's KAVELIN_RECORD=MODE decides\n"
        "  --live        after SCENARIO, show the phone in a browser: prints the address to open\n"
        "  --port N      the live preview's port on 127.0.0.1 (default 8470; 0 picks a free one)\n"
        "  --strict      every warning is a mistake (exit 2)\n"
        "  --trace       say on standard error what each tap, swipe or slide reached\n"
        "  --print-demo  print the built-in demo as a scenario\n"
        "  --version     print the version\n"
        "  --help        show this text\n"
        "\n"
        "Exit status: 0 played to the end with every expect holding; 1 an expect failed;\n"
        "2 the scenario cannot be played; 3 the host or the extension failed.\n";
}

}
