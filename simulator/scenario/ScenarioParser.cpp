#include "ScenarioParser.h"

#include "ScenarioLexer.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <iterator>

namespace sim {

namespace {

class LineReader;
using ParseFunction = void (*)(LineReader&, Command&);

struct CommandForm {
    std::string_view name;
    CommandPhase phase;
    std::string_view usage;
    std::vector<std::string_view> options;
    ParseFunction parse;
};

template<typename Names>
std::string joined(const Names& names)
{
    std::string text;
    for (std::string_view name : names) {
        if (!text.empty())
            text += ", ";
        text += name;
    }
    return text;
}

size_t editDistance(std::string_view a, std::string_view b)
{
    if (a.size() > 64 || b.size() > 64)
        return SIZE_MAX;
    std::vector<size_t> previous(b.size() + 1), current(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j)
        previous[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        current[0] = i;
        for (size_t j = 1; j <= b.size(); ++j)
            current[j] = std::min({ previous[j] + 1, current[j - 1] + 1, previous[j - 1] + (a[i - 1] != b[j - 1]) });
        std::swap(previous, current);
    }
    return previous[b.size()];
}

// ", did you mean 'tap'?" when one of `names` is a likely typo of `word`.
template<typename Names>
std::string suggestion(std::string_view word, const Names& names)
{
    auto commonPrefix = [&](std::string_view name) {
        return std::mismatch(word.begin(), word.end(), name.begin(), name.end()).first - word.begin();
    };
    std::string_view best;
    size_t bestDistance = 3;
    for (std::string_view name : names) {
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

// A word as it appears in a message: cut short, and never cut inside a
// UTF-8 sequence.
std::string shown(std::string_view text)
{
    constexpr size_t limit = 60;
    if (text.size() <= limit)
        return std::string(text);
    size_t cut = limit;
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xc0) == 0x80)
        --cut;
    return std::string(text.substr(0, cut)) + "...";
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

// The words of one line, with the checks every command form needs. Each
// conversion reports its own mistake and answers nothing; a handler reads on
// so that one line reports all its mistakes, and the line's command is
// dropped when any was reported.
class LineReader {
public:
    LineReader(std::string_view line, const std::vector<Word>& words, const CommandForm& form)
        : m_line(line)
        , m_form(form)
    {
        for (size_t i = 1; i < words.size(); ++i)
            (words[i].isOption() ? m_options : m_arguments).push_back(&words[i]);
    }

    const std::vector<std::string>& errors() const { return m_errors; }
    bool failed() const { return !m_errors.empty(); }
    void error(std::string message) { m_errors.push_back(std::move(message)); }

    std::string_view line() const { return m_line; }
    std::string_view name() const { return m_form.name; }

    size_t argumentCount() const { return m_arguments.size(); }
    const Word& argument(size_t index) const { return *m_arguments[index]; }
    // Whether argument `index` is the bare word `keyword` (quoting it makes it text).
    bool argumentIs(size_t index, std::string_view keyword) const
    {
        return index < m_arguments.size() && !m_arguments[index]->quoted && m_arguments[index]->text == keyword;
    }

    bool expectArguments(size_t minimum, size_t maximum)
    {
        if (m_arguments.size() < minimum) {
            error("missing argument: usage is '" + std::string(m_form.usage) + "'");
            return false;
        }
        if (m_arguments.size() > maximum) {
            error("unexpected argument '" + shown(raw(*m_arguments[maximum])) + "': usage is '" + std::string(m_form.usage) + "'");
            return false;
        }
        return true;
    }

    void checkOptions(const std::vector<std::string_view>& allowed)
    {
        for (size_t i = 0; i < m_options.size(); ++i) {
            const Word& option = *m_options[i];
            if (allowed.empty()) {
                error("'" + std::string(name()) + "' takes no options, got '" + shown(source(option)) + "' (quote a word that holds '=')");
            } else if (std::find(allowed.begin(), allowed.end(), option.key) == allowed.end()) {
                error("option '" + shown(option.key) + "' is not one of " + joined(allowed) + suggestion(option.key, allowed));
            } else if (std::any_of(m_options.begin(), m_options.begin() + i, [&](const Word* earlier) { return earlier->key == option.key; })) {
                error("option '" + option.key + "' is given twice");
            }
        }
    }

    void rejectOptions(std::string_view form)
    {
        if (!m_options.empty())
            error("'" + std::string(form) + "' takes no options, got '" + shown(source(*m_options[0])) + "'");
    }

    const Word* option(std::string_view key) const
    {
        auto found = std::find_if(m_options.begin(), m_options.end(), [&](const Word* word) { return word->key == key; });
        return found == m_options.end() ? nullptr : *found;
    }

    const Word* requiredOption(std::string_view key, std::string_view valueName)
    {
        const Word* word = option(key);
        if (!word)
            error("missing option " + std::string(key) + "=" + std::string(valueName) + ": usage is '" + std::string(m_form.usage) + "'");
        return word;
    }

    // The source text of a word, without an option's key.
    std::string_view raw(const Word& word) const
    {
        std::string_view text = m_line.substr(word.begin, word.end - word.begin);
        return word.isOption() ? text.substr(word.key.size() + 1) : text;
    }

    void expected(const Word& word, std::string_view what)
    {
        error(context(word) + "expected " + std::string(what) + ", got '" + shown(raw(word)) + "'");
    }

    // Every conversion below answers nothing, silently, for a null word: an
    // option that was left out.
    std::optional<std::string> text(const Word* word)
    {
        if (!word)
            return std::nullopt;
        if (word->problem) {
            error(context(*word) + *word->problem);
            return std::nullopt;
        }
        return word->text;
    }

    std::optional<std::string> nonEmptyText(const Word* word, std::string_view what)
    {
        std::optional<std::string> value = text(word);
        if (value && value->empty()) {
            expected(*word, what);
            return std::nullopt;
        }
        return value;
    }

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

    std::optional<double> duration(const Word* word) { return parsed(word, parseDuration, ValueDescription::duration); }
    std::optional<TimeSpec> time(const Word* word) { return parsed(word, parseTime, ValueDescription::time); }
    std::optional<bool> boolean(const Word* word) { return parsed(word, parseBoolean, ValueDescription::boolean); }
    std::optional<Color> color(const Word* word) { return parsed(word, parseColor, ValueDescription::color); }
    std::optional<double> decimal(const Word* word) { return parsed(word, parseDecimal, ValueDescription::decimal); }
    std::optional<Target> target(const Word* word) { return parsed(word, parseTarget, ValueDescription::target); }

    std::optional<double> unitFraction(const Word* word)
    {
        return parsed(word, [](std::string_view text) -> std::optional<double> {
            auto value = parseDecimal(text);
            return value && *value >= 0 && *value <= 1 ? value : std::nullopt;
        }, ValueDescription::unitFraction);
    }

    std::optional<int> integer(const Word* word, int minimum, int maximum)
    {
        std::string what = "a whole number from " + std::to_string(minimum) + " to " + std::to_string(maximum);
        auto value = parsed(word, [&](std::string_view text) -> std::optional<int64_t> {
            auto value = parseInteger(text);
            return value && *value >= minimum && *value <= maximum ? value : std::nullopt;
        }, what);
        return value ? std::optional<int>(static_cast<int>(*value)) : std::nullopt;
    }

    std::optional<int> temperature(const Word* word) { return integer(word, -100, 100); }

    template<typename T>
    std::optional<T> keyword(const Word* word, std::initializer_list<std::pair<std::string_view, T>> choices)
    {
        if (!word)
            return std::nullopt;
        for (const auto& [name, value] : choices) {
            if (!word->problem && word->text == name)
                return value;
        }
        std::vector<std::string_view> names;
        for (const auto& choice : choices)
            names.push_back(choice.first);
        error(context(*word) + "expected one of " + joined(names) + ", got '" + shown(raw(*word)) + "'" + suggestion(word->text, names));
        return std::nullopt;
    }

    std::optional<std::string> devicePath(const Word* word)
    {
        return checkedText(word, [](const std::string& path) {
            return path.size() > 1 && path[0] == '/' && !hasParentComponent(path);
        }, "an absolute path on the device like /var/mobile/Library/Preferences/x.plist");
    }

    std::optional<std::string> bundleIdentifier(const Word* word)
    {
        return checkedText(word, isBundleIdentifier, "a bundle identifier like com.apple.mobilecal");
    }

    std::optional<std::string> identifier(const Word* word, std::string_view what)
    {
        return checkedText(word, isIdentifier, what);
    }

    std::optional<std::string> outputFile(const Word* word, std::string_view extension)
    {
        std::string what = "a file name ending in " + std::string(extension) + ", relative to the output folder";
        return checkedText(word, [&](const std::string& path) {
            return path.size() > extension.size() && path.ends_with(extension) && path[0] != '/'
                && !path.ends_with("/" + std::string(extension)) && !hasParentComponent(path);
        }, what);
    }

    // The JSON value of an `expect`: one quoted word is a string; anything
    // else, to the end of the line, is JSON text (so `[0, 0, 375, 667]` may
    // hold blanks).
    std::optional<nlohmann::json> expectedValue(size_t firstArgument)
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
            error("expected a JSON value or a quoted string, got '" + shown(json) + "' (quote text: \"like this\")");
            return std::nullopt;
        }
        return value;
    }

private:
    std::string_view source(const Word& word) const { return m_line.substr(word.begin, word.end - word.begin); }

