#pragma once

#include "DeviceModel.h"
#include "ScenarioValues.h"
#include "Target.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace sim {

enum class CommandKind : uint8_t {
    // Host shape: only before `boot`.
    System,
    Device,
    Locale,
    TimeZone,
    MissingClass,
    MissingIvar,
    // World: any time.
    Now,
    Prefs,
    PrefsClear,
    WriteFile,
    CopyFile,
    RemoveFile,
    AppList,
    App,
    Switcher,
    Battery,
    Weather,
    WeatherOff,
    WeatherHour,
    WeatherDay,
    Calendar,
    Event,
    Reminder,
    Notification,
    NotificationGrouping,
    Music,
    MusicNone,
    Volume,
    Alarm,
    AlarmNone,
    Timer,
    Call,
    FaceTime,
    CalendarImport,
    NotificationRemove,
    // Acting: `boot` once, the others after it.
    Boot,
    Advance,
    Tap,
    DoubleTap,
    LongPress,
    Swipe,
    Slide,
    Scroll,
    Pick,
    Home,
    Display,
    Alert,
    Rotate,
    Lock,
    Unlock,
    NotificationCenter,
    Search,
    Soak,
    AdvanceUntil,
    // Looking: after `boot`.
    Shot,
    Dump,
    ExpectProperty,
    ExpectAbsent,
    ExpectHost,
    ExpectShot,
    Tree,
};

enum class CommandPhase : uint8_t { HostShape, World, Acting, Looking };

CommandPhase commandPhase(CommandKind);
// The scenario word that gives this kind of command: "weather" for both
// Weather and WeatherOff.
std::string_view commandName(CommandKind);

// Payloads, one per kind of command (kinds that share a form share one).
// Options left out are absent, never a made-up default: the player knows
// what the world holds already.

struct NoArguments {
    bool operator==(const NoArguments&) const = default;
};

struct SystemCommand {
    std::string version;
};

struct DeviceCommand {
    // Absent for a bare `code=N`, which keeps the iPhone 6 screen.
    std::optional<DeviceModel> model;
    int code { 8 };
};

struct LocaleCommand {
    std::string identifier;
};

struct TimeZoneCommand {
    std::string name; // an IANA name, checked for its form only
};

struct MissingClassCommand {
    std::string className;
};

struct MissingIvarCommand {
    std::string className;
    std::string ivarName;
};

struct NowCommand {
    TimeSpec time;
};

using PrefsValue = std::variant<bool, int64_t, double, std::string>;

struct PrefsCommand {
    std::string key;
    PrefsValue value;
};

// Device paths are absolute and free of `..`; they resolve under --root.
struct WriteFileCommand {
    std::string path;
    std::string text;
};

struct CopyFileCommand {
    std::string path;
    std::string hostPath; // as written; relative paths are the player's to resolve
};

struct RemoveFileCommand {
    std::string path;
};

struct AppListCommand {
    std::vector<std::string> lines;
};

struct AppCommand {
    std::string bundleIdentifier;
    std::optional<std::string> name;
    std::optional<Color> color;
};

struct SwitcherCommand {
    std::vector<std::string> bundleIdentifiers;
};

struct BatteryCommand {
    std::optional<double> level; // 0..1
    std::optional<bool> externalPower; // ac=
    std::optional<bool> lowPowerMode; // lowpower=
    std::optional<int> currentCapacity; // current=, mAh
    std::optional<int> maxCapacity; // max=, mAh
};

struct WeatherCommand {
    std::optional<std::string> city;
    std::optional<std::string> condition;
    std::optional<std::string> icon;
    std::optional<int> temperature; // whole degrees Celsius
    std::optional<int> high;
    std::optional<int> low;
};

struct WeatherHourCommand {
    TimeOfDay time;
    int temperature { 0 };
    std::optional<std::string> icon;
};

struct WeatherDayCommand {
    std::string day; // "Today" is the current day
    int high { 0 };
    int low { 0 };
    std::optional<std::string> icon;
};

struct CalendarCommand {
    std::string name;
    std::optional<Color> color;
};

struct EventCommand {
    std::string title;
    TimeSpec start;
    std::optional<TimeSpec> end;
    std::optional<std::string> calendar;
    std::optional<std::string> location;
    std::optional<std::string> notes;
};

struct ReminderCommand {
    std::string title;
    std::optional<TimeSpec> due; // absent for `due=none` or no `due=`
    std::optional<std::string> calendar;
    std::optional<bool> completed;
};

struct NotificationCommand {
    std::string bundleIdentifier;
    std::optional<std::string> title;
    std::optional<std::string> subtitle;
    std::optional<std::string> message;
    std::optional<std::string> url;
    std::optional<TimeSpec> date;
    std::optional<bool> image;
    std::optional<int> actions;
};

// calendar-import FILE.ics [calendar=NAME]
struct CalendarImportCommand {
    std::string hostPath; // as written; relative paths are the player's to resolve
    std::optional<std::string> calendar;
};

// notification-remove: the app's oldest notification in the store goes.
struct NotificationRemoveCommand {
    std::string bundleIdentifier;
};

