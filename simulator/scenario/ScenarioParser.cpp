#include "ScenarioParser.h"

#include "ScenarioLineReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <iterator>

namespace sim {

namespace {

using ParseFunction = void (*)(ScenarioLineReader&, Command&);

struct CommandForm {
    std::string_view name;
    CommandPhase phase;
    std::string_view usage;
    std::vector<std::string_view> options;
    ParseFunction parse;
};

template<typename Payload>
void set(Command& command, CommandKind kind, Payload payload)
{
    command.kind = kind;
    command.payload = std::move(payload);
}

// Host shape.

void parseSystem(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto version = reader.version(&reader.argument(0));
    set(command, CommandKind::System, SystemCommand { version.value_or("") });
}

void parseDevice(ScenarioLineReader& reader, Command& command)
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
                reader.error("unknown device '" + shownInMessage(*name) + "'" + suggestionFor(*name, names) + " (devices: " + joinedNames(names) + ")");
        }
    }
    if (auto number = reader.integer(code, 1, 999))
        device.code = *number;
    set(command, CommandKind::Device, device);
}

void parseLocale(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto identifier = reader.localeIdentifier(&reader.argument(0));
    set(command, CommandKind::Locale, LocaleCommand { identifier.value_or("") });
}

void parseTimeZone(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto name = reader.timeZoneName(&reader.argument(0));
    set(command, CommandKind::TimeZone, TimeZoneCommand { name.value_or("") });
}

void parseMissing(ScenarioLineReader& reader, Command& command)
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

void parseNow(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto time = reader.time(&reader.argument(0));
    set(command, CommandKind::Now, NowCommand { time.value_or(TimeSpec {}) });
}

void parsePrefs(ScenarioLineReader& reader, Command& command)
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

void parseNoArguments(ScenarioLineReader& reader, Command& command, CommandKind kind)
{
    if (reader.expectArguments(0, 0))
        set(command, kind, NoArguments {});
}

void parseFile(ScenarioLineReader& reader, Command& command)
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
        reader.error("expected 'from' after the path, got '" + shownInMessage(reader.raw(reader.argument(1))) + "': usage is 'file PATH \"TEXT\"' or 'file PATH from HOSTPATH'");
        return;
    }
    auto hostPath = reader.nonEmptyText(&reader.argument(2), "a path on this computer");
    set(command, CommandKind::CopyFile, CopyFileCommand { path.value_or(""), hostPath.value_or("") });
}

void parseRemove(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto path = reader.devicePath(&reader.argument(0));
    set(command, CommandKind::RemoveFile, RemoveFileCommand { path.value_or("") });
}

void parseAppList(ScenarioLineReader& reader, Command& command)
{
    AppListCommand list;
    for (size_t i = 0; i < reader.argumentCount(); ++i)
        list.lines.push_back(reader.text(&reader.argument(i)).value_or(""));
    set(command, CommandKind::AppList, std::move(list));
}

void parseApp(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    AppCommand app;
    app.bundleIdentifier = reader.bundleIdentifier(&reader.argument(0)).value_or("");
    app.name = reader.nonEmptyText(reader.option("name"), "an app name");
    app.color = reader.color(reader.option("color"));
    set(command, CommandKind::App, std::move(app));
}

void parseSwitcher(ScenarioLineReader& reader, Command& command)
{
    SwitcherCommand switcher;
    for (size_t i = 0; i < reader.argumentCount(); ++i)
        switcher.bundleIdentifiers.push_back(reader.bundleIdentifier(&reader.argument(i)).value_or(""));
    set(command, CommandKind::Switcher, std::move(switcher));
}

void parseBattery(ScenarioLineReader& reader, Command& command)
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

void parseWeather(ScenarioLineReader& reader, Command& command)
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

void parseWeatherHour(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(2, 2))
        return;
    WeatherHourCommand hour;
    hour.time = reader.parsed(&reader.argument(0), parseCompactTimeOfDay, ValueDescription::compactTimeOfDay).value_or(TimeOfDay {});
    hour.temperature = reader.temperature(&reader.argument(1)).value_or(0);
    hour.icon = reader.nonEmptyText(reader.option("icon"), "an icon name");
    set(command, CommandKind::WeatherHour, std::move(hour));
}