    std::string context(const Word& word) const
    {
        return word.isOption() ? "option '" + word.key + "': " : std::string();
    }

    std::string_view m_line;
    const CommandForm& m_form;
    std::vector<const Word*> m_arguments;
    std::vector<const Word*> m_options;
    std::vector<std::string> m_errors;
};

template<typename Payload>
void set(Command& command, CommandKind kind, Payload payload)
{
    command.kind = kind;
    command.payload = std::move(payload);
}

// Host shape.

void parseSystem(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto version = reader.checkedText(&reader.argument(0), isVersion, "a version like 9.3.3");
    set(command, CommandKind::System, SystemCommand { version.value_or("") });
}

void parseDevice(LineReader& reader, Command& command)
{
    const Word* code = reader.option("code");
    if (!reader.expectArguments(code ? 0 : 1, 1))
        return;
    DeviceCommand device;
    if (reader.argumentCount() == 1) {
        if (auto name = reader.text(&reader.argument(0))) {
            device.model = deviceModelNamed(*name);
            std::vector<std::string_view> names;
            for (const DeviceInfo& info : deviceTable())
                names.push_back(info.name);
            if (device.model)
                device.code = deviceInfo(*device.model).code;
            else
                reader.error("unknown device '" + shown(*name) + "'" + suggestion(*name, names) + " (devices: " + joined(names) + ")");
        }
    }
    if (auto number = reader.integer(code, 1, 999))
        device.code = *number;
    set(command, CommandKind::Device, device);
}

void parseLocale(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto identifier = reader.checkedText(&reader.argument(0), isLocaleIdentifier, "a locale like en_US");
    set(command, CommandKind::Locale, LocaleCommand { identifier.value_or("") });
}

void parseTimeZone(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto name = reader.checkedText(&reader.argument(0), isTimeZoneName, "a time zone like Europe/Paris or UTC");
    set(command, CommandKind::TimeZone, TimeZoneCommand { name.value_or("") });
}

void parseMissing(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(2, 3))
        return;
    enum class What { Class, Ivar };
    auto what = reader.keyword<What>(&reader.argument(0), { { "class", What::Class }, { "ivar", What::Ivar } });
    if (what == What::Class && reader.expectArguments(2, 2)) {
        auto name = reader.identifier(&reader.argument(1), "a class name");
        set(command, CommandKind::MissingClass, MissingClassCommand { name.value_or("") });
    } else if (what == What::Ivar && reader.expectArguments(3, 3)) {
        auto className = reader.identifier(&reader.argument(1), "a class name");
        auto ivarName = reader.identifier(&reader.argument(2), "an instance variable name like _foregroundScrollView");
        set(command, CommandKind::MissingIvar, MissingIvarCommand { className.value_or(""), ivarName.value_or("") });
    }
}

