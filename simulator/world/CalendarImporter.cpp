#include "CalendarImporter.h"

#include "IcsLineMap.h"
#include "IcsTimes.h"
#include "RecurrenceExpander.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <unordered_map>

namespace sim {

namespace {

// The top-level components of a file, read line by line with libical's
// parser so that a file cut short (no END:VCALENDAR) still gives what it
// holds: icalparser_clean closes what is open, marking it with X-LIC-ERROR.
class ParsedFile {
public:
    explicit ParsedFile(std::string_view text)
        : m_source { text.data(), text.data() + text.size() }
        , m_parser(icalparser_new())
    {
        icalparser_set_gen_data(m_parser, &m_source);
        char* line;
        do {
            line = icalparser_get_line(m_parser, nextLine);
            if (icalcomponent* component = icalparser_add_line(m_parser, line))
                m_roots.push_back(component);
            if (line)
                icalmemory_free_buffer(line);
        } while (line);
        // What clean answers stays the parser's: icalparser_free frees it.
        m_unfinished = icalparser_clean(m_parser);
        if (m_unfinished)
            m_roots.push_back(m_unfinished);
    }
    ~ParsedFile()
    {
        for (icalcomponent* root : m_roots) {
            if (root != m_unfinished)
                icalcomponent_free(root);
        }
        icalparser_free(m_parser);
    }
    ParsedFile(const ParsedFile&) = delete;
    ParsedFile& operator=(const ParsedFile&) = delete;

    const std::vector<icalcomponent*>& roots() const { return m_roots; }

private:
    struct Source {
        const char* position;
        const char* end;
    };
    // Hands libical one line (with its line break) at a time, as fgets would;
    // a NUL byte ends the text, as it would in a C string.
    static char* nextLine(char* out, size_t size, void* data)
    {
        auto* source = static_cast<Source*>(data);
        if (source->position >= source->end || !*source->position || size < 2)
            return nullptr;
        size_t count = 0;
        while (source->position < source->end && *source->position && count + 1 < size) {
            char c = *source->position++;
            out[count++] = c;
            if (c == '\n')
                break;
        }
        out[count] = '\0';
        return out;
    }

    Source m_source;
    icalparser* m_parser;
    std::vector<icalcomponent*> m_roots;
    icalcomponent* m_unfinished { nullptr };
};

// Text as the store keeps it: valid UTF-8 (a byte that is not becomes U+FFFD).
std::string cleanText(const char* text)
{
    std::string out;
    if (!text)
        return out;
    for (const unsigned char* p = reinterpret_cast<const unsigned char*>(text); *p;) {
        int length = *p < 0x80 ? 1 : (*p >> 5) == 0x6 ? 2 : (*p >> 4) == 0xE ? 3 : (*p >> 3) == 0x1E ? 4 : 0;
        bool valid = length > 0;
        for (int i = 1; valid && i < length; ++i)
            valid = (p[i] >> 6) == 0x2;
        if (valid) {
            out.append(reinterpret_cast<const char*>(p), length);
            p += length;
        } else {
            out += "\xEF\xBF\xBD";
            ++p;
        }
    }
    return out;
}

// A property's text without its escapes (a written "Hall\, Berlin" is "Hall, Berlin").
std::string valueText(icalproperty* property)
{
    icalvalue* value = icalproperty_get_value(property);
    if (!value)
        return {};
    switch (icalvalue_isa(value)) {
    case ICAL_TEXT_VALUE:
        return cleanText(icalvalue_get_text(value));
    case ICAL_X_VALUE:
        return cleanText(icalvalue_get_x(value));
    default:
        return cleanText(icalproperty_get_value_as_string(property));
    }
}

std::optional<std::string> textProperty(icalcomponent* component, icalproperty_kind kind)
{
    icalproperty* property = icalcomponent_get_first_property(component, kind);
    if (!property)
        return std::nullopt;
    return valueText(property);
}

std::optional<std::string> xProperty(icalcomponent* component, std::string_view name)
{
    for (icalproperty* property = icalcomponent_get_first_property(component, ICAL_X_PROPERTY); property;
         property = icalcomponent_get_next_property(component, ICAL_X_PROPERTY)) {
        const char* xName = icalproperty_get_x_name(property);
        if (xName && std::equal(name.begin(), name.end(), xName, xName + std::strlen(xName), [](char a, char b) { return a == std::toupper(static_cast<unsigned char>(b)); }))
            return valueText(property);
    }
    return std::nullopt;
}

// "#RRGGBB" or "#RRGGBBAA" (as Apple's calendars write it) as "#rrggbb".
std::optional<std::string> parseColor(const std::string& text)
{
    if ((text.size() != 7 && text.size() != 9) || text[0] != '#')
        return std::nullopt;
    std::string color = "#";
    for (size_t i = 1; i < 7; ++i) {
        if (!std::isxdigit(static_cast<unsigned char>(text[i])))
            return std::nullopt;
        color += static_cast<char>(std::tolower(static_cast<unsigned char>(text[i])));
    }
    return color;
}

// One file's import: messages carry the file's name and lines.
class Import {
public:
    Import(std::string_view text, const std::string& displayName, const CalendarImporter::Options& options)
        : m_lines(text)
        , m_displayName(displayName)
        , m_options(options)
    {
    }

