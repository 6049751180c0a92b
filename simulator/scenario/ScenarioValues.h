#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace sim {

// A wall-clock time as the scenario wrote it. Only the player knows the
// scenario's time zone (and the zone may change between commands), so it is
// kept as its fields rather than turned into an instant here.
struct LocalDateTime {
    int year { 2000 };
    int month { 1 };
    int day { 1 };
    int hour { 0 };
    int minute { 0 };
    int second { 0 };

    auto operator<=>(const LocalDateTime&) const = default;
    // "2026-11-21T09:05:00"
    std::string toString() const;
};

// A point in time: either an offset from the virtual clock's time when the
// command plays (`+10m`, `-5m`, `now`), or a local time (`2026-11-21T09:05`).
struct TimeSpec {
    enum class Kind : uint8_t { Relative, Absolute };
    Kind kind { Kind::Relative };
    double offset { 0 }; // seconds, for Relative
    LocalDateTime local; // for Absolute

    bool isRelative() const { return kind == Kind::Relative; }
    bool operator==(const TimeSpec&) const = default;
};

struct Color {
    uint8_t red { 0 };
    uint8_t green { 0 };
    uint8_t blue { 0 };

    bool operator==(const Color&) const = default;
    // "#1badf8"
    std::string toString() const;
};

// A track's place in its queue as `track=I/N` writes it; the numbers are kept
// as written.
struct TrackPosition {
    int index { 0 };
    int count { 0 };
    bool operator==(const TrackPosition&) const = default;
};

struct TimeOfDay {
    int hour { 0 };
    int minute { 0 };
    bool operator==(const TimeOfDay&) const = default;
};

// Each parser accepts the whole text or answers nothing; the caller words the
// message, using the matching description below.
std::optional<double> parseDuration(std::string_view); // seconds
std::optional<TimeSpec> parseTime(std::string_view);
std::optional<LocalDateTime> parseLocalDateTime(std::string_view);
std::optional<bool> parseBoolean(std::string_view);
std::optional<Color> parseColor(std::string_view);
std::optional<int64_t> parseInteger(std::string_view);
std::optional<double> parseDecimal(std::string_view);
std::optional<TrackPosition> parseTrackPosition(std::string_view);
std::optional<TimeOfDay> parseCompactTimeOfDay(std::string_view); // HHMM
std::optional<TimeOfDay> parseTimeOfDay(std::string_view); // H:MM or HH:MM

// A number as a scenario writes it: "%g", so 0.5, 12 and 1e+06.
std::string formatDecimal(double);

namespace ValueDescription {
inline constexpr std::string_view duration = "a duration like 6s";
inline constexpr std::string_view time = "a time like +10m, -5m or 2026-11-21T09:05:00";
inline constexpr std::string_view boolean = "yes or no";
inline constexpr std::string_view color = "a colour like #1badf8";
inline constexpr std::string_view integer = "a whole number";
inline constexpr std::string_view decimal = "a number";
inline constexpr std::string_view unitFraction = "a number from 0 to 1";
inline constexpr std::string_view trackPosition = "a track position like 3/12";
inline constexpr std::string_view compactTimeOfDay = "an hour like 0900";
inline constexpr std::string_view timeOfDay = "a time of day like 07:30";
}

}