// World.

void parseNow(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto time = reader.time(&reader.argument(0));
    set(command, CommandKind::Now, NowCommand { time.value_or(TimeSpec {}) });
}

void parsePrefs(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(2, 2))
        return;
    auto key = reader.nonEmptyText(&reader.argument(0), "a preference key");
    auto text = reader.text(&reader.argument(1));
    if (!key || !text)
        return;
    // A quoted value is always a string, so that "12" and "yes" can be stored as text.
    PrefsValue value = *text;
    if (!reader.argument(1).quoted) {
        if (auto boolean = parseBoolean(*text))
            value = *boolean;
        else if (auto integer = parseInteger(*text))
            value = *integer;
        else if (auto decimal = parseDecimal(*text))
            value = *decimal;
    }
    set(command, CommandKind::Prefs, PrefsCommand { *key, std::move(value) });
}

void parseNoArguments(LineReader& reader, Command& command, CommandKind kind)
{
    if (reader.expectArguments(0, 0))
        set(command, kind, NoArguments {});
}

void parseFile(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(2, 3))
        return;
    auto path = reader.devicePath(&reader.argument(0));
    if (reader.argumentCount() == 2) {
        auto text = reader.text(&reader.argument(1));
        set(command, CommandKind::WriteFile, WriteFileCommand { path.value_or(""), text.value_or("") });
        return;
    }
    if (!reader.argumentIs(1, "from")) {
        reader.error("expected 'from' after the path, got '" + shown(reader.raw(reader.argument(1))) + "': usage is 'file PATH \"TEXT\"' or 'file PATH from HOSTPATH'");
        return;
    }
    auto hostPath = reader.nonEmptyText(&reader.argument(2), "a path on this computer");
    set(command, CommandKind::CopyFile, CopyFileCommand { path.value_or(""), hostPath.value_or("") });
}

void parseRemove(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto path = reader.devicePath(&reader.argument(0));
    set(command, CommandKind::RemoveFile, RemoveFileCommand { path.value_or("") });
}

void parseAppList(LineReader& reader, Command& command)
{
    AppListCommand list;
    for (size_t i = 0; i < reader.argumentCount(); ++i)
        list.lines.push_back(reader.text(&reader.argument(i)).value_or(""));
    set(command, CommandKind::AppList, std::move(list));
}

void parseApp(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    AppCommand app;
    app.bundleIdentifier = reader.bundleIdentifier(&reader.argument(0)).value_or("");
    app.name = reader.nonEmptyText(reader.option("name"), "an app name");
    app.color = reader.color(reader.option("color"));
    set(command, CommandKind::App, std::move(app));
}