void parseWeatherDay(ScenarioLineReader& reader, Command& command)
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

void parseCalendar(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    CalendarCommand calendar;
    calendar.name = reader.nonEmptyText(&reader.argument(0), "a calendar name").value_or("");
    calendar.color = reader.color(reader.option("color"));
    set(command, CommandKind::Calendar, std::move(calendar));
}

void parseEvent(ScenarioLineReader& reader, Command& command)
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
            reader.error("the event ends (end=" + shownInMessage(reader.raw(*reader.option("end"))) + ") before it starts (start=" + shownInMessage(reader.raw(*reader.option("start"))) + ")");
    }
    event.start = start.value_or(TimeSpec {});
    set(command, CommandKind::Event, std::move(event));
}

void parseReminder(ScenarioLineReader& reader, Command& command)
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

void parseNotification(ScenarioLineReader& reader, Command& command)
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

void parseCalendarImport(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    CalendarImportCommand import;
    import.hostPath = reader.nonEmptyText(&reader.argument(0), "an iCalendar file like work.ics").value_or("");
    import.calendar = reader.nonEmptyText(reader.option("calendar"), "a calendar name");
    set(command, CommandKind::CalendarImport, std::move(import));
}

void parseNotificationRemove(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto bundleIdentifier = reader.bundleIdentifier(&reader.argument(0));
    set(command, CommandKind::NotificationRemove, NotificationRemoveCommand { bundleIdentifier.value_or("") });
}

void parseNotifications(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(0, 0))
        return;
    auto grouped = reader.boolean(reader.requiredOption("grouped", "yes|no"));
    set(command, CommandKind::NotificationGrouping, NotificationGroupingCommand { grouped.value_or(true) });
}

void parseMusic(ScenarioLineReader& reader, Command& command)
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
    // artwork=#rrggbb is a solid colour; anything else names a picture file.
    if (const Word* artwork = reader.option("artwork")) {
        if (artwork->text.starts_with('#'))
            music.artwork = reader.color(artwork);
        else
            music.artworkFile = reader.checkedText(artwork, [](const std::string& path) { return path.ends_with(".png") || path.ends_with(".PNG"); }, "a colour like #1badf8 or a picture file like cover.png");
    }
    music.playing = reader.boolean(reader.option("playing"));
    music.track = reader.parsed(reader.option("track"), parseTrackPosition, ValueDescription::trackPosition);
    set(command, CommandKind::Music, std::move(music));
}

void parseVolume(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto volume = reader.unitFraction(&reader.argument(0));
    set(command, CommandKind::Volume, VolumeCommand { volume.value_or(0) });
}

void parseAlarm(ScenarioLineReader& reader, Command& command)
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

void parseTimer(ScenarioLineReader& reader, Command& command)
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

void parseCall(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    using State = CallCommand::State;
    if (auto state = reader.keyword<State>(&reader.argument(0), { { "incoming", State::Incoming }, { "active", State::Active }, { "none", State::None } }))
        set(command, CommandKind::Call, CallCommand { *state });
}

void parseFaceTime(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    using State = FaceTimeCommand::State;
    if (auto state = reader.keyword<State>(&reader.argument(0), { { "active", State::Active }, { "invitation", State::Invitation }, { "none", State::None } }))
        set(command, CommandKind::FaceTime, FaceTimeCommand { *state });
}

// Acting.

// The longest run of the virtual clock one command may ask for: a week takes
// seconds, so 400 days take minutes; much more is almost certainly a typo.
constexpr double longestRun = 400 * 86400.0;

std::optional<double> runLength(ScenarioLineReader& reader, const Word* word)
{
    auto seconds = reader.duration(word);
    if (seconds && *seconds > longestRun) {
        std::string context = word->isOption() ? "option '" + word->key + "': " : "";
        reader.error(context + "'" + shownInMessage(reader.raw(*word)) + "' is longer than the limit of 400 days (400d) that a run may take");
        return std::nullopt;
    }
    return seconds;
}

std::optional<std::variant<ExpectPropertyCommand, ExpectAbsentCommand, ExpectHostCommand>> parseCondition(ScenarioLineReader& reader, size_t first);

