#include "ScenarioLineReader.h"

#include <algorithm>
#include <cstdint>

namespace sim {

namespace {

// Levenshtein distance, for the short names a scenario uses; longer words are
// never typos of them.
size_t editDistance(std::string_view a, std::string_view b)
{
    constexpr size_t longest = 32;
    if (a.size() > longest || b.size() > longest)
        return SIZE_MAX;
    size_t previous[longest + 1], current[longest + 1];
    for (size_t j = 0; j <= b.size(); ++j)
        previous[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        current[0] = i;
        for (size_t j = 1; j <= b.size(); ++j)
            current[j] = std::min({ previous[j] + 1, current[j - 1] + 1, previous[j - 1] + (a[i - 1] != b[j - 1]) });
        std::copy(current, current + b.size() + 1, previous);
    }
    return previous[b.size()];
}

bool isAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isAsciiDigit(char c) { return c >= '0' && c <= '9'; }

bool isIdentifier(std::string_view text)
{
    if (text.empty() || !(isAsciiLetter(text[0]) || text[0] == '_'))
        return false;
    return std::all_of(text.begin(), text.end(), [](char c) { return isAsciiLetter(c) || isAsciiDigit(c) || c == '_'; });
}

// Splits `text` at `separator`; false when a part is empty or fails `valid`.
template<typename Valid>
bool partsAreValid(std::string_view text, char separator, Valid valid)
{
    if (text.empty())
        return false;
    size_t start = 0;
    while (true) {
        size_t end = text.find(separator, start);
        std::string_view part = text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
        if (part.empty() || !valid(part))
            return false;
        if (end == std::string_view::npos)
            return true;
        start = end + 1;
    }
}

bool isVersion(std::string_view text)
{
    return std::count(text.begin(), text.end(), '.') <= 3
        && partsAreValid(text, '.', [](std::string_view part) { return part.size() <= 4 && std::all_of(part.begin(), part.end(), isAsciiDigit); });
}

bool isLocaleIdentifier(std::string_view text)
{
    size_t language = 0;
    while (language < text.size() && isAsciiLetter(text[language]))
        ++language;
    if (language < 2 || language > 3)
        return false;
    if (language == text.size())
        return true;
    std::string rest(text.substr(language + 1));
    std::replace(rest.begin(), rest.end(), '-', '_');
    return (text[language] == '_' || text[language] == '-')
        && partsAreValid(rest, '_', [](std::string_view part) {
               return part.size() <= 8 && std::all_of(part.begin(), part.end(), [](char c) { return isAsciiLetter(c) || isAsciiDigit(c); });
           });
}

bool isTimeZoneName(std::string_view text)
{
    return !text.empty() && isAsciiLetter(text[0]) && partsAreValid(text, '/', [](std::string_view part) {
        return part != "." && part != ".." && std::all_of(part.begin(), part.end(), [](char c) {
            return isAsciiLetter(c) || isAsciiDigit(c) || c == '_' || c == '-' || c == '+';
        });
    });
}

bool isBundleIdentifier(std::string_view text)
{
    return partsAreValid(text, '.', [](std::string_view part) {
        return std::all_of(part.begin(), part.end(), [](char c) { return isAsciiLetter(c) || isAsciiDigit(c) || c == '-' || c == '_'; });
    });
}

bool hasParentComponent(std::string_view path)
{
    size_t start = 0;
    while (start <= path.size()) {
        size_t end = std::min(path.find('/', start), path.size());
        if (path.substr(start, end - start) == "..")
            return true;
        start = end + 1;
    }
    return false;
}

// How deeply a JSON text nests arrays and objects, so that a hostile value
// cannot make the recursive comparison run out of stack.
size_t jsonNesting(std::string_view text)
{
    size_t depth = 0, deepest = 0;
    bool inString = false;
    for (size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            deepest = std::max(deepest, ++depth);
        } else if ((c == ']' || c == '}') && depth > 0) {
            --depth;
        }
    }
    return deepest;
}

}

std::string shownInMessage(std::string_view text)
{
    constexpr size_t limit = 60;
    if (text.size() <= limit)
        return std::string(text);
    size_t cut = limit;
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xc0) == 0x80)
        --cut;
    return std::string(text.substr(0, cut)) + "...";
}