void parseSwitcher(LineReader& reader, Command& command)
{
    SwitcherCommand switcher;
    for (size_t i = 0; i < reader.argumentCount(); ++i)
        switcher.bundleIdentifiers.push_back(reader.bundleIdentifier(&reader.argument(i)).value_or(""));
    set(command, CommandKind::Switcher, std::move(switcher));
}

void parseBattery(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(0, 0))
        return;
    BatteryCommand battery;
    battery.level = reader.unitFraction(reader.option("level"));
    battery.externalPower = reader.boolean(reader.option("ac"));
    battery.lowPowerMode = reader.boolean(reader.option("lowpower"));
    battery.currentCapacity = reader.integer(reader.option("current"), 0, 100000);
    battery.maxCapacity = reader.integer(reader.option("max"), 0, 100000);
    set(command, CommandKind::Battery, battery);
}

void parseWeather(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(0, 1))
        return;
    if (reader.argumentCount() == 1) {
        if (reader.keyword<bool>(&reader.argument(0), { { "off", true } })) {
            reader.rejectOptions("weather off");
            set(command, CommandKind::WeatherOff, NoArguments {});
        }
        return;
    }
    WeatherCommand weather;
    weather.city = reader.text(reader.option("city"));
    weather.condition = reader.text(reader.option("condition"));
    weather.icon = reader.nonEmptyText(reader.option("icon"), "an icon name");
    weather.temperature = reader.temperature(reader.option("temp"));
    weather.high = reader.temperature(reader.option("high"));
    weather.low = reader.temperature(reader.option("low"));
    set(command, CommandKind::Weather, std::move(weather));
}

void parseWeatherHour(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(2, 2))
        return;
    WeatherHourCommand hour;
    hour.time = reader.parsed(&reader.argument(0), parseCompactTimeOfDay, ValueDescription::compactTimeOfDay).value_or(TimeOfDay {});
    hour.temperature = reader.temperature(&reader.argument(1)).value_or(0);
    hour.icon = reader.nonEmptyText(reader.option("icon"), "an icon name");
    set(command, CommandKind::WeatherHour, std::move(hour));
}

void parseWeatherDay(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(3, 3))
        return;
    WeatherDayCommand day;
    day.day = reader.nonEmptyText(&reader.argument(0), "a day name like Today or Monday").value_or("");
    day.high = reader.temperature(&reader.argument(1)).value_or(0);
    day.low = reader.temperature(&reader.argument(2)).value_or(0);
    day.icon = reader.nonEmptyText(reader.option("icon"), "an icon name");
    set(command, CommandKind::WeatherDay, std::move(day));
}

void parseCalendar(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    CalendarCommand calendar;
    calendar.name = reader.nonEmptyText(&reader.argument(0), "a calendar name").value_or("");
    calendar.color = reader.color(reader.option("color"));
    set(command, CommandKind::Calendar, std::move(calendar));
}

void parseEvent(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    EventCommand event;
    event.title = reader.text(&reader.argument(0)).value_or("");
    auto start = reader.time(reader.requiredOption("start", "TIME"));
    event.end = reader.time(reader.option("end"));
    event.calendar = reader.nonEmptyText(reader.option("calendar"), "a calendar name");
    event.location = reader.text(reader.option("location"));
    event.notes = reader.text(reader.option("notes"));
    if (start && event.end && start->kind == event.end->kind) {
        bool endsFirst = start->isRelative() ? event.end->offset < start->offset : event.end->local < start->local;
        if (endsFirst)
            reader.error("the event ends (end=" + shown(reader.raw(*reader.option("end"))) + ") before it starts (start=" + shown(reader.raw(*reader.option("start"))) + ")");
    }
    event.start = start.value_or(TimeSpec {});
    set(command, CommandKind::Event, std::move(event));
}

void parseReminder(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    ReminderCommand reminder;
    reminder.title = reader.text(&reader.argument(0)).value_or("");
    const Word* due = reader.option("due");
    if (due && !(due->text == "none" && !due->quoted))
        reminder.due = reader.time(due);
    reminder.calendar = reader.nonEmptyText(reader.option("calendar"), "a calendar name");
    reminder.completed = reader.boolean(reader.option("completed"));
    set(command, CommandKind::Reminder, std::move(reminder));
}

void parseNotification(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    NotificationCommand notification;
    notification.bundleIdentifier = reader.bundleIdentifier(&reader.argument(0)).value_or("");
    notification.title = reader.text(reader.option("title"));
    notification.subtitle = reader.text(reader.option("subtitle"));
    notification.message = reader.text(reader.option("message"));
    notification.url = reader.nonEmptyText(reader.option("url"), "a URL");
    notification.date = reader.time(reader.option("date"));
    notification.image = reader.boolean(reader.option("image"));
    notification.actions = reader.integer(reader.option("actions"), 0, 100);
    set(command, CommandKind::Notification, std::move(notification));
}

