#pragma once

#include "Command.h"
#include "Diagnostic.h"

#include <string>
#include <string_view>
#include <vector>

namespace sim {

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
