#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct RecordChoice;

// What a picture check does with its reference picture.
enum class RecordMode : uint8_t {
    Missing, // write only references that do not exist yet (the default)
    All, // rewrite every reference, as after an intended change to every screen
    Failed, // write missing references and rewrite those that differ
    Never, // write none: a missing reference fails (as on a build machine)
};

// The record mode and the decisions that follow from it. A check that writes
// a reference always fails, so that a run which recorded anything is never
// mistaken for one that compared.
class RecordPolicy {
public:
    // The environment variable that names the mode when no option does.
    static constexpr const char* environmentVariable = "KAVELIN_RECORD";

    explicit RecordPolicy(RecordMode mode = RecordMode::Missing)
        : m_mode(mode)
    {
    }

    // "missing", "all", "failed" or "never".
    static std::optional<RecordMode> modeNamed(std::string_view);
    static std::string_view nameOf(RecordMode);
    // "missing, all, failed or never", for messages.
    static std::string modeNames();

    // The option's mode wins; otherwise `environmentValue` (the variable's
    // value, null when unset or empty) names it; otherwise `missing`.
    static RecordChoice choose(std::optional<RecordMode> option, const char* environmentValue);
    // The same from this process's environment.
    static RecordChoice fromEnvironment(std::optional<RecordMode> option = std::nullopt);

    RecordMode mode() const { return m_mode; }

    enum class Step : uint8_t { Compare, Record, FailMissing };
    // What to do first, given whether the reference exists.
    Step firstStep(bool referenceExists) const;
    // Whether a reference that was compared and differs is rewritten.
    bool rewritesDiffering() const { return m_mode == RecordMode::Failed; }

private:
    RecordMode m_mode;
};

struct RecordChoice {
    std::optional<RecordPolicy> policy;
    std::string error; // set when the environment names no mode
};