void parseAdvance(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, SIZE_MAX))
        return;
    if (!reader.argumentIs(0, "until")) {
        reader.rejectOptions("advance DURATION");
        if (!reader.expectArguments(1, 1))
            return;
        auto seconds = runLength(reader, &reader.argument(0));
        set(command, CommandKind::Advance, AdvanceCommand { seconds.value_or(0) });
        return;
    }
    AdvanceUntilCommand until;
    if (const Word* max = reader.option("max"))
        until.maxSeconds = runLength(reader, max).value_or(until.maxSeconds);
    if (auto condition = parseCondition(reader, 1)) {
        until.condition = std::move(*condition);
        set(command, CommandKind::AdvanceUntil, std::move(until));
    }
}

void parseSoak(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 1))
        return;
    SoakCommand soak;
    soak.seconds = runLength(reader, &reader.argument(0)).value_or(0);
    soak.seed = reader.integer(reader.option("seed"), 0, 1000000000).value_or(1);
    if (const Word* step = reader.option("step"))
        soak.step = reader.duration(step).value_or(soak.step);
    set(command, CommandKind::Soak, soak);
}

void parseTargetOnly(ScenarioLineReader& reader, Command& command, CommandKind kind)
{
    if (!reader.expectArguments(1, 1))
        return;
    auto target = reader.target(&reader.argument(0));
    set(command, kind, TargetCommand { target.value_or(Target {}) });
}

void parseLongPress(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 2))
        return;
    LongPressCommand press;
    press.target = reader.target(&reader.argument(0)).value_or(Target {});
    if (reader.argumentCount() == 2)
        press.duration = reader.duration(&reader.argument(1)).value_or(0);
    set(command, CommandKind::LongPress, std::move(press));
}

void parseSwipe(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(2, 2))
        return;
    using Direction = SwipeCommand::Direction;
    auto direction = reader.keyword<Direction>(&reader.argument(0),
        { { "up", Direction::Up }, { "down", Direction::Down }, { "left", Direction::Left }, { "right", Direction::Right } });
    auto target = reader.target(&reader.argument(1));
    set(command, CommandKind::Swipe, SwipeCommand { direction.value_or(Direction::Up), target.value_or(Target {}) });
}

void parseSlide(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(2, 2))
        return;
    auto target = reader.target(&reader.argument(0));
    auto value = reader.decimal(&reader.argument(1));
    set(command, CommandKind::Slide, SlideCommand { target.value_or(Target {}), value.value_or(0) });
}

void parseScroll(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(3, 3))
        return;
    auto target = reader.target(&reader.argument(0));
    auto dx = reader.decimal(&reader.argument(1));
    auto dy = reader.decimal(&reader.argument(2));
    set(command, CommandKind::Scroll, ScrollCommand { target.value_or(Target {}), dx.value_or(0), dy.value_or(0) });
}

void parsePick(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(3, 3))
        return;
    auto target = reader.target(&reader.argument(0));
    auto component = reader.integer(&reader.argument(1), 0, 100);
    auto row = reader.integer(&reader.argument(2), 0, 100000);
    set(command, CommandKind::Pick, PickCommand { target.value_or(Target {}), component.value_or(0), row.value_or(0) });
}

void parseSwitch(ScenarioLineReader& reader, Command& command, CommandKind kind, std::string_view on, std::string_view off)
{
    if (!reader.expectArguments(1, 1))
        return;
    if (auto state = reader.keyword<bool>(&reader.argument(0), { { on, true }, { off, false } }))
        set(command, kind, SwitchCommand { *state });
}

void parseRotate(ScenarioLineReader& reader, Command& command)
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

void parseSearch(ScenarioLineReader& reader, Command& command)
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

void parseOutputFile(ScenarioLineReader& reader, Command& command, CommandKind kind, std::string_view extension)
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

