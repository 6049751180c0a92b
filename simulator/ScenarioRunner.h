#pragma once

#include "Simulator.h"

#include <optional>
#include <string>
#include <vector>

namespace sim {

// Plays a whole checked scenario from the command line: each boot's part in
// a fresh process when there are several (see splitIntoParts), the counts of
// every part added up, and the summary line printed when the scenario ran to
// its end.
class ScenarioRunner {
public:
    struct Settings {
        std::filesystem::path outputDirectory;
        // The device root the user named; with several parts, part K uses DIR/part-K.
        std::optional<std::filesystem::path> root;
        bool trace { false };
        // What expect-shot does with reference pictures.
        RecordPolicy recordPolicy;
        // Print every file written, one a line, before the summary.
        bool listWrittenFiles { false };
    };

    ScenarioRunner(Settings, Warnings&);

    // Answers the exit status.
    int run(const std::vector<Command>&);
    const RunCounts& counts() const { return m_counts; }

    // "played 12 commands, 3 expects held, 0 failed, wrote 2 files in out"
    static std::string summary(const RunCounts&, const std::filesystem::path& outputDirectory);

private:
    int playPart(const std::vector<Command>&, const std::filesystem::path& root, RunCounts&);
    int playPartInChild(const std::vector<Command>&, const std::filesystem::path& root, RunCounts&);

    Settings m_settings;
    Warnings& m_warnings;
    RunCounts m_counts;
};

}