    void warn(int line, const std::string& message)
    {
        ++m_warningCount;
        if (m_result.warnings.size() < CalendarImporter::maximumWarnings)
            m_result.warnings.push_back(m_displayName + (line > 0 ? ":" + std::to_string(line) : "") + ": " + message);
    }

    CalendarImport run(std::string_view text, const std::string& calendarName)
    {
        const IcsLineMap::LogicalLine* first = m_lines.firstContentLine();
        std::string firstText = first ? first->text : "";
        if (!first || firstText.size() < 15 || !std::equal(firstText.begin(), firstText.begin() + 15, "BEGIN:VCALENDAR", [](char a, char b) { return std::toupper(static_cast<unsigned char>(a)) == b; })) {
            m_result.error = m_displayName + (first ? ":" + std::to_string(first->number) : "") + ": not an iCalendar file (it must begin with BEGIN:VCALENDAR)";
            return std::move(m_result);
        }
        icalerror_set_errors_are_fatal(0);
        ParsedFile parsed(text);
        size_t beginIndex = 0;
        for (icalcomponent* root : parsed.roots())
            numberComponents(root, beginIndex);
        if (beginIndex != m_lines.beginLines().size())
            m_componentLines.clear(); // the parser skipped something: lines would be wrong
        for (icalcomponent* root : parsed.roots()) {
            if (icalcomponent_isa(root) == ICAL_VCALENDAR_COMPONENT)
                importCalendar(root, calendarName);
            else
                warn(lineOf(root), "a component outside any VCALENDAR (skipped)");
        }
        if (m_warningCount > m_result.warnings.size())
            m_result.warnings.push_back(m_displayName + ": " + std::to_string(m_warningCount - m_result.warnings.size()) + " more problems like these");
        return std::move(m_result);
    }

private:
    // Gives each component the line of its BEGIN, in the order both come.
    void numberComponents(icalcomponent* component, size_t& index)
    {
        if (index < m_lines.beginLines().size())
            m_componentLines[component] = m_lines.beginLines()[index];
        ++index;
        for (icalcomponent* child = icalcomponent_get_first_component(component, ICAL_ANY_COMPONENT); child;
             child = icalcomponent_get_next_component(component, ICAL_ANY_COMPONENT))
            numberComponents(child, index);
    }

    int lineOf(icalcomponent* component) const
    {
        auto found = m_componentLines.find(component);
        return found == m_componentLines.end() ? 0 : found->second;
    }

    // libical marks what it could not read with X-LIC-ERROR properties and
    // goes on; each becomes a warning at the line it came from.
    void reportParseErrors(icalcomponent* component)
    {
        for (icalproperty* error = icalcomponent_get_first_property(component, ICAL_XLICERROR_PROPERTY); error;
             error = icalcomponent_get_next_property(component, ICAL_XLICERROR_PROPERTY)) {
            std::string message = cleanText(icalproperty_get_xlicerror(error));
            int line = lineOf(component);
            // libical ends its message with ": " and the text it could not
            // read; that text finds the line (else the component's is used).
            for (std::string_view marker : { "Removing entire property: ", "component begin tag: ", ": " }) {
                size_t at = message.rfind(marker);
                if (at == std::string::npos)
                    continue;
                std::string snippet = message.substr(at + marker.size());
                snippet.erase(0, snippet.find_first_not_of(" \t"));
                snippet.erase(snippet.find_last_not_of(" \t") + 1);
                if (snippet.empty())
                    message.erase(at);
                else if (int found = m_lines.lineContaining(snippet, line))
                    line = found;
                break;
            }
            warn(line, message + " (skipped)");
        }
        for (icalcomponent* child = icalcomponent_get_first_component(component, ICAL_ANY_COMPONENT); child;
             child = icalcomponent_get_next_component(component, ICAL_ANY_COMPONENT))
            reportParseErrors(child);
    }