void parseNotifications(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(0, 0))
        return;
    auto grouped = reader.boolean(reader.requiredOption("grouped", "yes|no"));
    set(command, CommandKind::NotificationGrouping, NotificationGroupingCommand { grouped.value_or(true) });
}

void parseMusic(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(0, 1))
        return;
    if (reader.argumentCount() == 1) {
        if (reader.keyword<bool>(&reader.argument(0), { { "none", true } })) {
            reader.rejectOptions("music none");
            set(command, CommandKind::MusicNone, NoArguments {});
        }
        return;
    }
    MusicCommand music;
    music.artist = reader.text(reader.option("artist"));
    music.song = reader.text(reader.option("song"));
    music.album = reader.text(reader.option("album"));
    music.artwork = reader.color(reader.option("artwork"));
    music.playing = reader.boolean(reader.option("playing"));
    music.track = reader.parsed(reader.option("track"), parseTrackPosition, ValueDescription::trackPosition);
    set(command, CommandKind::Music, std::move(music));
}

void parseVolume(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto volume = reader.unitFraction(&reader.argument(0));
    set(command, CommandKind::Volume, VolumeCommand { volume.value_or(0) });
}

void parseAlarm(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 2))
        return;
    enum class Day { Today, Tomorrow, None };
    auto day = reader.keyword<Day>(&reader.argument(0), { { "today", Day::Today }, { "tomorrow", Day::Tomorrow }, { "none", Day::None } });
    if (day == Day::None) {
        if (reader.expectArguments(1, 1))
            set(command, CommandKind::AlarmNone, NoArguments {});
        return;
    }
    if (!day || !reader.expectArguments(2, 2))
        return;
    auto time = reader.parsed(&reader.argument(1), parseTimeOfDay, ValueDescription::timeOfDay);
    auto alarmDay = *day == Day::Today ? AlarmCommand::Day::Today : AlarmCommand::Day::Tomorrow;
    set(command, CommandKind::Alarm, AlarmCommand { alarmDay, time.value_or(TimeOfDay {}) });
}

void parseTimer(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 2))
        return;
    using State = TimerCommand::State;
    auto state = reader.keyword<State>(&reader.argument(0), { { "running", State::Running }, { "paused", State::Paused }, { "stopped", State::Stopped } });
    if (!state)
        return;
    if (*state == State::Stopped) {
        if (reader.expectArguments(1, 1))
            set(command, CommandKind::Timer, TimerCommand { State::Stopped, 0 });
        return;
    }
    if (!reader.expectArguments(2, 2))
        return;
    auto remaining = reader.duration(&reader.argument(1));
    set(command, CommandKind::Timer, TimerCommand { *state, remaining.value_or(0) });
}

void parseCall(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    using State = CallCommand::State;
    if (auto state = reader.keyword<State>(&reader.argument(0), { { "incoming", State::Incoming }, { "active", State::Active }, { "none", State::None } }))
        set(command, CommandKind::Call, CallCommand { *state });
}

void parseFaceTime(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    using State = FaceTimeCommand::State;
    if (auto state = reader.keyword<State>(&reader.argument(0), { { "active", State::Active }, { "invitation", State::Invitation }, { "none", State::None } }))
        set(command, CommandKind::FaceTime, FaceTimeCommand { *state });
}

// Acting.

void parseAdvance(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto seconds = reader.duration(&reader.argument(0));
    set(command, CommandKind::Advance, AdvanceCommand { seconds.value_or(0) });
}

void parseTargetOnly(LineReader& reader, Command& command, CommandKind kind)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto target = reader.target(&reader.argument(0));
    set(command, kind, TargetCommand { target.value_or(Target {}) });
}

void parseLongPress(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 2))
        return;
    LongPressCommand press;
    press.target = reader.target(&reader.argument(0)).value_or(Target {});
    if (reader.argumentCount() == 2)
        press.duration = reader.duration(&reader.argument(1)).value_or(0);
    set(command, CommandKind::LongPress, std::move(press));
}

void parseSwipe(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(2, 2))
        return;
    using Direction = SwipeCommand::Direction;
    auto direction = reader.keyword<Direction>(&reader.argument(0),
        { { "up", Direction::Up }, { "down", Direction::Down }, { "left", Direction::Left }, { "right", Direction::Right } });
    auto target = reader.target(&reader.argument(1));
    set(command, CommandKind::Swipe, SwipeCommand { direction.value_or(Direction::Up), target.value_or(Target {}) });
}

void parseSlide(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(2, 2))
        return;
    auto target = reader.target(&reader.argument(0));
    auto value = reader.decimal(&reader.argument(1));
    set(command, CommandKind::Slide, SlideCommand { target.value_or(Target {}), value.value_or(0) });
}

void parseScroll(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(3, 3))
        return;
    auto target = reader.target(&reader.argument(0));
    auto dx = reader.decimal(&reader.argument(1));
    auto dy = reader.decimal(&reader.argument(2));
    set(command, CommandKind::Scroll, ScrollCommand { target.value_or(Target {}), dx.value_or(0), dy.value_or(0) });
}