// What `expect` checks, from argument `first` on; `advance until` waits for the same.
std::optional<std::variant<ExpectPropertyCommand, ExpectAbsentCommand, ExpectHostCommand>> parseCondition(ScenarioLineReader& reader, size_t first)
{
    if (!reader.expectArguments(first + 2, SIZE_MAX))
        return std::nullopt;
    const Word& subject = reader.argument(first);
    if (!subject.quoted && (subject.text == "host" || subject.text.starts_with("host."))) {
        ExpectHostCommand expect;
        if (subject.text.size() > 4)
            expect.path = splitPath(std::string_view(subject.text).substr(5));
        if (std::any_of(expect.path.begin(), expect.path.end(), [](const std::string& component) { return component.empty(); }))
            reader.expected(subject, "a path like host.timer.state");
        auto value = reader.expectedValue(first + 1);
        expect.value = value.value_or(nullptr);
        return expect;
    }

    auto target = reader.target(&subject);
    if (reader.argumentCount() == first + 2 && reader.argumentIs(first + 1, "absent"))
        return ExpectAbsentCommand { target.value_or(Target {}) };
    if (!reader.expectArguments(first + 3, SIZE_MAX))
        return std::nullopt;
    ExpectPropertyCommand expect;
    expect.target = target.value_or(Target {});
    if (auto property = reader.text(&reader.argument(first + 1))) {
        expect.property = splitPath(*property);
        if (std::any_of(expect.property.begin(), expect.property.end(), [](const std::string& component) { return component.empty(); }))
            reader.expected(reader.argument(first + 1), "a property of the view's dump like text or frame.2");
    }
    expect.value = reader.expectedValue(first + 2).value_or(nullptr);
    return expect;
}

void parseExpect(ScenarioLineReader& reader, Command& command)
{
    auto condition = parseCondition(reader, 0);
    if (!condition)
        return;
    std::visit(
        [&](auto& expect) {
            using T = std::decay_t<decltype(expect)>;
            constexpr CommandKind kind = std::is_same_v<T, ExpectHostCommand> ? CommandKind::ExpectHost
                : std::is_same_v<T, ExpectAbsentCommand>                        ? CommandKind::ExpectAbsent
                                                                                : CommandKind::ExpectProperty;
            set(command, kind, std::move(expect));
        },
        *condition);
}

void parseTree(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(0, 2))
        return;
    TreeCommand tree;
    size_t count = reader.argumentCount();
    if (count > 0 && reader.argumentIs(count - 1, "all")) {
        tree.all = true;
        --count;
    }
    if (count == 2) {
        reader.error("unexpected '" + shownInMessage(reader.raw(reader.argument(1))) + "': usage is 'tree [TARGET] [all]'");
        return;
    }
    if (count == 1) {
        tree.target = reader.target(&reader.argument(0));
        if (tree.target && tree.target->kind == Target::Kind::Point) {
            reader.error("tree needs a view, as #name or ClassName, not a point");
            return;
        }
    }
    set(command, CommandKind::Tree, std::move(tree));
}

