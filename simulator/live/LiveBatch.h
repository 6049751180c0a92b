#pragma once

#include "scenario/Command.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace sim::live {

// Where a live session's lines may read and write files on this machine.
struct Confinement {
    // Where relative host paths resolve (the starting scenario's folder, or --out).
    std::filesystem::path folder;
    // The folders host paths must stay inside: --out, and --root when given.
    std::vector<std::filesystem::path> allowed;

    // Empty when `path` (as a line wrote it) stays inside; else why not.
    std::string check(const std::string& path) const;
};

// Scenario lines posted to a live session, read by the scenario parser.
// Lines that only a fresh host can take (`system`, `device`, `locale`,
// `timezone`, `missing`, `boot`) are read as if before `boot`, the others as
// if after it; every line keeps its number in the posted text.
struct LiveBatch {
    static constexpr const char* fileName = "live";

    std::vector<Command> shape;
    bool freshHost { false }; // a shape line or `boot` was posted
    std::vector<Command> acts;
    // The posted text with the shape and `boot` lines blanked, for the phone.
    std::string actsText;
    // "live:LINE: message", in line order; when there is any, nothing plays.
    std::vector<std::string> errors;

    bool ok() const { return errors.empty(); }
    const Command* actAtLine(int line) const;

    static LiveBatch read(std::string_view text, const Confinement&);
};

// The files on this machine a command reads or writes besides --out and the device root.
std::vector<std::string> hostPathsOf(const Command&);

}
