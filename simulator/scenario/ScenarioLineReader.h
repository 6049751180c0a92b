#pragma once

#include "ScenarioLexer.h"
#include "ScenarioValues.h"
#include "Target.h"

#include <nlohmann/json.hpp>

#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sim {

// A word as a message shows it: cut short, never inside a UTF-8 sequence.
std::string shownInMessage(std::string_view);
// "a, b, c"
std::string joinedNames(std::span<const std::string_view>);
// ", did you mean 'tap'?" when one of `names` is a likely typo of `word`, else "".
std::string suggestionFor(std::string_view word, std::span<const std::string_view> names);

// The words of one scenario line, with the checks every command form needs.
// Each conversion reports its own mistake and answers nothing; a handler
// reads on, so that one line reports all its mistakes, and the line's command
// is dropped when any was reported. Conversions answer nothing, silently, for
// a null word: an option that was left out.
class ScenarioLineReader {
public:
    ScenarioLineReader(std::string_view line, const std::vector<Word>& words, std::string_view name, std::string_view usage);

    const std::vector<std::string>& errors() const { return m_errors; }
    bool failed() const { return !m_errors.empty(); }
    void error(std::string message) { m_errors.push_back(std::move(message)); }

    size_t argumentCount() const { return m_arguments.size(); }
    const Word& argument(size_t index) const { return *m_arguments[index]; }
    // Whether argument `index` is the bare word `keyword` (quoting it makes it text).
    bool argumentIs(size_t index, std::string_view keyword) const;
    bool expectArguments(size_t minimum, size_t maximum);

    // Reports unknown and repeated options.
    void checkOptions(std::span<const std::string_view> allowed);
    // For a form that takes no options although its command does (`weather off`).
    void rejectOptions(std::string_view form);
    const Word* option(std::string_view key) const;
    const Word* requiredOption(std::string_view key, std::string_view valueName);

    // The source text of a word, without an option's key.
    std::string_view raw(const Word&) const;
    void expected(const Word&, std::string_view what);

    std::optional<std::string> text(const Word*);
    std::optional<std::string> nonEmptyText(const Word*, std::string_view what);

    // Text that must pass `valid`, described by `what` when it does not.
    template<typename Valid>
    std::optional<std::string> checkedText(const Word* word, Valid valid, std::string_view what)
    {
        std::optional<std::string> value = text(word);
        if (value && !valid(*value)) {
            expected(*word, what);
            return std::nullopt;
        }
        return value;
    }

    template<typename Parse>
    auto parsed(const Word* word, Parse parse, std::string_view what) -> decltype(parse(std::string_view()))
    {
        std::optional<std::string> value = text(word);
        if (!value)
            return std::nullopt;
        auto result = parse(*value);
        if (!result)
            expected(*word, what);
        return result;
    }

    template<typename T>
    std::optional<T> keyword(const Word* word, std::initializer_list<std::pair<std::string_view, T>> choices)
    {
        if (!word)
            return std::nullopt;
        std::vector<std::string_view> names;
        for (const auto& [name, value] : choices) {
            if (!word->problem && word->text == name)
                return value;
            names.push_back(name);
        }
        reportUnknownKeyword(*word, names);
        return std::nullopt;
    }

    std::optional<double> duration(const Word* word) { return parsed(word, parseDuration, ValueDescription::duration); }
    std::optional<TimeSpec> time(const Word* word) { return parsed(word, parseTime, ValueDescription::time); }
    std::optional<bool> boolean(const Word* word) { return parsed(word, parseBoolean, ValueDescription::boolean); }
    std::optional<Color> color(const Word* word) { return parsed(word, parseColor, ValueDescription::color); }
    std::optional<double> decimal(const Word* word) { return parsed(word, parseDecimal, ValueDescription::decimal); }
    std::optional<Target> target(const Word* word) { return parsed(word, parseTarget, ValueDescription::target); }
    std::optional<double> unitFraction(const Word*);
    std::optional<int> integer(const Word*, int minimum, int maximum);
    std::optional<int> temperature(const Word* word) { return integer(word, -100, 100); }

    std::optional<std::string> version(const Word*);
    std::optional<std::string> localeIdentifier(const Word*);
    std::optional<std::string> timeZoneName(const Word*);
    std::optional<std::string> devicePath(const Word*);
    std::optional<std::string> bundleIdentifier(const Word*);
    std::optional<std::string> identifier(const Word*, std::string_view what);
    std::optional<std::string> outputFile(const Word*, std::string_view extension);
    // A PNG file relative to the scenario's folder, free of `..`.
    std::optional<std::string> referencePicture(const Word*);

    // The value of an `expect` from argument `firstArgument` on: one quoted
    // word is a string; anything else, to the end of the line, is JSON text
    // (so `[0, 0, 375, 667]` may hold blanks).
    std::optional<nlohmann::json> expectedValue(size_t firstArgument);

private:
    std::string_view source(const Word& word) const { return m_line.substr(word.begin, word.end - word.begin); }
    std::string context(const Word&) const;
    void reportUnknownKeyword(const Word&, std::span<const std::string_view> names);
    std::optional<std::string> relativeFile(const Word*, std::string_view extension, std::string_view folder);

    std::string_view m_line;
    std::string_view m_name;
    std::string_view m_usage;
    std::vector<const Word*> m_arguments;
    std::vector<const Word*> m_options;
    std::vector<std::string> m_errors;
};

}
