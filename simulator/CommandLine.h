#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

struct CommandLineOptions {
    // A scenario file, or "-" for standard input; absent plays the built-in demo.
    std::optional<std::string> scenario;
    // Where `shot` and `dump` write; created if missing.
    std::string outputDirectory { "./kavelin-out" };
    // The device's file system root; absent means a fresh temporary folder.
    std::optional<std::string> rootDirectory;
    // --record=MODE as written: what expect-shot does with references
    // (RecordPolicy checks the word).
    std::optional<std::string> recordMode;
    bool help { false };
    // --live: serve the live preview after playing the scenario.
    bool live { false };
    // --port N (with --live); 0 picks a free port.
    std::optional<int> port;
    bool version { false };
    // Print the built-in demo as a scenario instead of playing it.
    bool printDemo { false };
    // Every warning is a mistake.
    bool strict { false };
    // Each acting command says on standard error what it reached.
    bool trace { false };
};

// kavelin-sim [SCENARIO] [--out DIR] [--root DIR] [--record=MODE] [--live [--port N]] [--strict] [--trace] ...
// A usage mistake comes back as an error message; the caller prints it with
// `usage()` and exits with 2.
class CommandLine {
public:
    // `arguments` leaves out the program's name.
    static CommandLine parse(std::span<const std::string> arguments);
    static CommandLine parse(int argc, const char* const* argv);
    static std::string usage(std::string_view programName = "kavelin-sim");

    bool isValid() const { return m_error.empty(); }
    const std::string& error() const { return m_error; }
    const CommandLineOptions& options() const { return m_options; }

private:
    CommandLineOptions m_options;
    std::string m_error;
};

}