void parsePick(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(3, 3))
        return;
    auto target = reader.target(&reader.argument(0));
    auto component = reader.integer(&reader.argument(1), 0, 100);
    auto row = reader.integer(&reader.argument(2), 0, 100000);
    set(command, CommandKind::Pick, PickCommand { target.value_or(Target {}), component.value_or(0), row.value_or(0) });
}

void parseSwitch(LineReader& reader, Command& command, CommandKind kind, std::string_view on, std::string_view off)
{
    if (!reader.expectArguments(1, 1))
        return;
    if (auto state = reader.keyword<bool>(&reader.argument(0), { { on, true }, { off, false } }))
        set(command, kind, SwitchCommand { *state });
}

void parseRotate(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    using Orientation = RotateCommand::Orientation;
    auto orientation = reader.keyword<Orientation>(&reader.argument(0),
        { { "portrait", Orientation::Portrait }, { "landscape", Orientation::Landscape },
            { "landscape-right", Orientation::LandscapeRight }, { "upside-down", Orientation::UpsideDown } });
    if (orientation)
        set(command, CommandKind::Rotate, RotateCommand { *orientation });
}

void parseSearch(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 2))
        return;
    auto show = reader.keyword<bool>(&reader.argument(0), { { "show", true }, { "hide", false } });
    if (!show || !reader.expectArguments(*show ? 2 : 1, *show ? 2 : 1))
        return;
    SearchCommand search { *show, SearchCommand::Edge::Right };
    if (*show) {
        using Edge = SearchCommand::Edge;
        auto edge = reader.keyword<Edge>(&reader.argument(1), { { "right", Edge::Right }, { "top", Edge::Top } });
        search.edge = edge.value_or(Edge::Right);
    }
    set(command, CommandKind::Search, search);
}

// Looking.

void parseOutputFile(LineReader& reader, Command& command, CommandKind kind, std::string_view extension)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto fileName = reader.outputFile(&reader.argument(0), extension);
    set(command, kind, OutputFileCommand { fileName.value_or("") });
}

std::vector<std::string> splitPath(std::string_view text)
{
    std::vector<std::string> components;
    size_t start = 0;
    while (true) {
        size_t dot = text.find('.', start);
        components.emplace_back(text.substr(start, dot == std::string_view::npos ? std::string_view::npos : dot - start));
        if (dot == std::string_view::npos)
            return components;
        start = dot + 1;
    }
}

void parseExpect(LineReader& reader, Command& command)
{
    if (!reader.expectArguments(2, SIZE_MAX))
        return;
    const Word& first = reader.argument(0);
    if (!first.quoted && (first.text == "host" || first.text.starts_with("host."))) {
        ExpectHostCommand expect;
        if (first.text.size() > 4)
            expect.path = splitPath(std::string_view(first.text).substr(5));
        if (std::any_of(expect.path.begin(), expect.path.end(), [](const std::string& component) { return component.empty(); }))
            reader.expected(first, "a path like host.timer.state");
        auto value = reader.expectedValue(1);
        expect.value = value.value_or(nullptr);
        set(command, CommandKind::ExpectHost, std::move(expect));
        return;
    }

    auto target = reader.target(&first);
    if (reader.argumentCount() == 2 && reader.argumentIs(1, "absent")) {
        set(command, CommandKind::ExpectAbsent, ExpectAbsentCommand { target.value_or(Target {}) });
        return;
    }
    if (!reader.expectArguments(3, SIZE_MAX))
        return;
    ExpectPropertyCommand expect;
    expect.target = target.value_or(Target {});
    if (auto property = reader.text(&reader.argument(1))) {
        expect.property = splitPath(*property);
        if (std::any_of(expect.property.begin(), expect.property.end(), [](const std::string& component) { return component.empty(); }))
            reader.expected(reader.argument(1), "a property of the view's dump like text or frame.2");
    }
    expect.value = reader.expectedValue(2).value_or(nullptr);
    set(command, CommandKind::ExpectProperty, std::move(expect));
}