    void importCalendar(icalcomponent* calendar, const std::string& fileCalendarName)
    {
        reportParseErrors(calendar);
        IcsTimes times(calendar, m_options.localTimeZone);
        std::string name = m_options.calendar.value_or(xProperty(calendar, "X-WR-CALNAME").value_or(fileCalendarName));
        if (name.empty())
            name = fileCalendarName;
        auto appleColor = xProperty(calendar, "X-APPLE-CALENDAR-COLOR");
        std::optional<std::string> color = appleColor ? parseColor(*appleColor) : std::nullopt;
        // Into a calendar the user named, the file's colour is only a suggestion (absent: none given).
        if (!m_options.calendar && !color)
            color = CalendarImporter::colorForName(name);
        auto& calendars = m_result.calendars;
        auto known = std::find_if(calendars.begin(), calendars.end(), [&](const HostWorld::Calendar& c) { return c.title == name; });
        if (known == calendars.end())
            calendars.push_back(HostWorld::Calendar { name, color });
        else if (color && !known->color)
            known->color = color;
        importEvents(calendar, times, name);
        importTodos(calendar, times, name);
    }

    std::string titleOf(icalcomponent* component) { return textProperty(component, ICAL_SUMMARY_PROPERTY).value_or(""); }

    // The start of an event or to-do, in seconds; warns when its zone is unknown.
    std::optional<double> timeOf(icalcomponent* component, icalproperty_kind kind, const IcsTimes& times)
    {
        icalproperty* property = icalcomponent_get_first_property(component, kind);
        if (!property)
            return std::nullopt;
        std::string unknownZone;
        auto seconds = times.seconds(times.timeOfProperty(property, &unknownZone));
        if (!unknownZone.empty())
            warn(lineOf(component), "unknown time zone '" + cleanText(unknownZone.c_str()) + "' (no VTIMEZONE in the file and none of the system's); read as " + m_options.localTimeZone);
        return seconds;
    }

    void importEvents(icalcomponent* calendar, const IcsTimes& times, const std::string& calendarName)
    {
        // Overrides (RECURRENCE-ID) belong to the event of the same UID.
        std::unordered_map<std::string, std::vector<double>> replacedByUid;
        for (icalcomponent* event = icalcomponent_get_first_component(calendar, ICAL_VEVENT_COMPONENT); event;
             event = icalcomponent_get_next_component(calendar, ICAL_VEVENT_COMPONENT)) {
            if (auto recurrence = timeOf(event, ICAL_RECURRENCEID_PROPERTY, times))
                replacedByUid[textProperty(event, ICAL_UID_PROPERTY).value_or("")].push_back(*recurrence);
        }
        RecurrenceExpander expander(times, m_options.windowStart, m_options.windowEnd, CalendarImporter::maximumOccurrences);
        for (icalcomponent* event = icalcomponent_get_first_component(calendar, ICAL_VEVENT_COMPONENT); event;
             event = icalcomponent_get_next_component(calendar, ICAL_VEVENT_COMPONENT)) {
            std::string title = titleOf(event);
            auto start = timeOf(event, ICAL_DTSTART_PROPERTY, times);
            if (!start) {
                warn(lineOf(event), "event \"" + title + "\" has no start (DTSTART); skipped");
                continue;
            }
            if (icalcomponent_get_status(event) == ICAL_STATUS_CANCELLED)
                continue;
            double duration = durationOf(event, *start, times);
            bool isOverride = icalcomponent_get_first_property(event, ICAL_RECURRENCEID_PROPERTY);
            std::vector<RecurrenceExpander::Occurrence> occurrences;
            if (isOverride) {
                if (*start + duration > m_options.windowStart && *start < m_options.windowEnd)
                    occurrences.push_back({ *start, *start + duration });
            } else {
                auto replaced = replacedByUid.find(textProperty(event, ICAL_UID_PROPERTY).value_or(""));
                occurrences = expander.expand(event, *start, duration, replaced == replacedByUid.end() ? std::vector<double> {} : replaced->second);
                if (expander.skippedRule())
                    warn(lineOf(event), "event \"" + title + "\" repeats every hour, minute or second on chosen days; the rule is left out");
                if (expander.reachedLimit())
                    warn(lineOf(event), "event \"" + title + "\" repeats more than " + std::to_string(CalendarImporter::maximumOccurrences) + " times in the window; the rest are left out");
            }
            for (const auto& occurrence : occurrences) {
                if (m_result.events.size() == CalendarImporter::maximumEvents) {
                    warn(lineOf(event), "more than " + std::to_string(CalendarImporter::maximumEvents) + " events; the rest are left out");
                    return;
                }
                HostWorld::CalendarEvent imported;
                imported.title = title;
                imported.start = occurrence.start;
                imported.end = occurrence.end;
                imported.calendar = calendarName;
                imported.location = textProperty(event, ICAL_LOCATION_PROPERTY);
                imported.notes = textProperty(event, ICAL_DESCRIPTION_PROPERTY);
                m_result.events.push_back(std::move(imported));
            }
        }
    }

