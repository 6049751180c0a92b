// Feeds arbitrary bytes to the scenario parser. Besides not crashing, it
// checks what the player relies on: a scenario with mistakes yields no
// commands, and every value a command carries can be written out as JSON.

#include <scenario/ExpectComparison.h>
#include <scenario/ScenarioParser.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    sim::ScenarioParseResult result = sim::ScenarioParser::parseText(text, "fuzz.scenario");
    if (!result.ok() && !result.commands.empty())
        std::abort();
    if (result.diagnostics.size() > sim::ScenarioParser::maximumDiagnostics + 1)
        std::abort();
    for (const sim::Diagnostic& diagnostic : result.diagnostics)
        (void)diagnostic.toString();

    for (const sim::Command& command : result.commands) {
        const nlohmann::json* value = nullptr;
        if (command.kind == sim::CommandKind::ExpectHost)
            value = &command.as<sim::ExpectHostCommand>().value;
        else if (command.kind == sim::CommandKind::ExpectProperty)
            value = &command.as<sim::ExpectPropertyCommand>().value;
        if (!value)
            continue;
        // Throws (and so fails the run) on text that is not UTF-8.
        (void)value->dump();
        if (!sim::jsonValuesMatch(*value, *value))
            std::abort();
    }
    return 0;
}
