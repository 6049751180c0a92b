#include "ScenarioValues.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>
#include <cmath>
#include <cstdio>

namespace sim {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// Reads exactly `count` digits at `position` as a number.
std::optional<int> fixedDigits(std::string_view text, size_t position, size_t count)
{
    if (position + count > text.size())
        return std::nullopt;
    int value = 0;
    for (size_t i = position; i < position + count; ++i) {
        if (!isDigit(text[i]))
            return std::nullopt;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

bool isLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int daysInMonth(int year, int month)
{
    static constexpr int days[] = { 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 };
    return month == 2 && isLeapYear(year) ? 29 : days[month - 1];
}

}

std::string LocalDateTime::toString() const
{
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02dT%02d:%02d:%02d", year, month, day, hour, minute, second);
    return buffer;
}

std::string Color::toString() const
{
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", red, green, blue);
    return buffer;
}

std::string formatDecimal(double value)
{
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%g", value);
    return buffer;
}

// One or more NUMBER UNIT pairs, so that `1h30m` reads as a person means it.
std::optional<double> parseDuration(std::string_view text)
{
    if (text.empty())
        return std::nullopt;
    double total = 0;
    size_t i = 0;
    while (i < text.size()) {
        size_t start = i;
        while (i < text.size() && (isDigit(text[i]) || text[i] == '.'))
            ++i;
        if (i == start)
            return std::nullopt;
        std::optional<double> number = parseDecimal(text.substr(start, i - start));
        if (!number)
            return std::nullopt;
        // "ms" comes before "m", so that the longer unit wins.
        static constexpr std::pair<std::string_view, double> units[] = { { "ms", 0.001 }, { "s", 1 }, { "m", 60 }, { "h", 3600 }, { "d", 86400 } };
        auto unit = std::find_if(std::begin(units), std::end(units), [&](const auto& unit) { return text.substr(i).starts_with(unit.first); });
        if (unit == std::end(units))
            return std::nullopt;
        i += unit->first.size();
        total += *number * unit->second;
    }
    if (!std::isfinite(total))
        return std::nullopt;
    return total;
}

std::optional<TimeSpec> parseTime(std::string_view text)
{
    if (text == "now")
        return TimeSpec {};
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
        std::optional<double> seconds = parseDuration(text.substr(1));
        if (!seconds)
            return std::nullopt;
        TimeSpec time;
        time.offset = text[0] == '-' ? -*seconds : *seconds;
        return time;
    }
    std::optional<LocalDateTime> local = parseLocalDateTime(text);
    if (!local)
        return std::nullopt;
    TimeSpec time;
    time.kind = TimeSpec::Kind::Absolute;
    time.local = *local;
    return time;
}

// YYYY-MM-DD, optionally followed by THH:MM and :SS.
std::optional<LocalDateTime> parseLocalDateTime(std::string_view text)
{
    if (text.size() != 10 && text.size() != 16 && text.size() != 19)
        return std::nullopt;
    auto year = fixedDigits(text, 0, 4);
    auto month = fixedDigits(text, 5, 2);
    auto day = fixedDigits(text, 8, 2);
    if (!year || !month || !day || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    LocalDateTime local { *year, *month, *day, 0, 0, 0 };
    if (local.year < 1 || local.month < 1 || local.month > 12 || local.day < 1 || local.day > daysInMonth(local.year, local.month))
        return std::nullopt;
    if (text.size() == 10)
        return local;
    auto hour = fixedDigits(text, 11, 2);
    auto minute = fixedDigits(text, 14, 2);
    if (!hour || !minute || text[10] != 'T' || text[13] != ':' || *hour > 23 || *minute > 59)
        return std::nullopt;
    local.hour = *hour;
    local.minute = *minute;
    if (text.size() == 16)
        return local;
    auto second = fixedDigits(text, 17, 2);
    if (!second || text[16] != ':' || *second > 59)
        return std::nullopt;
    local.second = *second;
    return local;
}

std::optional<bool> parseBoolean(std::string_view text)
{
    if (text == "yes")
        return true;
    if (text == "no")
        return false;
    return std::nullopt;
}

std::optional<Color> parseColor(std::string_view text)
{
    if (text.size() != 7 || text[0] != '#')
        return std::nullopt;
    int digits[6];
    for (size_t i = 0; i < 6; ++i) {
        digits[i] = hexDigit(text[i + 1]);
        if (digits[i] < 0)
            return std::nullopt;
    }
    return Color {
        static_cast<uint8_t>(digits[0] * 16 + digits[1]),
        static_cast<uint8_t>(digits[2] * 16 + digits[3]),
        static_cast<uint8_t>(digits[4] * 16 + digits[5]),
    };
}

std::optional<int64_t> parseInteger(std::string_view text)
{
    int64_t value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<double> parseDecimal(std::string_view text)
{
    // from_chars also reads "inf", "nan" and exponents; a scenario's numbers
    // are plain decimals.
    for (char c : text) {
        if (!isDigit(c) && c != '.' && c != '-')
            return std::nullopt;
    }
    double value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<TrackPosition> parseTrackPosition(std::string_view text)
{
    size_t slash = text.find('/');
    if (slash == std::string_view::npos)
        return std::nullopt;
    std::optional<int64_t> index = parseInteger(text.substr(0, slash));
    std::optional<int64_t> count = parseInteger(text.substr(slash + 1));
    if (!index || !count || *index < 0 || *count < 1 || *index > *count || *count > 1'000'000)
        return std::nullopt;
    return TrackPosition { static_cast<int>(*index), static_cast<int>(*count) };
}

std::optional<TimeOfDay> parseCompactTimeOfDay(std::string_view text)
{
    if (text.size() != 4)
        return std::nullopt;
    auto hour = fixedDigits(text, 0, 2);
    auto minute = fixedDigits(text, 2, 2);
    if (!hour || !minute || *hour > 23 || *minute > 59)
        return std::nullopt;
    return TimeOfDay { *hour, *minute };
}

std::optional<TimeOfDay> parseTimeOfDay(std::string_view text)
{
    size_t colon = text.find(':');
    if (colon != 1 && colon != 2)
        return std::nullopt;
    auto hour = fixedDigits(text, 0, colon);
    auto minute = fixedDigits(text, colon + 1, 2);
    if (!hour || !minute || text.size() != colon + 3 || *hour > 23 || *minute > 59)
        return std::nullopt;
    return TimeOfDay { *hour, *minute };
}

}