std::string joinedNames(std::span<const std::string_view> names)
{
    std::string text;
    for (std::string_view name : names) {
        if (!text.empty())
            text += ", ";
        text += name;
    }
    return text;
}

std::string suggestionFor(std::string_view word, std::span<const std::string_view> names)
{
    auto commonPrefix = [&](std::string_view name) {
        return std::mismatch(word.begin(), word.end(), name.begin(), name.end()).first - word.begin();
    };
    std::string_view best;
    size_t bestDistance = 3;
    for (std::string_view name : names) {
        if (name.size() + bestDistance < word.size() || word.size() + bestDistance < name.size())
            continue;
        size_t distance = editDistance(word, name);
        if (distance >= word.size())
            continue;
        // Among equally close names, the one that starts like the word wins: "tapp" is "tap", not "app".
        if (distance < bestDistance || (distance == bestDistance && !best.empty() && commonPrefix(name) > commonPrefix(best))) {
            best = name;
            bestDistance = distance;
        }
    }
    return best.empty() ? std::string() : ", did you mean '" + std::string(best) + "'?";
}

ScenarioLineReader::ScenarioLineReader(std::string_view line, const std::vector<Word>& words, std::string_view name, std::string_view usage)
    : m_line(line)
    , m_name(name)
    , m_usage(usage)
{
    for (size_t i = 1; i < words.size(); ++i)
        (words[i].isOption() ? m_options : m_arguments).push_back(&words[i]);
}

bool ScenarioLineReader::argumentIs(size_t index, std::string_view keyword) const
{
    return index < m_arguments.size() && !m_arguments[index]->quoted && m_arguments[index]->text == keyword;
}

bool ScenarioLineReader::expectArguments(size_t minimum, size_t maximum)
{
    if (m_arguments.size() < minimum) {
        error("missing argument: usage is '" + std::string(m_usage) + "'");
        return false;
    }
    if (m_arguments.size() > maximum) {
        error("unexpected argument '" + shownInMessage(raw(*m_arguments[maximum])) + "': usage is '" + std::string(m_usage) + "'");
        return false;
    }
    return true;
}

void ScenarioLineReader::checkOptions(std::span<const std::string_view> allowed)
{
    for (size_t i = 0; i < m_options.size(); ++i) {
        const Word& option = *m_options[i];
        if (allowed.empty()) {
            error("'" + std::string(m_name) + "' takes no options, got '" + shownInMessage(source(option)) + "' (quote a word that holds '=')");
        } else if (std::find(allowed.begin(), allowed.end(), option.key) == allowed.end()) {
            error("option '" + shownInMessage(option.key) + "' is not one of " + joinedNames(allowed) + suggestionFor(option.key, allowed));
        } else if (std::any_of(m_options.begin(), m_options.begin() + i, [&](const Word* earlier) { return earlier->key == option.key; })) {
            error("option '" + option.key + "' is given twice");
        }
    }
}

void ScenarioLineReader::rejectOptions(std::string_view form)
{
    if (!m_options.empty())
        error("'" + std::string(form) + "' takes no options, got '" + shownInMessage(source(*m_options[0])) + "'");
}

const Word* ScenarioLineReader::option(std::string_view key) const
{
    auto found = std::find_if(m_options.begin(), m_options.end(), [&](const Word* word) { return word->key == key; });
    return found == m_options.end() ? nullptr : *found;
}

const Word* ScenarioLineReader::requiredOption(std::string_view key, std::string_view valueName)
{
    const Word* word = option(key);
    if (!word)
        error("missing option " + std::string(key) + "=" + std::string(valueName) + ": usage is '" + std::string(m_usage) + "'");
    return word;
}

std::string_view ScenarioLineReader::raw(const Word& word) const
{
    std::string_view text = source(word);
    return word.isOption() ? text.substr(word.key.size() + 1) : text;
}

void ScenarioLineReader::expected(const Word& word, std::string_view what)
{
    error(context(word) + "expected " + std::string(what) + ", got '" + shownInMessage(raw(word)) + "'");
}

std::optional<std::string> ScenarioLineReader::text(const Word* word)
{
    if (!word)
        return std::nullopt;
    if (word->problem) {
        error(context(*word) + *word->problem);
        return std::nullopt;
    }
    return word->text;
}