void parseExpectShot(ScenarioLineReader& reader, Command& command)
{
    if (!reader.expectArguments(1, 2))
        return;
    ExpectShotCommand expect;
    expect.reference = reader.referencePicture(&reader.argument(0)).value_or("");
    if (reader.argumentCount() == 2) {
        expect.target = reader.target(&reader.argument(1));
        if (expect.target && expect.target->kind == Target::Kind::Point) {
            reader.expected(reader.argument(1), "a view (#name or ClassName), whose rectangle of the screen is compared");
            expect.target.reset();
        }
    }
    expect.precision = reader.unitFraction(reader.option("precision")).value_or(1);
    expect.perceptual = reader.unitFraction(reader.option("perceptual")).value_or(1);
    set(command, CommandKind::ExpectShot, std::move(expect));
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
        { "prefs-clear", Phase::World, "prefs-clear", {}, [](ScenarioLineReader& r, Command& c) { parseNoArguments(r, c, CommandKind::PrefsClear); } },
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
        { "calendar-import", Phase::World, "calendar-import FILE.ics calendar=NAME", { "calendar" }, parseCalendarImport },
        { "event", Phase::World, "event \"TITLE\" start=TIME end=TIME calendar=NAME location=\"L\" notes=\"N\"",
            { "start", "end", "calendar", "location", "notes" }, parseEvent },
        { "reminder", Phase::World, "reminder \"TITLE\" due=TIME|none calendar=NAME completed=B", { "due", "calendar", "completed" }, parseReminder },
        { "notification", Phase::World, "notification BUNDLEID title=\"T\" subtitle=\"S\" message=\"M\" date=TIME image=B actions=N url=\"U\"",
            { "title", "subtitle", "message", "date", "image", "actions", "url" }, parseNotification },
        { "notification-remove", Phase::World, "notification-remove BUNDLEID", {}, parseNotificationRemove },
        { "notifications", Phase::World, "notifications grouped=B", { "grouped" }, parseNotifications },
        { "music", Phase::World, "music artist=\"A\" song=\"S\" album=\"L\" artwork=#rrggbb|FILE.png playing=B track=I/N or music none",
            { "artist", "song", "album", "artwork", "playing", "track" }, parseMusic },
        { "volume", Phase::World, "volume F", {}, parseVolume },
        { "alarm", Phase::World, "alarm today|tomorrow HH:MM or alarm none", {}, parseAlarm },
        { "timer", Phase::World, "timer running|paused DURATION or timer stopped", {}, parseTimer },
        { "call", Phase::World, "call incoming|active|none", {}, parseCall },
        { "facetime", Phase::World, "facetime active|invitation|none", {}, parseFaceTime },

        { "boot", Phase::Acting, "boot", {}, [](ScenarioLineReader& r, Command& c) { parseNoArguments(r, c, CommandKind::Boot); } },
        { "advance", Phase::Acting, "advance DURATION or advance until TARGET PROPERTY VALUE|host.PATH VALUE [max=DURATION]", { "max" }, parseAdvance },
        { "tap", Phase::Acting, "tap TARGET", {}, [](ScenarioLineReader& r, Command& c) { parseTargetOnly(r, c, CommandKind::Tap); } },
        { "doubletap", Phase::Acting, "doubletap TARGET", {}, [](ScenarioLineReader& r, Command& c) { parseTargetOnly(r, c, CommandKind::DoubleTap); } },
        { "longpress", Phase::Acting, "longpress TARGET [DURATION]", {}, parseLongPress },
        { "swipe", Phase::Acting, "swipe up|down|left|right TARGET", {}, parseSwipe },
        { "slide", Phase::Acting, "slide TARGET VALUE", {}, parseSlide },
        { "scroll", Phase::Acting, "scroll TARGET DX DY", {}, parseScroll },
        { "pick", Phase::Acting, "pick TARGET COMPONENT ROW", {}, parsePick },
        { "home", Phase::Acting, "home", {}, [](ScenarioLineReader& r, Command& c) { parseNoArguments(r, c, CommandKind::Home); } },
        { "display", Phase::Acting, "display off|on", {}, [](ScenarioLineReader& r, Command& c) { parseSwitch(r, c, CommandKind::Display, "on", "off"); } },
        { "alert", Phase::Acting, "alert show|dismiss", {}, [](ScenarioLineReader& r, Command& c) { parseSwitch(r, c, CommandKind::Alert, "show", "dismiss"); } },
        { "rotate", Phase::Acting, "rotate portrait|landscape|landscape-right|upside-down", {}, parseRotate },
        { "lock", Phase::Acting, "lock", {}, [](ScenarioLineReader& r, Command& c) { parseNoArguments(r, c, CommandKind::Lock); } },
        { "unlock", Phase::Acting, "unlock", {}, [](ScenarioLineReader& r, Command& c) { parseNoArguments(r, c, CommandKind::Unlock); } },
        { "nc", Phase::Acting, "nc show|hide", {}, [](ScenarioLineReader& r, Command& c) { parseSwitch(r, c, CommandKind::NotificationCenter, "show", "hide"); } },
        { "search", Phase::Acting, "search show right|top or search hide", {}, parseSearch },
        { "soak", Phase::Acting, "soak DURATION seed=N step=DURATION", { "seed", "step" }, parseSoak },

        { "shot", Phase::Looking, "shot FILE.png", {}, [](ScenarioLineReader& r, Command& c) { parseOutputFile(r, c, CommandKind::Shot, ".png"); } },
        { "dump", Phase::Looking, "dump FILE.json", {}, [](ScenarioLineReader& r, Command& c) { parseOutputFile(r, c, CommandKind::Dump, ".json"); } },
        { "expect", Phase::Looking, "expect TARGET PROPERTY VALUE, expect TARGET absent or expect host.PATH VALUE", {}, parseExpect },
        { "expect-shot", Phase::Looking, "expect-shot REF.png [TARGET] [precision=F] [perceptual=F]", { "precision", "perceptual" }, parseExpectShot },
        { "tree", Phase::Looking, "tree [TARGET] [all]", {}, parseTree },
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

// What the ordering rules need to know of the lines read so far.
struct Progress {
    int bootLine { 0 }; // the latest boot
    // A host-shape command after a boot: it shapes the fresh host of a later
    // boot, so no acting or looking command may come between it and that boot.
    int pendingShapeLine { 0 };
    std::string pendingShapeName;
};

std::string shapeAfterBootMessage(std::string_view name, int bootLine)
{
    return "'" + std::string(name) + "' shapes the host and must come before boot (line " + std::to_string(bootLine)
        + "), or before a later boot, which starts a fresh host";
}

std::optional<Command> parseLine(std::string_view line, const std::string& fileName, int lineNumber, Progress& progress, std::vector<std::string>& errors, std::vector<Diagnostic>& misplaced)
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
        errors.push_back("unknown command '" + shownInMessage(name) + "'" + suggestionFor(name, names));
        return std::nullopt;
    }

    ScenarioLineReader reader(line, lexed.words, form->name, form->usage);
    Command command;
    command.file = fileName;
    command.line = lineNumber;
    command.text = std::string(line.substr(first.begin, lexed.words.back().end - first.begin));
    reader.checkOptions(form->options);
    form->parse(reader, command);

    errors = reader.errors();
    if (form->name == "boot") {
        progress.bootLine = lineNumber;
        progress.pendingShapeLine = 0;
    } else if (form->phase == CommandPhase::HostShape && progress.bootLine) {
        if (!progress.pendingShapeLine) {
            progress.pendingShapeLine = lineNumber;
            progress.pendingShapeName = form->name;
        }
    } else if (form->phase == CommandPhase::Acting || form->phase == CommandPhase::Looking) {
        if (!progress.bootLine)
            errors.push_back("'" + std::string(form->name) + "' needs the running host: it must come after boot");
        else if (progress.pendingShapeLine)
            misplaced.push_back({ fileName, progress.pendingShapeLine, shapeAfterBootMessage(progress.pendingShapeName, progress.bootLine) });
        progress.pendingShapeLine = 0;
    }

    if (!errors.empty())
        return std::nullopt;
    return command;
}

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
    result.commands.reserve(lines.size());
    for (size_t index = 0; index < lines.size(); ++index) {
        int lineNumber = static_cast<int>(index + 1);
        std::vector<std::string> errors;
        std::vector<Diagnostic> misplaced;
        std::optional<Command> command;
        try {
            command = parseLine(lines[index], fileName, lineNumber, progress, errors, misplaced);
        } catch (const std::exception& exception) {
            // Only running out of memory gets here; report it as a value all the same.
            errors = { std::string("cannot read this line: ") + exception.what() };
        }
        if (command)
            result.commands.push_back(std::move(*command));
        for (std::string& message : errors)
            misplaced.push_back({ fileName, lineNumber, std::move(message) });
        for (Diagnostic& diagnostic : misplaced) {
            if (result.diagnostics.size() == maximumDiagnostics) {
                result.diagnostics.push_back({ fileName, lineNumber, "too many mistakes; stopping here" });
                result.commands.clear();
                return result;
            }
            result.diagnostics.push_back(std::move(diagnostic));
        }
    }
    if (progress.pendingShapeLine)
        result.diagnostics.push_back({ fileName, progress.pendingShapeLine, "'" + progress.pendingShapeName + "' shapes the host, but no boot follows it" });
    // A misplaced host-shape line is only known once a later line acts.
    std::stable_sort(result.diagnostics.begin(), result.diagnostics.end(), [](const Diagnostic& a, const Diagnostic& b) { return a.line < b.line; });
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