const std::vector<CommandForm>& commandForms()
{
    using Phase = CommandPhase;
    static const std::vector<CommandForm> forms {
        { "system", Phase::HostShape, "system VERSION", {}, parseSystem },
        { "device", Phase::HostShape, "device MODEL or device code=N", { "code" }, parseDevice },
        { "locale", Phase::HostShape, "locale ID", {}, parseLocale },
        { "timezone", Phase::HostShape, "timezone TZ", {}, parseTimeZone },
        { "missing", Phase::HostShape, "missing class NAME or missing ivar CLASS NAME", {}, parseMissing },

        { "now", Phase::World, "now TIME", {}, parseNow },
        { "prefs", Phase::World, "prefs KEY VALUE", {}, parsePrefs },
        { "prefs-clear", Phase::World, "prefs-clear", {}, [](LineReader& r, Command& c) { parseNoArguments(r, c, CommandKind::PrefsClear); } },
        { "file", Phase::World, "file PATH \"TEXT\" or file PATH from HOSTPATH", {}, parseFile },
        { "rm", Phase::World, "rm PATH", {}, parseRemove },
        { "applist", Phase::World, "applist \"LINE\" ...", {}, parseAppList },
        { "app", Phase::World, "app BUNDLEID name=\"NAME\" color=#rrggbb", { "name", "color" }, parseApp },
        { "switcher", Phase::World, "switcher BUNDLEID ...", {}, parseSwitcher },
        { "battery", Phase::World, "battery level=F ac=B lowpower=B current=MAH max=MAH", { "level", "ac", "lowpower", "current", "max" }, parseBattery },
        { "weather", Phase::World, "weather city=\"C\" condition=\"C\" icon=NAME temp=T high=H low=L or weather off",
            { "city", "condition", "icon", "temp", "high", "low" }, parseWeather },
        { "weather-hour", Phase::World, "weather-hour HHMM T icon=NAME", { "icon" }, parseWeatherHour },
        { "weather-day", Phase::World, "weather-day NAME H L icon=NAME", { "icon" }, parseWeatherDay },
        { "calendar", Phase::World, "calendar NAME color=#rrggbb", { "color" }, parseCalendar },
        { "event", Phase::World, "event \"TITLE\" start=TIME end=TIME calendar=NAME location=\"L\" notes=\"N\"",
            { "start", "end", "calendar", "location", "notes" }, parseEvent },
        { "reminder", Phase::World, "reminder \"TITLE\" due=TIME|none calendar=NAME completed=B", { "due", "calendar", "completed" }, parseReminder },
        { "notification", Phase::World, "notification BUNDLEID title=\"T\" subtitle=\"S\" message=\"M\" date=TIME image=B actions=N url=\"U\"",
            { "title", "subtitle", "message", "date", "image", "actions", "url" }, parseNotification },
        { "notifications", Phase::World, "notifications grouped=B", { "grouped" }, parseNotifications },
        { "music", Phase::World, "music artist=\"A\" song=\"S\" album=\"L\" artwork=#rrggbb playing=B track=I/N or music none",
            { "artist", "song", "album", "artwork", "playing", "track" }, parseMusic },
        { "volume", Phase::World, "volume F", {}, parseVolume },
        { "alarm", Phase::World, "alarm today|tomorrow HH:MM or alarm none", {}, parseAlarm },
        { "timer", Phase::World, "timer running|paused DURATION or timer stopped", {}, parseTimer },
        { "call", Phase::World, "call incoming|active|none", {}, parseCall },
        { "facetime", Phase::World, "facetime active|invitation|none", {}, parseFaceTime },

        { "boot", Phase::Acting, "boot", {}, [](LineReader& r, Command& c) { parseNoArguments(r, c, CommandKind::Boot); } },
        { "advance", Phase::Acting, "advance DURATION", {}, parseAdvance },
        { "tap", Phase::Acting, "tap TARGET", {}, [](LineReader& r, Command& c) { parseTargetOnly(r, c, CommandKind::Tap); } },
        { "doubletap", Phase::Acting, "doubletap TARGET", {}, [](LineReader& r, Command& c) { parseTargetOnly(r, c, CommandKind::DoubleTap); } },
        { "longpress", Phase::Acting, "longpress TARGET [DURATION]", {}, parseLongPress },
        { "swipe", Phase::Acting, "swipe up|down|left|right TARGET", {}, parseSwipe },
        { "slide", Phase::Acting, "slide TARGET VALUE", {}, parseSlide },
        { "scroll", Phase::Acting, "scroll TARGET DX DY", {}, parseScroll },
        { "pick", Phase::Acting, "pick TARGET COMPONENT ROW", {}, parsePick },
        { "home", Phase::Acting, "home", {}, [](LineReader& r, Command& c) { parseNoArguments(r, c, CommandKind::Home); } },
        { "display", Phase::Acting, "display off|on", {}, [](LineReader& r, Command& c) { parseSwitch(r, c, CommandKind::Display, "on", "off"); } },
        { "alert", Phase::Acting, "alert show|dismiss", {}, [](LineReader& r, Command& c) { parseSwitch(r, c, CommandKind::Alert, "show", "dismiss"); } },
        { "rotate", Phase::Acting, "rotate portrait|landscape|landscape-right|upside-down", {}, parseRotate },
        { "lock", Phase::Acting, "lock", {}, [](LineReader& r, Command& c) { parseNoArguments(r, c, CommandKind::Lock); } },
        { "unlock", Phase::Acting, "unlock", {}, [](LineReader& r, Command& c) { parseNoArguments(r, c, CommandKind::Unlock); } },
        { "nc", Phase::Acting, "nc show|hide", {}, [](LineReader& r, Command& c) { parseSwitch(r, c, CommandKind::NotificationCenter, "show", "hide"); } },
        { "search", Phase::Acting, "search show right|top or search hide", {}, parseSearch },

        { "shot", Phase::Looking, "shot FILE.png", {}, [](LineReader& r, Command& c) { parseOutputFile(r, c, CommandKind::Shot, ".png"); } },
        { "dump", Phase::Looking, "dump FILE.json", {}, [](LineReader& r, Command& c) { parseOutputFile(r, c, CommandKind::Dump, ".json"); } },
        { "expect", Phase::Looking, "expect TARGET PROPERTY VALUE, expect TARGET absent or expect host.PATH VALUE", {}, parseExpect },
    };
    return forms;
}