std::optional<std::string> ScenarioLineReader::nonEmptyText(const Word* word, std::string_view what)
{
    return checkedText(word, [](const std::string& text) { return !text.empty(); }, what);
}

std::optional<double> ScenarioLineReader::unitFraction(const Word* word)
{
    return parsed(word, [](std::string_view text) -> std::optional<double> {
        auto value = parseDecimal(text);
        return value && *value >= 0 && *value <= 1 ? value : std::nullopt;
    }, ValueDescription::unitFraction);
}

std::optional<int> ScenarioLineReader::integer(const Word* word, int minimum, int maximum)
{
    std::string what = "a whole number from " + std::to_string(minimum) + " to " + std::to_string(maximum);
    auto value = parsed(word, [&](std::string_view text) -> std::optional<int64_t> {
        auto value = parseInteger(text);
        return value && *value >= minimum && *value <= maximum ? value : std::nullopt;
    }, what);
    return value ? std::optional<int>(static_cast<int>(*value)) : std::nullopt;
}

std::optional<std::string> ScenarioLineReader::version(const Word* word)
{
    return checkedText(word, isVersion, "a version like 9.3.3");
}

std::optional<std::string> ScenarioLineReader::localeIdentifier(const Word* word)
{
    return checkedText(word, isLocaleIdentifier, "a locale like en_US");
}

std::optional<std::string> ScenarioLineReader::timeZoneName(const Word* word)
{
    return checkedText(word, isTimeZoneName, "a time zone like Europe/Paris or UTC");
}

std::optional<std::string> ScenarioLineReader::devicePath(const Word* word)
{
    return checkedText(word, [](const std::string& path) {
        return path.size() > 1 && path[0] == '/' && !hasParentComponent(path);
    }, "an absolute path on the device like /var/mobile/Library/Preferences/x.plist");
}

std::optional<std::string> ScenarioLineReader::bundleIdentifier(const Word* word)
{
    return checkedText(word, isBundleIdentifier, "a bundle identifier like com.apple.mobilecal");
}

std::optional<std::string> ScenarioLineReader::identifier(const Word* word, std::string_view what)
{
    return checkedText(word, isIdentifier, what);
}

std::optional<std::string> ScenarioLineReader::outputFile(const Word* word, std::string_view extension)
{
    return relativeFile(word, extension, "the output folder");
}

std::optional<std::string> ScenarioLineReader::referencePicture(const Word* word)
{
    return relativeFile(word, ".png", "the scenario's folder");
}

std::optional<std::string> ScenarioLineReader::relativeFile(const Word* word, std::string_view extension, std::string_view folder)
{
    std::string what = "a file name ending in " + std::string(extension) + ", relative to " + std::string(folder);
    return checkedText(word, [&](const std::string& path) {
        return path.size() > extension.size() && path.ends_with(extension) && path[0] != '/'
            && !path.ends_with("/" + std::string(extension)) && !hasParentComponent(path);
    }, what);
}

std::optional<nlohmann::json> ScenarioLineReader::expectedValue(size_t firstArgument)
{
    const Word& first = argument(firstArgument);
    const Word& last = argument(argumentCount() - 1);
    if (argumentCount() == firstArgument + 1 && first.quoted) {
        std::optional<std::string> value = text(&first);
        return value ? std::optional<nlohmann::json>(*value) : std::nullopt;
    }
    std::string_view json = m_line.substr(first.begin, last.end - first.begin);
    constexpr size_t maximumNesting = 64;
    if (jsonNesting(json) > maximumNesting) {
        error("the expected value nests deeper than " + std::to_string(maximumNesting) + " levels");
        return std::nullopt;
    }
    nlohmann::json value = nlohmann::json::parse(json, nullptr, false);
    if (value.is_discarded()) {
        error("expected a JSON value or a quoted string, got '" + shownInMessage(json) + "' (quote text: \"like this\")");
        return std::nullopt;
    }
    return value;
}

std::string ScenarioLineReader::context(const Word& word) const
{
    return word.isOption() ? "option '" + word.key + "': " : std::string();
}

void ScenarioLineReader::reportUnknownKeyword(const Word& word, std::span<const std::string_view> names)
{
    error(context(word) + "expected one of " + joinedNames(names) + ", got '" + shownInMessage(raw(word)) + "'" + suggestionFor(word.text, names));
}

}
