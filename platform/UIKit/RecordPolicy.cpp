#include "RecordPolicy.h"

#include <array>
#include <cstdlib>
#include <utility>

static constexpr std::array<std::pair<std::string_view, RecordMode>, 4> modes { {
    { "missing", RecordMode::Missing },
    { "all", RecordMode::All },
    { "failed", RecordMode::Failed },
    { "never", RecordMode::Never },
} };

std::optional<RecordMode> RecordPolicy::modeNamed(std::string_view name)
{
    for (auto& [modeName, mode] : modes) {
        if (modeName == name)
            return mode;
    }
    return std::nullopt;
}

std::string_view RecordPolicy::nameOf(RecordMode mode)
{
    for (auto& [modeName, known] : modes) {
        if (known == mode)
            return modeName;
    }
    return "missing";
}

std::string RecordPolicy::modeNames()
{
    return "missing, all, failed or never";
}

RecordChoice RecordPolicy::choose(std::optional<RecordMode> option, const char* environmentValue)
{
    if (option)
        return { RecordPolicy(*option), {} };
    std::string_view value = environmentValue ? environmentValue : "";
    if (value.empty())
        return { RecordPolicy(), {} };
    if (auto mode = modeNamed(value))
        return { RecordPolicy(*mode), {} };
    return { std::nullopt, std::string(environmentVariable) + " is '" + std::string(value) + "': expected " + modeNames() };
}

RecordChoice RecordPolicy::fromEnvironment(std::optional<RecordMode> option)
{
    return choose(option, std::getenv(environmentVariable));
}

RecordPolicy::Step RecordPolicy::firstStep(bool referenceExists) const
{
    if (m_mode == RecordMode::All)
        return Step::Record;
    if (referenceExists)
        return Step::Compare;
    return m_mode == RecordMode::Never ? Step::FailMissing : Step::Record;
}
