#include "Simulator.h"

#include "ConditionCheck.h"
#include "ExtensionLoader.h"
#include "RunProgress.h"
#include "ShotExpectation.h"
#include "SoakRunner.h"
#include "TouchProbe.h"
#include "ViewTree.h"
#include "scenario/ExpectComparison.h"
#include "scenario/ScenarioValues.h"
#include "scenario/TreeFormat.h"

#include <Foundation/NSData.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSDictionary.h>
#include <Foundation/NSFileManager.h>
#include <Foundation/NSLocale.h>
#include <Foundation/NSNumber.h>
#include <Foundation/NSPropertyListSerialization.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/NSString.h>
#include <Foundation/NSTimeZone.h>
#include <Foundation/VirtualClock.h>
#include <UIKit/UIApplication.h>
#include <UIKit/UIImage.h>
#include <UIKit/UIPickerView.h>
#include <UIKit/UIScreen.h>
#include <UIKit/UIScrollView.h>
#include <UIKit/UISlider.h>
#include <UIKit/UIView.h>
#include <host/DeviceModel.h>
#include <host/HostWorld.h>
#include <host/SimulatedHost.h>
#include <host/Weather/WeatherPreferences.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

namespace sim {

static constexpr const char* appListPath = "/private/var/mobile/Library/Preferences/com.corvane.kavelin.applist.activeapps";
// Where the clock starts when a scenario does not say: a Saturday morning.
static constexpr const char* defaultStartTime = "2026-11-21T09:41:00";

Simulator::Simulator(std::filesystem::path outputDirectory, std::filesystem::path requestedRoot)
    : m_outputDirectory(std::move(outputDirectory))
    , m_requestedRoot(std::move(requestedRoot))
    , m_paths(BuildPaths::locate())
{
}

Simulator::~Simulator() = default;

std::string Simulator::prepare()
{
    if (auto error = m_root.open(m_requestedRoot); !error.empty())
        return error;
    if (auto error = m_root.installBundle(m_paths.resourceBundle); !error.empty())
        return error;
    if (auto error = m_root.installSettingsPane(m_paths.settingsPane); !error.empty())
        return error;
    NSFileManager::setDeviceRoot(m_root.path().string());

    std::error_code error;
    std::filesystem::create_directories(m_outputDirectory, error);
    if (error)
        return "cannot create the output folder " + m_outputDirectory.string() + ": " + error.message();

    NSLocale::setCurrentLocaleIdentifier("en_US");
    NSTimeZone::setDefaultTimeZoneName("UTC");
    if (auto start = NSDateFormatter::dateFromLocalISO8601String(defaultStartTime))
        VirtualClock::shared().setWallNow(start->timeIntervalSinceReferenceDate());

    SimulatedHost::Configuration configuration;
    configuration.artDirectory = m_paths.hostArt.string();
    m_host = std::make_unique<SimulatedHost>(configuration);
    // Everything written to the host's log (the extension's CFLog lines, the
    // runtime's complaints) is kept for the dump.
    objc::Runtime::shared().setLogSink([](const std::string& line) { HostWorld::shared().appendLog(line); });
    return {};
}

bool Simulator::fail(const Command& command, int status, const std::string& message)
{
    std::cerr << command.location() << ": " << message << "\n";
    m_status = status;
    return false;
}

bool Simulator::notSupportedYet(const Command& command)
{
    return fail(command, ExitCannotPlay, "'" + std::string(commandName(command.kind)) + "' is not supported yet");
}

void Simulator::expectation(const Command& command, bool held, const std::string& failure)
{
    if (held) {
        ++m_counts.expectsHeld;
        return;
    }
    std::cerr << command.location() << ": " << failure << "\n";
    ++m_counts.expectsFailed;
}

bool Simulator::warn(const Command& command, const std::string& message)
{
    if (m_warnings->warn(command, message))
        return true;
    m_status = ExitCannotPlay;
    return false;
}

void Simulator::wrote(const std::filesystem::path& path)
{
    m_writtenFiles.push_back(path);
    ++m_counts.filesWritten;
}

int Simulator::status() const
{
    if (m_status != ExitSuccess)
        return m_status;
    return m_counts.expectsFailed ? ExitExpectationFailed : ExitSuccess;
}

bool Simulator::playCommand(const Command& command)
{
    if (!execute(command))
        return false;
    ++m_counts.played;
    settle();
    return true;
}

int Simulator::play(const std::vector<Command>& commands)
{
    for (const Command& command : commands) {
        if (!playCommand(command))
            break;
    }
    return status();
}

int Simulator::playLine(const Command& command)
{
    m_status = ExitSuccess;
    m_replacementLine.reset();
    size_t failedBefore = m_counts.expectsFailed;
    if (!execute(command))
        return m_status;
    ++m_counts.played;
    settle();
    return m_counts.expectsFailed > failedBefore ? ExitExpectationFailed : ExitSuccess;
}

void Simulator::settle()
{
    // Work queued without delay runs now, and views that asked for layout get it.
    NSRunLoop::mainRunLoop()->runPending();
    UIView::layoutPendingViews();
}

bool Simulator::execute(const Command& command)
{
    switch (commandPhase(command.kind)) {
    case CommandPhase::HostShape:
        return executeShape(command);
    case CommandPhase::World:
        return executeWorld(command);
    case CommandPhase::Acting:
        return executeActing(command);
    case CommandPhase::Looking:
        return executeLooking(command);
    }
    return true;
}

bool Simulator::executeShape(const Command& command)
{
    switch (command.kind) {
    case CommandKind::System:
        m_host->setSystemVersion(command.as<SystemCommand>().version);
        return true;
    case CommandKind::Device: {
        const auto& device = command.as<DeviceCommand>();
        std::string name = device.model ? std::string(deviceInfo(*device.model).name) : "code=" + std::to_string(device.code);
        auto model = ::DeviceModel::named(name);
        if (!model)
            return fail(command, ExitCannotPlay, "unknown device '" + name + "'");
        m_host->setDevice(*model);
        return true;
    }
    case CommandKind::Locale:
        if (!NSLocale::setCurrentLocaleIdentifier(command.as<LocaleCommand>().identifier))
            return fail(command, ExitCannotPlay, "unknown locale '" + command.as<LocaleCommand>().identifier + "'");
        return true;
    case CommandKind::TimeZone: {
        // The start time stays the same wall-clock time in the new zone.
        auto start = NSDate::date();
        std::string local = NSDateFormatter::ISO8601StringFromDate(start.get()).substr(0, 19);
        if (!NSTimeZone::setDefaultTimeZoneName(command.as<TimeZoneCommand>().name))
            return fail(command, ExitCannotPlay, "unknown time zone '" + command.as<TimeZoneCommand>().name + "'");
        if (auto moved = NSDateFormatter::dateFromLocalISO8601String(local))
            VirtualClock::shared().setWallNow(moved->timeIntervalSinceReferenceDate());
        return true;
    }
    case CommandKind::MissingClass:
        objc::Runtime::shared().hideClass(command.as<MissingClassCommand>().className);
        return true;
    case CommandKind::MissingIvar: {
        const auto& missing = command.as<MissingIvarCommand>();
        objc::Runtime::shared().hideIvar(missing.className, missing.ivarName);
        return true;
    }
    default:
        return true;
    }
}

double Simulator::resolveTime(const TimeSpec& time) const
{
    if (time.isRelative())
        return VirtualClock::shared().wallNow() + time.offset;
    auto date = NSDateFormatter::dateFromLocalISO8601String(time.local.toString());
    return date ? date->timeIntervalSinceReferenceDate() : VirtualClock::shared().wallNow();
}

static std::string writeTextFile(const std::filesystem::path& path, const std::string& text)
{
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    return out ? std::string() : "cannot write " + path.string();
}

static StrongId preferenceValue(const PrefsValue& value)
{
    return std::visit(
        [](const auto& v) -> StrongId {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, bool>)
                return NSNumber::numberWithBool(v);
            else if constexpr (std::is_same_v<T, int64_t>)
                return NSNumber::numberWithLongLong(v);
            else if constexpr (std::is_same_v<T, double>)
                return NSNumber::numberWithDouble(v);
            else
                return NSString::create(v);
        },
        value);
}

