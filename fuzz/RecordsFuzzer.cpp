// Lets the input decide the world a phone holds (calendars, events,
// reminders, notifications, weather, music, battery, alarm and timer, and a
// few preferences), boots the host with the extension loaded, and uses the
// phone a little: a forced schedule reload, a few seconds of ticks, taps on
// whatever answers taps (which opens overlays), a turn, the home button.
// The extension reads all of this through the host's records, so odd
// records (absent titles and colours, dates far away or equal, empty or
// huge or ill-formed texts, odd temperatures and capacities) must never
// crash it.
#include <BuildPaths.h>
#include <DeviceRoot.h>
#include <ExtensionLoader.h>

#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSFileManager.h>
#include <Foundation/NSLocale.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/NSTimeZone.h>
#include <Foundation/VirtualClock.h>
#include <UIKit/UIApplication.h>
#include <UIKit/UIGestureRecognizer.h>
#include <UIKit/UIView.h>
#include <UIKit/UIWindow.h>
#include <host/HostWorld.h>
#include <host/SimulatedHost.h>
#include <host/Weather/DayForecast.h>
#include <host/Weather/HourlyForecast.h>
#include <host/Weather/WeatherPreferences.h>

#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>

namespace {

constexpr const char* preferencesPath = "/private/var/mobile/Library/Preferences/com.Corvane.Kavelin.plist";

struct Phone {
    DeviceRoot root;
    BuildPaths paths { BuildPaths::locate() };
    std::unique_ptr<SimulatedHost> host;
    double start { 0 };
};

Phone& phone()
{
    static Phone* phone = [] {
        auto* phone = new Phone;
        if (auto error = phone->root.open(""); !error.empty())
            std::fprintf(stderr, "fuzz_records: %s\n", error.c_str()), std::exit(1);
        if (auto error = phone->root.installBundle(phone->paths.resourceBundle); !error.empty())
            std::fprintf(stderr, "fuzz_records: %s\n", error.c_str()), std::exit(1);
        NSFileManager::setDeviceRoot(phone->root.path().string());
        NSLocale::setCurrentLocaleIdentifier("en_US");
        NSTimeZone::setDefaultTimeZoneName("UTC");
        phone->start = NSDateFormatter::dateFromLocalISO8601String("2026-11-21T09:41:00")->timeIntervalSinceReferenceDate();
        // The hooks go in once, as on the phone; every input boots a fresh host under them.
        if (auto error = ExtensionLoader::load(phone->paths.extension); !error.empty())
            std::fprintf(stderr, "fuzz_records: %s\n", error.c_str()), std::exit(1);
        return phone;
    }();
    return *phone;
}

void settle()
{
    NSRunLoop::mainRunLoop()->runPending();
    UIView::layoutPendingViews();
}

void advance(double seconds)
{
    NSRunLoop::mainRunLoop()->advance(seconds);
    UIView::layoutPendingViews();
}

std::string oddText(FuzzedDataProvider& input)
{
    switch (input.ConsumeIntegralInRange(0, 8)) {
    case 0:
        return "";
    case 1:
        return std::string(input.ConsumeIntegralInRange<size_t>(200, 20000), 'W');
    case 2:
        return "e\xCC\x81\xCC\x81\xCC\x81\xCC\x81 Z\xCD\x91\xCD\x92\xCD\x93\xCD\x94"; // stacked combining marks
    case 3:
        return "\xD8\xB4\xD9\x83\xD8\xB1\xD8\xA7 \xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7 \xE2\x80\xAEtxet"; // right to left, emoji sequences
    case 4:
        return "line\nbreak\r\n\ttab \xE2\x80\xA8separator";
    case 5:
        return "bad \xFF\xFE utf \xC0\xAF \xED\xA0\x80 8 \xE2\x82";
    case 6:
        return std::string("nul\0inside", 10);
    case 7:
        return " ";
    default:
        return input.ConsumeRandomLengthString(80);
    }
}

std::optional<std::string> maybeText(FuzzedDataProvider& input)
{
    if (input.ConsumeBool())
        return std::nullopt;
    return oddText(input);
}

// Seconds since the reference date: near now, or far away, or not a number.
double oddDate(FuzzedDataProvider& input, double now)
{
    switch (input.ConsumeIntegralInRange(0, 9)) {
    case 0:
        return now;
    case 1:
        return 0;
    case 2:
        return -1e12;
    case 3:
        return 1e12;
    case 4:
        return -1e17;
    case 5:
        return 1e17;
    case 6:
        return std::numeric_limits<double>::quiet_NaN();
    case 7:
        return input.ConsumeBool() ? std::numeric_limits<double>::infinity() : -std::numeric_limits<double>::infinity();
    default:
        return now + input.ConsumeFloatingPointInRange(-4 * 86400.0, 30 * 86400.0);
    }
}

double oddNumber(FuzzedDataProvider& input)
{
    switch (input.ConsumeIntegralInRange(0, 6)) {
    case 0:
        return 0;
    case 1:
        return std::numeric_limits<double>::quiet_NaN();
    case 2:
        return input.ConsumeBool() ? std::numeric_limits<double>::infinity() : -std::numeric_limits<double>::infinity();
    case 3:
        return input.ConsumeBool() ? 1e300 : -1e300;
    case 4:
        return input.ConsumeBool() ? 3e9 : -3e9;
    default:
        return input.ConsumeFloatingPointInRange(-100.0, 100.0);
    }
}

std::optional<std::string> oddColor(FuzzedDataProvider& input)
{
    static const char* colors[] = { "#ff3b30", "#000000", "#ffffff", "#fff", "", "#zzzzzz", "red", "#12345678" };
    if (input.ConsumeBool())
        return std::nullopt;
    return colors[input.ConsumeIntegralInRange<size_t>(0, std::size(colors) - 1)];
}

std::string appIdentifier(FuzzedDataProvider& input)
{
    static const char* apps[] = { "com.apple.MobileSMS", "com.apple.mobilemail", "com.apple.mobilecal", "com.apple.Music", "com.example.unknown", "" };
    if (input.ConsumeBool())
        return apps[input.ConsumeIntegralInRange<size_t>(0, std::size(apps) - 1)];
    return oddText(input);
}

void writePreferences(FuzzedDataProvider& input)
{
    static const char* keys[] = { "calveraPrivacyModeEnabled", "notaraPrivacyModeEnabled", "calveraCollapseEnabled",
        "notaraCollapseEnabled", "militaryTime", "secondsEnabled", "temperatureScale", "location", "calveraDaysFromNow",
        "calveraMaxEvents", "calveraMaxReminders", "calveraCalendarColorsEnabled", "notaraLaunchEnabled",
        "melodraQuickGesturesEnabled", "useCustomApps", "forecastErrorMessageEnabled", "blurEnabled" };
    static const char* values[] = { "YES", "NO", "0", "1", "2", "-1", "100000", "" };
    std::string plist = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>";
    for (int count = input.ConsumeIntegralInRange(0, 4); count > 0; --count) {
        plist += std::string("<key>") + keys[input.ConsumeIntegralInRange<size_t>(0, std::size(keys) - 1)] + "</key>";
        plist += std::string("<string>") + values[input.ConsumeIntegralInRange<size_t>(0, std::size(values) - 1)] + "</string>";
    }
    plist += "</dict></plist>\n";
    auto data = NSData::dataWithBytes(reinterpret_cast<const uint8_t*>(plist.data()), plist.size());
    NSFileManager::defaultManager()->createFileAtPath(preferencesPath, data.get());
}

void fillWorld(FuzzedDataProvider& input, SimulatedHost& host, double now)
{
    HostWorld& world = host.world();
    for (int count = input.ConsumeIntegralInRange(0, 3); count > 0; --count)
        world.defineCalendar({ input.ConsumeBool() ? "Calendar" : oddText(input), oddColor(input) });
    for (int count = input.ConsumeIntegralInRange(0, 5); count > 0; --count) {
        HostWorld::CalendarEvent event;
        event.title = oddText(input);
        event.start = oddDate(input, now);
        event.end = input.ConsumeBool() ? event.start : oddDate(input, now);
        event.calendar = input.ConsumeBool() ? std::optional<std::string>("Calendar") : maybeText(input);
        event.location = maybeText(input);
        event.notes = maybeText(input);
        world.addEvent(std::move(event));
    }
    for (int count = input.ConsumeIntegralInRange(0, 4); count > 0; --count) {
        HostWorld::Reminder reminder;
        reminder.title = oddText(input);
        if (input.ConsumeBool())
            reminder.due = oddDate(input, now);
        reminder.calendar = input.ConsumeBool() ? std::optional<std::string>("Calendar") : maybeText(input);
        reminder.completed = input.ConsumeBool();
        reminder.notes = maybeText(input);
        world.addReminder(std::move(reminder));
    }
    for (int count = input.ConsumeIntegralInRange(0, 6); count > 0; --count) {
        HostWorld::Notification notification;
        notification.app = appIdentifier(input);
        notification.title = maybeText(input);
        notification.subtitle = maybeText(input);
        notification.message = maybeText(input);
        notification.date = oddDate(input, now);
        notification.hasImage = input.ConsumeBool();
        // The host's model makes every action it is told of, so a count in the
        // billions only measures the model; a bulletin has a handful at most.
        notification.actionCount = input.ConsumeIntegralInRange(-2, 8);
        notification.url = maybeText(input);
        host.deliverNotification(notification);
    }
    world.setNotificationsGrouped(input.ConsumeBool());

    auto weather = WeatherPreferences::sharedPreferences();
    weather->setForecastAvailable(input.ConsumeBool());
    City& city = weather->city();
    if (input.ConsumeBool())
        city.setName(oddText(input));
    if (input.ConsumeBool())
        city.setConditionName(oddText(input));
    if (input.ConsumeBool())
        city.setIcon(input.ConsumeBool() ? "sunny" : oddText(input));
    city.setTemperatureCelsius(oddNumber(input));
    city.setHighCelsius(oddNumber(input));
    city.setLowCelsius(oddNumber(input));
    for (int count = input.ConsumeIntegralInRange(0, 3); count > 0; --count)
        city.addHourlyForecast(make<HourlyForecast>(input.ConsumeBool() ? "0900" : oddText(input), oddNumber(input), oddText(input)));
    for (int count = input.ConsumeIntegralInRange(0, 3); count > 0; --count)
        city.addDayForecast(make<DayForecast>(oddText(input), oddNumber(input), oddNumber(input), input.ConsumeBool() ? "cloudy" : oddText(input)));

    if (input.ConsumeBool()) {
        SBMediaController::NowPlaying nowPlaying;
        nowPlaying.artist = maybeText(input);
        nowPlaying.song = maybeText(input);
        nowPlaying.album = maybeText(input);
        nowPlaying.artworkColor = oddColor(input);
        nowPlaying.track = input.ConsumeIntegral<int>();
        nowPlaying.tracks = input.ConsumeIntegral<int>();
        host.setNowPlaying(nowPlaying, input.ConsumeBool());
    }
    host.setVolume(oddNumber(input));

    SimulatedHost::BatteryChange battery;
    battery.level = oddNumber(input);
    battery.onAC = input.ConsumeBool();
    battery.lowPowerMode = input.ConsumeBool();
    if (input.ConsumeBool())
        battery.currentCapacity = input.ConsumeIntegral<long long>();
    if (input.ConsumeBool())
        battery.maxCapacity = input.ConsumeBool() ? input.ConsumeIntegralInRange<long long>(-1, 1) : input.ConsumeIntegral<long long>();
    host.changeBattery(battery);

    if (input.ConsumeBool())
        host.setNextAlarm(input.ConsumeBool() ? SimulatedHost::AlarmDay::Today : SimulatedHost::AlarmDay::Tomorrow,
            input.ConsumeIntegralInRange(-1, 24), input.ConsumeIntegralInRange(-1, 60));
    switch (input.ConsumeIntegralInRange(0, 2)) {
    case 0:
        host.setTimerRunning(oddNumber(input) * 1000);
        break;
    case 1:
        host.setTimerPaused(oddNumber(input) * 1000);
        break;
    default:
        break;
    }
}

// Every view on screen with a recogniser of its own, windows front to back.
void collectTappable(UIView* view, std::vector<RefPtr<UIView>>& views)
{
    if (view->isHidden())
        return;
    if (!view->gestureRecognizers().empty())
        views.push_back(view);
    for (auto& subview : view->subviews())
        collectTappable(subview.get(), views);
}

void useThePhone(FuzzedDataProvider& input, SimulatedHost& host)
{
    // The schedule's reload runs through the queues; force one, as a timer would.
    if (auto* panelClass = objc::objc_getClass("KVView")) {
        NSObject* panel = objc::send<NSObject*>(panelClass, "sharedInstance");
        if (auto controller = objc::object_getIvar(panel, "_tableViewController"))
            objc::send(controller.get(), "forceReloadTableViewData");
    }
    settle();
    advance(input.ConsumeIntegralInRange(1, 11));

    auto* application = UIApplication::sharedApplication();
    for (int taps = input.ConsumeIntegralInRange(0, 4); taps > 0 && input.remaining_bytes(); --taps) {
        std::vector<RefPtr<UIView>> tappable;
        for (UIWindow* window : application->windows())
            collectTappable(window, tappable);
        if (tappable.empty())
            break;
        UIView* view = tappable[input.ConsumeIntegralInRange<size_t>(0, tappable.size() - 1)].get();
        CGRect frame = view->convertRectToView(view->bounds(), nullptr);
        application->tapAt(CGPointMake(frame.origin.x + frame.size.width / 2, frame.origin.y + frame.size.height / 2));
        settle();
        advance(0.5);
    }
    switch (input.ConsumeIntegralInRange(0, 3)) {
    case 0:
        host.rotate(input.ConsumeIntegralInRange(1, 4));
        break;
    case 1:
        host.pressHome();
        break;
    case 2:
        host.deliverNotification({ .app = appIdentifier(input), .title = maybeText(input), .message = maybeText(input), .date = oddDate(input, VirtualClock::shared().wallNow()) });
        break;
    default:
        break;
    }
    settle();
    advance(1);
}

}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t length)
{
    Phone& device = phone();
    FuzzedDataProvider input(bytes, length);
    // Unanswered messages are expected here; keep them out of the fuzzer's output.
    objc::Runtime::shared().setLogSink([](const std::string&) { });

    device.host.reset();
    VirtualClock::shared().setWallNow(device.start);
    writePreferences(input);
    SimulatedHost::Configuration configuration;
    configuration.artDirectory = device.paths.hostArt.string();
    device.host = std::make_unique<SimulatedHost>(configuration);
    objc::Runtime::shared().setLogSink([](const std::string&) { });

    fillWorld(input, *device.host, device.start);
    device.host->boot();
    settle();
    useThePhone(input, *device.host);
    return 0;
}