struct NotificationGroupingCommand {
    bool grouped { true };
};

struct MusicCommand {
    std::optional<std::string> artist;
    std::optional<std::string> song;
    std::optional<std::string> album;
    std::optional<Color> artwork;
    // artwork=FILE.png: a picture on this computer, as written (relative to the scenario's folder).
    std::optional<std::string> artworkFile;
    std::optional<bool> playing;
    std::optional<TrackPosition> track;
};

struct VolumeCommand {
    double volume { 0 }; // 0..1
};

struct AlarmCommand {
    enum class Day : uint8_t { Today, Tomorrow };
    Day day { Day::Today };
    TimeOfDay time;
};

struct TimerCommand {
    enum class State : uint8_t { Running, Paused, Stopped };
    State state { State::Stopped };
    double remaining { 0 }; // seconds; 0 when stopped
};

struct CallCommand {
    enum class State : uint8_t { Incoming, Active, None };
    State state { State::None };
};

struct FaceTimeCommand {
    enum class State : uint8_t { Active, Invitation, None };
    State state { State::None };
};

struct AdvanceCommand {
    double seconds { 0 };
};

// soak: a seeded random walk through the world and the user's actions.
struct SoakCommand {
    double seconds { 0 };
    int seed { 1 };
    double step { 600 }; // the longest pause between two actions
};

// tap, doubletap
struct TargetCommand {
    Target target;
};

struct LongPressCommand {
    Target target;
    double duration { 0.6 };
};

struct SwipeCommand {
    enum class Direction : uint8_t { Up, Down, Left, Right };
    Direction direction { Direction::Up };
    Target target;
};

struct SlideCommand {
    Target target;
    double value { 0 };
};

struct ScrollCommand {
    Target target;
    double dx { 0 };
    double dy { 0 };
};

struct PickCommand {
    Target target;
    int component { 0 };
    int row { 0 };
};

// display on|off, alert show|dismiss, nc show|hide
struct SwitchCommand {
    bool on { false };
};

struct RotateCommand {
    enum class Orientation : uint8_t { Portrait, Landscape, LandscapeRight, UpsideDown };
    Orientation orientation { Orientation::Portrait };
};

struct SearchCommand {
    enum class Edge : uint8_t { Right, Top };
    bool show { false };
    Edge edge { Edge::Right }; // meaningful when showing
};

// tree [TARGET] [all]
struct TreeCommand {
    std::optional<Target> target; // absent: every window
    bool all { false };
};

// shot, dump: a relative path under --out, free of `..`.
struct OutputFileCommand {
    std::string fileName;
};

struct ExpectPropertyCommand {
    Target target;
    // A field of the target's dump node; more components walk into it
    // (`frame.2`, `runs.0.text`).
    std::vector<std::string> property;
    nlohmann::json value;
};

struct ExpectAbsentCommand {
    Target target;
};

struct ExpectHostCommand {
    std::vector<std::string> path; // below `host`; empty for the whole object
    nlohmann::json value;
};

// expect-shot: the screen, or the target's rectangle of it, against a picture.
struct ExpectShotCommand {
    std::string reference; // relative to the scenario's folder, free of `..`
    std::optional<Target> target;
    double precision { 1 }; // the share of pixels that must match
    double perceptual { 1 }; // the closeness a pixel needs to match
};

// advance until CONDITION [max=DURATION]: the condition is written as `expect` writes it.
struct AdvanceUntilCommand {
    std::variant<ExpectPropertyCommand, ExpectAbsentCommand, ExpectHostCommand> condition;
    double maxSeconds { 60 };
};

using CommandPayload = std::variant<NoArguments, SystemCommand, DeviceCommand, LocaleCommand, TimeZoneCommand,
    MissingClassCommand, MissingIvarCommand, NowCommand, PrefsCommand, WriteFileCommand, CopyFileCommand,
    RemoveFileCommand, AppListCommand, AppCommand, SwitcherCommand, BatteryCommand, WeatherCommand,
    WeatherHourCommand, WeatherDayCommand, CalendarCommand, EventCommand, ReminderCommand, NotificationCommand,
    NotificationGroupingCommand, MusicCommand, VolumeCommand, AlarmCommand, TimerCommand, CallCommand,
    FaceTimeCommand, AdvanceCommand, TargetCommand, LongPressCommand, SwipeCommand, SlideCommand, ScrollCommand,
    PickCommand, SwitchCommand, RotateCommand, SearchCommand, OutputFileCommand, ExpectPropertyCommand,
    ExpectAbsentCommand, ExpectHostCommand, NotificationRemoveCommand, SoakCommand, ExpectShotCommand, CalendarImportCommand,
    AdvanceUntilCommand, TreeCommand>;

// One checked command. Every field holds a valid value: a player can act on
// it without checking again.
struct Command {
    CommandKind kind { CommandKind::Boot };
    std::string file;
    int line { 0 };
    std::string text; // the line as written, without its comment
    CommandPayload payload;

    template<typename T>
    const T& as() const { return std::get<T>(payload); }
    // "FILE:LINE", for the player's messages.
    std::string location() const { return file + ":" + std::to_string(line); }
};

}