bool Simulator::executeWorld(const Command& command)
{
    switch (command.kind) {
    case CommandKind::Now: {
        VirtualClock::shared().setWallNow(resolveTime(command.as<NowCommand>().time));
        if (m_booted)
            m_host->clockDidChange();
        return true;
    }
    case CommandKind::Prefs: {
        const auto& prefs = command.as<PrefsCommand>();
        auto path = m_root.resolve(DeviceRoot::preferencesPath);
        // Keep what the file holds already, when it is a readable dictionary.
        RefPtr<NSDictionary> dictionary;
        if (auto data = NSData::dataWithContentsOfFile(DeviceRoot::preferencesPath))
            dictionary = objc::castRef<NSDictionary>(NSPropertyListSerialization::propertyListWithData(data.get()));
        if (!dictionary)
            dictionary = NSDictionary::create();
        dictionary->setObject(preferenceValue(prefs.value), prefs.key);
        auto data = NSPropertyListSerialization::dataWithPropertyList(dictionary.get(), NSPropertyListBinaryFormat_v1_0);
        if (!data)
            return fail(command, ExitCannotPlay, "cannot encode the preferences");
        std::string bytes(data->bytes().begin(), data->bytes().end());
        if (auto error = writeTextFile(path, bytes); !error.empty())
            return fail(command, ExitCannotPlay, error);
        return true;
    }
    case CommandKind::PrefsClear: {
        std::error_code ignored;
        std::filesystem::remove(m_root.resolve(DeviceRoot::preferencesPath), ignored);
        return true;
    }
    case CommandKind::WriteFile: {
        const auto& file = command.as<WriteFileCommand>();
        if (auto error = writeTextFile(m_root.resolve(file.path), file.text); !error.empty())
            return fail(command, ExitCannotPlay, error);
        return true;
    }
    case CommandKind::CopyFile: {
        const auto& file = command.as<CopyFileCommand>();
        std::filesystem::path source = hostPathFor(command, file.hostPath);
        std::ifstream in(source, std::ios::binary);
        if (!in)
            return fail(command, ExitCannotPlay, "cannot read " + source.string());
        std::stringstream contents;
        contents << in.rdbuf();
        if (auto error = writeTextFile(m_root.resolve(file.path), contents.str()); !error.empty())
            return fail(command, ExitCannotPlay, error);
        return true;
    }
    case CommandKind::RemoveFile: {
        std::error_code ignored;
        std::filesystem::remove(m_root.resolve(command.as<RemoveFileCommand>().path), ignored);
        return true;
    }
    case CommandKind::AppList: {
        std::string text;
        for (auto& line : command.as<AppListCommand>().lines)
            text += line + "\n";
        if (auto error = writeTextFile(m_root.resolve(appListPath), text); !error.empty())
            return fail(command, ExitCannotPlay, error);
        return true;
    }
    case CommandKind::App: {
        const auto& app = command.as<AppCommand>();
        HostWorld::shared().installApp({ app.bundleIdentifier, app.name.value_or(app.bundleIdentifier), app.color ? app.color->toString() : "#8e8e93" });
        return true;
    }
    case CommandKind::Switcher:
        HostWorld::shared().setSwitcherApps(command.as<SwitcherCommand>().bundleIdentifiers);
        return true;
    case CommandKind::Battery: {
        const auto& battery = command.as<BatteryCommand>();
        SimulatedHost::BatteryChange change;
        change.level = battery.level;
        change.onAC = battery.externalPower;
        change.lowPowerMode = battery.lowPowerMode;
        if (battery.currentCapacity)
            change.currentCapacity = *battery.currentCapacity;
        if (battery.maxCapacity)
            change.maxCapacity = *battery.maxCapacity;
        m_host->changeBattery(change);
        return true;
    }
    case CommandKind::Weather: {
        const auto& weather = command.as<WeatherCommand>();
        auto preferences = WeatherPreferences::sharedPreferences();
        City& city = preferences->city();
        if (weather.city)
            city.setName(*weather.city);
        if (weather.condition)
            city.setConditionName(*weather.condition);
        if (weather.icon)
            city.setIcon(*weather.icon);
        if (weather.temperature)
            city.setTemperatureCelsius(*weather.temperature);
        if (weather.high)
            city.setHighCelsius(*weather.high);
        if (weather.low)
            city.setLowCelsius(*weather.low);
        preferences->setForecastAvailable(true);
        return true;
    }
    case CommandKind::WeatherOff:
        WeatherPreferences::sharedPreferences()->setForecastAvailable(false);
        return true;
    case CommandKind::WeatherHour: {
        const auto& hour = command.as<WeatherHourCommand>();
        std::string time = NSString::format("%02d%02d", hour.time.hour, hour.time.minute);
        WeatherPreferences::sharedPreferences()->city().addHourlyForecast(make<HourlyForecast>(time, hour.temperature, hour.icon.value_or("sunny")));
        return true;
    }
    case CommandKind::WeatherDay: {
        const auto& day = command.as<WeatherDayCommand>();
        WeatherPreferences::sharedPreferences()->city().addDayForecast(make<DayForecast>(day.day, day.high, day.low, day.icon.value_or("sunny")));
        return true;
    }
    case CommandKind::Calendar: {
        const auto& calendar = command.as<CalendarCommand>();
        HostWorld::shared().defineCalendar({ calendar.name, calendar.color ? std::optional(calendar.color->toString()) : std::nullopt });
        return true;
    }
    case CommandKind::Event: {
        const auto& e = command.as<EventCommand>();
        HostWorld::CalendarEvent event;
        event.title = e.title;
        event.start = resolveTime(e.start);
        // An event without an end lasts an hour, as the Calendar app makes them.
        event.end = e.end ? resolveTime(*e.end) : event.start + 3600;
        event.calendar = e.calendar.value_or("Calendar");
        event.location = e.location;
        event.notes = e.notes;
        HostWorld::shared().addEvent(std::move(event));
        return true;
    }
    case CommandKind::Reminder: {
        const auto& r = command.as<ReminderCommand>();
        HostWorld::Reminder reminder;
        reminder.title = r.title;
        if (r.due)
            reminder.due = resolveTime(*r.due);
        reminder.calendar = r.calendar.value_or("Calendar");
        reminder.completed = r.completed.value_or(false);
        HostWorld::shared().addReminder(std::move(reminder));
        return true;
    }
    case CommandKind::Notification: {
        const auto& n = command.as<NotificationCommand>();
        HostWorld::Notification notification;
        notification.app = n.bundleIdentifier;
        notification.title = n.title;
        notification.subtitle = n.subtitle;
        notification.message = n.message;
        notification.url = n.url;
        notification.date = n.date ? resolveTime(*n.date) : VirtualClock::shared().wallNow();
        notification.hasImage = n.image.value_or(false);
        notification.actionCount = n.actions.value_or(0);
        m_host->deliverNotification(notification);
        return true;
    }
    case CommandKind::NotificationRemove: {
        // The app's oldest notification goes, as if cleared on another screen.
        const auto& app = command.as<NotificationRemoveCommand>().bundleIdentifier;
        const auto& store = HostWorld::shared().notifications();
        auto oldest = std::find_if(store.begin(), store.end(), [&](const HostWorld::Notification& n) { return n.app == app; });
        if (oldest == store.end())
            return fail(command, ExitCannotPlay, "no notification from " + app + " to remove");
        HostWorld::shared().removeNotificationWithIdentifier(oldest->identifier);
        return true;
    }
    case CommandKind::CalendarImport:
        return importCalendar(command);
    case CommandKind::NotificationGrouping:
        HostWorld::shared().setNotificationsGrouped(command.as<NotificationGroupingCommand>().grouped);
        return true;
    case CommandKind::Music: {
        const auto& music = command.as<MusicCommand>();
        SBMediaController::NowPlaying nowPlaying;
        nowPlaying.artist = music.artist;
        nowPlaying.song = music.song;
        nowPlaying.album = music.album;
        if (music.artwork)
            nowPlaying.artworkColor = music.artwork->toString();
        if (music.artworkFile) {
            nowPlaying.artworkFile = artworkFile(command, *music.artworkFile);
            if (!nowPlaying.artworkFile)
                return false;
        }
        if (music.track) {
            nowPlaying.track = music.track->index;
            nowPlaying.tracks = music.track->count;
        }
        m_host->setNowPlaying(nowPlaying, music.playing.value_or(true));
        return true;
    }
    case CommandKind::MusicNone:
        m_host->setNowPlaying(std::nullopt, false);
        return true;
    case CommandKind::Volume:
        m_host->setVolume(command.as<VolumeCommand>().volume);
        return true;
    case CommandKind::Alarm: {
        const auto& alarm = command.as<AlarmCommand>();
        auto day = alarm.day == AlarmCommand::Day::Today ? SimulatedHost::AlarmDay::Today : SimulatedHost::AlarmDay::Tomorrow;
        if (!m_host->setNextAlarm(day, alarm.time.hour, alarm.time.minute))
            return fail(command, ExitCannotPlay, "the alarm's time is out of range");
        return true;
    }
    case CommandKind::AlarmNone:
        m_host->clearNextAlarm();
        return true;
    case CommandKind::Timer: {
        const auto& timer = command.as<TimerCommand>();
        if (timer.state == TimerCommand::State::Running)
            m_host->setTimerRunning(timer.remaining);
        else if (timer.state == TimerCommand::State::Paused)
            m_host->setTimerPaused(timer.remaining);
        else
            m_host->setTimerStopped();
        return true;
    }
    case CommandKind::Call: {
        auto state = command.as<CallCommand>().state;
        m_host->setCallState(state == CallCommand::State::Incoming ? SimulatedHost::CallState::IncomingCall
                : state == CallCommand::State::Active                ? SimulatedHost::CallState::ActiveCall
                                                                     : SimulatedHost::CallState::None);
        return true;
    }
    case CommandKind::FaceTime: {
        auto state = command.as<FaceTimeCommand>().state;
        m_host->setCallState(state == FaceTimeCommand::State::Active ? SimulatedHost::CallState::ActiveFaceTime
                : state == FaceTimeCommand::State::Invitation          ? SimulatedHost::CallState::FaceTimeInvitation
                                                                       : SimulatedHost::CallState::None);
        return true;
    }
    default:
        return notSupportedYet(command);
    }
}