    // DTEND, else DURATION, else a day for an all-day event and nothing for
    // one with a time (RFC 5545's rule for an event without an end).
    double durationOf(icalcomponent* event, double start, const IcsTimes& times)
    {
        if (auto end = timeOf(event, ICAL_DTEND_PROPERTY, times)) {
            if (*end >= start)
                return *end - start;
            warn(lineOf(event), "event \"" + titleOf(event) + "\" ends before it starts; read as ending when it starts");
            return 0;
        }
        if (icalproperty* duration = icalcomponent_get_first_property(event, ICAL_DURATION_PROPERTY)) {
            int seconds = icaldurationtype_as_int(icalproperty_get_duration(duration));
            return seconds > 0 ? seconds : 0;
        }
        icalproperty* startProperty = icalcomponent_get_first_property(event, ICAL_DTSTART_PROPERTY);
        return icaltime_is_date(times.timeOfProperty(startProperty)) ? 86400 : 0;
    }

    void importTodos(icalcomponent* calendar, const IcsTimes& times, const std::string& calendarName)
    {
        for (icalcomponent* todo = icalcomponent_get_first_component(calendar, ICAL_VTODO_COMPONENT); todo;
             todo = icalcomponent_get_next_component(calendar, ICAL_VTODO_COMPONENT)) {
            if (icalcomponent_get_status(todo) == ICAL_STATUS_CANCELLED)
                continue;
            HostWorld::Reminder reminder;
            reminder.title = titleOf(todo);
            reminder.due = timeOf(todo, ICAL_DUE_PROPERTY, times);
            reminder.calendar = calendarName;
            reminder.completed = icalcomponent_get_status(todo) == ICAL_STATUS_COMPLETED
                || icalcomponent_get_first_property(todo, ICAL_COMPLETED_PROPERTY);
            reminder.notes = textProperty(todo, ICAL_DESCRIPTION_PROPERTY);
            m_result.reminders.push_back(std::move(reminder));
        }
    }

    IcsLineMap m_lines;
    std::string m_displayName;
    const CalendarImporter::Options& m_options;
    std::map<icalcomponent*, int> m_componentLines;
    CalendarImport m_result;
    size_t m_warningCount { 0 };
};

}

CalendarImport CalendarImporter::importText(std::string_view text, const std::string& displayName, const std::string& calendarName, const Options& options)
{
    return Import(text, displayName, options).run(text, calendarName);
}

CalendarImport CalendarImporter::importFile(const std::filesystem::path& path, const Options& options, std::string displayName)
{
    if (displayName.empty())
        displayName = path.string();
    CalendarImport failed;
    std::error_code error;
    auto size = std::filesystem::file_size(path, error);
    if (error || !std::filesystem::is_regular_file(path, error)) {
        failed.error = "cannot read " + displayName + (error ? ": " + error.message() : std::string(": not a file"));
        return failed;
    }
    if (size > maximumFileSize) {
        failed.error = displayName + ": too big for a calendar (" + std::to_string(size / (1024 * 1024)) + " MB; at most " + std::to_string(maximumFileSize / (1024 * 1024)) + " MB)";
        return failed;
    }
    std::ifstream in(path, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (!in && !in.eof()) {
        failed.error = "cannot read " + displayName;
        return failed;
    }
    return importText(text, displayName, path.stem().string(), options);
}

std::string CalendarImporter::colorForName(std::string_view name)
{
    // The Calendar app's own colours: red, orange, yellow, green, blue, purple, brown.
    static constexpr const char* palette[] = { "#ff2968", "#ff9500", "#ffcc00", "#63da38", "#1badf8", "#cc73e1", "#a2845e" };
    uint32_t hash = 2166136261u; // FNV-1a: the same name gives the same colour on every machine
    for (unsigned char c : name)
        hash = (hash ^ c) * 16777619u;
    return palette[hash % std::size(palette)];
}

}
