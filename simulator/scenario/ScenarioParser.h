#pragma once

#include "Command.h"

#include <string>
#include <string_view>
#include <vector>

namespace sim {

struct Diagnostic {
    std::string file;
    int line { 0 }; // 0 when the problem is the file as a whole
    std::string message;

    // "FILE:LINE: message", or "FILE: message" without a line.
    std::string toString() const;
};

struct ScenarioParseResult {
    // Empty whenever there are diagnostics: a scenario plays whole or not at all.
    std::vector<Command> commands;
    std::vector<Diagnostic> diagnostics;

    bool ok() const { return diagnostics.empty(); }
    // Every diagnostic on its own line.
    std::string diagnosticText() const;
};

// Reads a scenario into checked commands. Every line is read, so that one run
// reports every mistake (up to `maximumDiagnostics`). Nothing here throws.
class ScenarioParser {
public:
    static constexpr size_t maximumDiagnostics = 50;

    // `-` reads standard input, named "<stdin>" in diagnostics.
    static ScenarioParseResult parseFile(const std::string& path);
    static ScenarioParseResult parseText(std::string_view text, const std::string& fileName);
};

}