bool Simulator::boot(const Command& command)
{
    // The extension's initialisers read the system version and the device,
    // so they are in place before it is loaded, as on the phone.
    m_host->startProcess();
    if (auto error = ExtensionLoader::load(m_paths.extension); !error.empty())
        return fail(command, ExitHostFailed, error);
    m_host->boot();
    m_booted = true;
    return true;
}

// "2d3h0m5s250ms" without the zero parts, as the scenario language reads it.
static std::string durationText(long long milliseconds)
{
    static constexpr std::pair<long long, const char*> units[] = { { 86'400'000, "d" }, { 3'600'000, "h" }, { 60'000, "m" }, { 1000, "s" }, { 1, "ms" } };
    std::string text;
    for (auto [size, unit] : units) {
        if (milliseconds >= size) {
            text += std::to_string(milliseconds / size) + unit;
            milliseconds %= size;
        }
    }
    return text.empty() ? "0s" : text;
}

// Runs the clock event by event, so that a stop request is seen between two
// events. A stopped run goes on to the next whole millisecond, and the line
// that replays it advances exactly as far: the same events in the same order.
void Simulator::stopClockShort(double start)
{
    auto milliseconds = static_cast<long long>(std::ceil((VirtualClock::shared().monotonic() - start) * 1000));
    while (start + *parseDuration(durationText(milliseconds)) < VirtualClock::shared().monotonic())
        ++milliseconds;
    std::string duration = durationText(milliseconds);
    NSRunLoop::mainRunLoop()->runUntil(start + *parseDuration(duration));
    m_replacementLine = "advance " + duration;
}

void Simulator::advanceWatched(double seconds)
{
    NSRunLoop* loop = NSRunLoop::mainRunLoop();
    double start = VirtualClock::shared().monotonic();
    double end = start + std::max(0.0, seconds);
    while (loop->nextEventTime() <= end) {
        if (m_shouldStop()) {
            stopClockShort(start);
            return;
        }
        loop->runUntil(loop->nextEventTime());
    }
    loop->runUntil(end);
}

static int orientationValue(RotateCommand::Orientation orientation)
{
    switch (orientation) {
    case RotateCommand::Orientation::Portrait:
        return 1;
    case RotateCommand::Orientation::UpsideDown:
        return 2;
    case RotateCommand::Orientation::LandscapeRight:
        return 3;
    case RotateCommand::Orientation::Landscape:
        return 4;
    }
    return 1;
}

void Simulator::trace(const Command& command, const std::string& what)
{
    if (m_trace)
        std::cerr << command.location() << ": " << command.text << what << "\n";
}

static std::string pointText(CGPoint point)
{
    Target target;
    target.kind = Target::Kind::Point;
    target.x = point.x;
    target.y = point.y;
    return target.toString();
}

std::optional<CGPoint> Simulator::aimFinger(const Command& command, const Target& target, const char* requiredClass)
{
    if (auto matches = ViewTree::ambiguity(target); !matches.empty()) {
        if (!warn(command, "the first view that " + target.toString() + " matches is not on screen, a later one is: " + matches))
            return std::nullopt;
    }
    auto point = ViewTree::screenPoint(target);
    if (!point) {
        fail(command, ExitCannotPlay, "nothing on screen matches " + target.toString());
        return std::nullopt;
    }
    auto gesture = command.kind == CommandKind::LongPress ? TouchProbe::Gesture::LongPress
        : command.kind == CommandKind::Tap || command.kind == CommandKind::DoubleTap ? TouchProbe::Gesture::Tap
                                                                                     : TouchProbe::Gesture::Swipe;
    TouchProbe probe = TouchProbe::at(*point, gesture);
    if (requiredClass) {
        // The view named, or for a point the view under it or one of its ancestors.
        objc::Class* required = objc::Runtime::shared().classNamed(requiredClass);
        UIView* view = target.kind == Target::Kind::Point ? probe.hit : ViewTree::find(target);
        UIView* found = view;
        while (target.kind == Target::Kind::Point && found && !found->isKindOfClass(required))
            found = found->superview();
        if (!found || !required || !found->isKindOfClass(required)) {
            std::string what = view ? "a " + std::string(view->className()) : std::string("nothing");
            fail(command, ExitCannotPlay, std::string(commandName(command.kind)) + " needs a " + requiredClass + ", but " + target.toString() + " is " + what);
            return std::nullopt;
        }
    }
    trace(command, " at " + pointText(*point) + " -> " + probe.description());
    if (!requiredClass && !probe.wasTaken()) {
        if (!warn(command, "nothing took the " + std::string(commandName(command.kind)) + " at " + pointText(*point) + " (no control, and no gesture recogniser for it, there)"))
            return std::nullopt;
    }
    return point;
}

void Simulator::runClock(const Command& command, double seconds)
{
    NSRunLoop* runLoop = NSRunLoop::mainRunLoop();
    double start = VirtualClock::shared().monotonic();
    double end = start + seconds;
    RunProgress progress(command.text, start, end);
    // In slices, so that the progress line keeps up; the events run as in one go.
    constexpr double slice = 3600;
    for (double reached = start; reached < end;) {
        reached = std::min(end, reached + slice);
        runLoop->runUntil(reached);
        progress.update(reached);
    }
}

static std::string secondsText(double seconds)
{
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%gs", std::round(seconds * 1000) / 1000);
    return buffer;
}

bool Simulator::advanceUntil(const Command& command)
{
    const auto& until = command.as<AdvanceUntilCommand>();
    NSRunLoop* runLoop = NSRunLoop::mainRunLoop();
    double start = VirtualClock::shared().monotonic();
    double deadline = start + until.maxSeconds;
    RunProgress progress(command.text, start, deadline);
    auto host = [this] { return hostDump(); };
    // Checked now, then after each moment at which events ran, up to the deadline.
    while (true) {
        double now = VirtualClock::shared().monotonic();
        ConditionResult result = ConditionCheck::evaluate(until.condition, host, now >= deadline);
        if (result.held) {
            trace(command, " -> held after " + secondsText(now - start));
            expectation(command, true);
            return true;
        }
        if (now >= deadline) {
            trace(command, " -> did not hold");
            expectation(command, false, "waited " + secondsText(until.maxSeconds) + " for " + result.expected + "; last found " + result.found + (result.matches.empty() ? "" : " (" + result.matches + ")"));
            return true;
        }
        // The live preview may stop the clock here: the line becomes the advance it did.
        if (m_shouldStop && m_shouldStop()) {
            stopClockShort(start);
            trace(command, " -> stopped");
            return true;
        }
        runLoop->runUntil(std::min(deadline, runLoop->nextEventTime()));
        settle();
        progress.update(VirtualClock::shared().monotonic());
    }
}

bool Simulator::executeActing(const Command& command)
{
    if (command.kind == CommandKind::Boot) {
        trace(command, "");
        return boot(command);
    }
    UIApplication* application = UIApplication::sharedApplication();

    switch (command.kind) {
    case CommandKind::Advance: {
        uint64_t before = NSRunLoop::mainRunLoop()->firedEventCount();
        if (m_shouldStop)
            advanceWatched(command.as<AdvanceCommand>().seconds);
        else
            runClock(command, command.as<AdvanceCommand>().seconds);
        trace(command, " -> " + std::to_string(NSRunLoop::mainRunLoop()->firedEventCount() - before) + " events");
        return true;
    }
    case CommandKind::AdvanceUntil:
        return advanceUntil(command);
    case CommandKind::Tap:
        if (auto point = aimFinger(command, command.as<TargetCommand>().target))
            return application->tapAt(*point), true;
        return false;
    case CommandKind::DoubleTap:
        if (auto point = aimFinger(command, command.as<TargetCommand>().target))
            return application->doubleTapAt(*point), true;
        return false;
    case CommandKind::LongPress:
        if (auto point = aimFinger(command, command.as<LongPressCommand>().target))
            return application->longPressAt(*point, command.as<LongPressCommand>().duration), true;
        return false;
    case CommandKind::Swipe: {
        const auto& swipe = command.as<SwipeCommand>();
        auto point = aimFinger(command, swipe.target);
        if (!point)
            return false;
        UISwipeGestureRecognizerDirection direction = swipe.direction == SwipeCommand::Direction::Up ? UISwipeGestureRecognizerDirectionUp
            : swipe.direction == SwipeCommand::Direction::Down                                       ? UISwipeGestureRecognizerDirectionDown
            : swipe.direction == SwipeCommand::Direction::Left                                       ? UISwipeGestureRecognizerDirectionLeft
                                                                                                     : UISwipeGestureRecognizerDirectionRight;
        application->swipeAt(*point, direction);
        return true;
    }
    case CommandKind::Slide:
        if (auto point = aimFinger(command, command.as<SlideCommand>().target, "UISlider"))
            return application->slideAt(*point, static_cast<float>(command.as<SlideCommand>().value)), true;
        return false;
    case CommandKind::Scroll:
        if (auto point = aimFinger(command, command.as<ScrollCommand>().target, "UIScrollView"))
            return application->dragAt(*point, command.as<ScrollCommand>().dx, command.as<ScrollCommand>().dy), true;
        return false;
    case CommandKind::Pick:
        if (auto point = aimFinger(command, command.as<PickCommand>().target, "UIPickerView"))
            return application->pickAt(*point, command.as<PickCommand>().component, command.as<PickCommand>().row), true;
        return false;
    default:
        break;
    }

    trace(command, "");
    switch (command.kind) {
    case CommandKind::Home:
        m_host->pressHome();
        return true;
    case CommandKind::Display:
        m_host->setDisplayOn(command.as<SwitchCommand>().on);
        return true;
    case CommandKind::Alert:
        if (command.as<SwitchCommand>().on)
            m_host->showFullscreenAlert();
        else
            m_host->dismissFullscreenAlert();
        return true;
    case CommandKind::Rotate:
        m_host->rotate(orientationValue(command.as<RotateCommand>().orientation));
        return true;
    case CommandKind::Lock:
        m_host->lock();
        return true;
    case CommandKind::Unlock:
        m_host->unlock();
        return true;
    case CommandKind::NotificationCenter:
        if (command.as<SwitchCommand>().on)
            m_host->showNotificationCenter();
        else
            m_host->hideNotificationCenter();
        return true;
    case CommandKind::Search: {
        const auto& search = command.as<SearchCommand>();
        if (search.show)
            m_host->showSearch(search.edge == SearchCommand::Edge::Right ? 8 : 1);
        else
            m_host->hideSearch();
        return true;
    }
    case CommandKind::Soak: {
        const auto& soak = command.as<SoakCommand>();
        double start = VirtualClock::shared().monotonic();
        RunProgress progress(command.text, start, start + soak.seconds);
        SoakRunner runner(*m_host, { soak.seconds, soak.seed, soak.step, [&](double elapsed) { progress.update(start + elapsed); } });
        auto failure = runner.run();
        std::cout << runner.summary();
        if (failure)
            return fail(command, ExitExpectationFailed, "soak: " + *failure);
        return true;
    }
    default:
        return notSupportedYet(command);
    }
}

std::filesystem::path Simulator::outputPath(const std::string& fileName) const { return m_outputDirectory / fileName; }

nlohmann::json Simulator::hostDump() const
{
    nlohmann::json host = nlohmann::json::object();
    m_host->dumpHost(host);
    auto hooks = nlohmann::json::array();
    for (auto& [cls, selector] : objc::Runtime::shared().installedHooks())
        hooks.push_back({ cls, selector });
    host["hooks"] = hooks;
    return host;
}

nlohmann::json Simulator::dump() const
{
    nlohmann::json dump;
    auto now = NSDate::date();
    dump["time"] = NSDateFormatter::ISO8601StringFromDate(now.get());
    CGRect screen = UIScreen::mainScreen()->bounds();
    int orientation = UIApplication::sharedApplication()->statusBarOrientation();
    dump["screen"] = { { "width", screen.size.width }, { "height", screen.size.height }, { "scale", UIScreen::mainScreen()->scale() },
        { "orientation", SimulatedHost::orientationName(orientation) } };
    dump["windows"] = ViewTree::dumpWindows();
    dump["host"] = hostDump();
    return dump;
}

bool Simulator::executeLooking(const Command& command)
{
    switch (command.kind) {
    case CommandKind::Shot: {
        auto path = outputPath(command.as<OutputFileCommand>().fileName);
        std::error_code ignored;
        std::filesystem::create_directories(path.parent_path(), ignored);
        auto image = ShotExpectation::screenPicture();
        if (!image)
            return fail(command, ExitHostFailed, "the screen could not be drawn");
        if (auto error = image->writePNG(path.string()))
            return fail(command, ExitCannotPlay, *error);
        wrote(path);
        return true;
    }
    case CommandKind::Dump: {
        auto path = outputPath(command.as<OutputFileCommand>().fileName);
        std::error_code ignored;
        std::filesystem::create_directories(path.parent_path(), ignored);
        std::ofstream out(path, std::ios::trunc);
        out << dump().dump(2) << "\n";
        if (!out)
            return fail(command, ExitCannotPlay, "cannot write " + path.string());
        wrote(path);
        return true;
    }
    case CommandKind::ExpectProperty:
    case CommandKind::ExpectAbsent:
    case CommandKind::ExpectHost: {
        ConditionResult result = ConditionCheck::evaluate(ConditionCheck::conditionOf(command), [this] { return hostDump(); });
        expectation(command, result.held, result.held ? std::string() : result.failure());
        return true;
    }
    case CommandKind::ExpectShot: {
        auto outcome = ShotExpectation::check(command, m_outputDirectory, m_recordPolicy);
        for (auto& file : outcome.writtenFiles)
            wrote(file);
        expectation(command, outcome.held, outcome.message);
        return true;
    }
    case CommandKind::Tree:
        return tree(command);
    default:
        return true;
    }
}

bool Simulator::tree(const Command& command)
{
    const auto& tree = command.as<TreeCommand>();
    nlohmann::json nodes;
    if (tree.target) {
        UIView* view = ViewTree::find(*tree.target);
        if (!view)
            return fail(command, ExitCannotPlay, "nothing matches " + tree.target->toString());
        nodes = ViewTree::dumpView(*view);
    } else {
        nodes = ViewTree::dumpWindows();
    }
    CGRect screen = UIScreen::mainScreen()->bounds();
    std::string text = TreeFormat::tree(nodes, screen.size.width, screen.size.height, tree.all);
    if (text.empty())
        text = tree.target->toString() + " is not on screen (tree " + tree.target->toString() + " all shows it)\n";
    std::cout << text << std::flush;
    return true;
}

}