const CommandForm* commandFormNamed(std::string_view name)
{
    for (const CommandForm& form : commandForms()) {
        if (form.name == name)
            return &form;
    }
    return nullptr;
}

// The place of `boot` in the scenario, for the ordering rules.
struct Progress {
    int bootLine { 0 };
};

std::optional<Command> parseLine(std::string_view line, const std::string& fileName, int lineNumber, Progress& progress, std::vector<std::string>& errors)
{
    LexedLine lexed = ScenarioLexer::splitWords(line);
    if (lexed.error) {
        errors.push_back(*lexed.error);
        return std::nullopt;
    }
    if (lexed.words.empty())
        return std::nullopt;

    const Word& first = lexed.words[0];
    std::string_view name = line.substr(first.begin, first.end - first.begin);
    const CommandForm* form = first.quoted || first.isOption() ? nullptr : commandFormNamed(first.text);
    if (!form) {
        std::vector<std::string_view> names;
        for (const CommandForm& known : commandForms())
            names.push_back(known.name);
        errors.push_back("unknown command '" + shown(name) + "'" + suggestion(name, names));
        return std::nullopt;
    }

    LineReader reader(line, lexed.words, *form);
    Command command;
    command.file = fileName;
    command.line = lineNumber;
    command.text = std::string(line.substr(first.begin, lexed.words.back().end - first.begin));
    reader.checkOptions(form->options);
    form->parse(reader, command);

    if (form->name == "boot") {
        if (progress.bootLine)
            reader.error("boot may be given only once (first at line " + std::to_string(progress.bootLine) + ")");
        else
            progress.bootLine = lineNumber;
    } else if (form->phase == CommandPhase::HostShape && progress.bootLine) {
        reader.error("'" + std::string(form->name) + "' shapes the host and must come before boot (line " + std::to_string(progress.bootLine) + ")");
    } else if ((form->phase == CommandPhase::Acting || form->phase == CommandPhase::Looking) && !progress.bootLine) {
        reader.error("'" + std::string(form->name) + "' needs the running host: it must come after boot");
    }

    errors = reader.errors();
    if (reader.failed())
        return std::nullopt;
    return command;
}

}

std::string Diagnostic::toString() const
{
    if (line <= 0)
        return file + ": " + message;
    return file + ":" + std::to_string(line) + ": " + message;
}

std::string ScenarioParseResult::diagnosticText() const
{
    std::string text;
    for (const Diagnostic& diagnostic : diagnostics)
        text += diagnostic.toString() + "\n";
    return text;
}

ScenarioParseResult ScenarioParser::parseText(std::string_view text, const std::string& fileName)
{
    ScenarioParseResult result;
    Progress progress;
    std::vector<std::string_view> lines = ScenarioLexer::splitLines(text);
    for (size_t index = 0; index < lines.size(); ++index) {
        int lineNumber = static_cast<int>(index + 1);
        std::vector<std::string> errors;
        std::optional<Command> command;
        try {
            command = parseLine(lines[index], fileName, lineNumber, progress, errors);
        } catch (const std::exception& exception) {
            // Only running out of memory gets here; report it as a value all the same.
            errors = { std::string("cannot read this line: ") + exception.what() };
        }
        if (command)
            result.commands.push_back(std::move(*command));
        for (std::string& message : errors) {
            if (result.diagnostics.size() == maximumDiagnostics) {
                result.diagnostics.push_back({ fileName, lineNumber, "too many mistakes; stopping here" });
                result.commands.clear();
                return result;
            }
            result.diagnostics.push_back({ fileName, lineNumber, std::move(message) });
        }
    }
    if (!result.diagnostics.empty())
        result.commands.clear();
    return result;
}

ScenarioParseResult ScenarioParser::parseFile(const std::string& path)
{
    if (path == "-") {
        std::string text((std::istreambuf_iterator<char>(std::cin)), std::istreambuf_iterator<char>());
        return parseText(text, "<stdin>");
    }
    auto cannotRead = [&] {
        ScenarioParseResult result;
        result.diagnostics.push_back({ path, 0, std::string("cannot read the scenario: ") + std::strerror(errno) });
        return result;
    };
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file)
        return cannotRead();
    std::string text;
    char buffer[65536];
    size_t count;
    while ((count = std::fread(buffer, 1, sizeof buffer, file)) > 0)
        text.append(buffer, count);
    bool failed = std::ferror(file);
    int error = errno;
    std::fclose(file);
    if (failed) {
        errno = error;
        return cannotRead();
    }
    return parseText(text, path);
}

}
