#include <scenario/ScenarioParser.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

using namespace sim;

namespace {

bool isHostShape(std::string_view line)
{
    for (std::string_view name : { "system ", "device ", "locale ", "timezone ", "missing " }) {
        if (line.starts_with(name))
            return true;
    }
    return false;
}

// Parses one line where its phase allows it: host shape before `boot`,
// everything else after it.
ScenarioParseResult parseLine(std::string_view line)
{
    std::string text = isHostShape(line) ? std::string(line) + "\nboot\n" : "boot\n" + std::string(line) + "\n";
    return ScenarioParser::parseText(text, "test.scenario");
}

Command single(std::string_view line)
{
    ScenarioParseResult result = parseLine(line);
    EXPECT_TRUE(result.ok()) << line << "\n" << result.diagnosticText();
    if (result.commands.size() != 2)
        return {};
    return result.commands[isHostShape(line) ? 0 : 1];
}

std::string firstDiagnostic(std::string_view line)
{
    ScenarioParseResult result = parseLine(line);
    return result.diagnostics.empty() ? "(none)" : result.diagnostics[0].message;
}

}

TEST(ScenarioParser, AcceptsEveryCommandForm)
{
    const std::pair<const char*, CommandKind> lines[] = {
        { "system 10.0", CommandKind::System },
        { "device ipadmini4", CommandKind::Device },
        { "device code=42", CommandKind::Device },
        { "locale zh-Hans_CN", CommandKind::Locale },
        { "timezone America/Argentina/Buenos_Aires", CommandKind::TimeZone },
        { "timezone Etc/GMT+5", CommandKind::TimeZone },
        { "missing class SBAwayController", CommandKind::MissingClass },
        { "missing ivar SBLockScreenView _slideToUnlockView", CommandKind::MissingIvar },
        { "now -1h", CommandKind::Now },
        { "prefs Key \"two words\"", CommandKind::Prefs },
        { "prefs-clear", CommandKind::PrefsClear },
        { "file /a/b.txt \"text\"", CommandKind::WriteFile },
        { "file /a/b.txt from ../fixtures/b.txt", CommandKind::CopyFile },
        { "file /a/from \"from\"", CommandKind::WriteFile },
        { "rm /a/b.txt", CommandKind::RemoveFile },
        { "applist", CommandKind::AppList },
        { "app com.example.x", CommandKind::App },
        { "switcher", CommandKind::Switcher },
        { "battery", CommandKind::Battery },
        { "weather temp=20", CommandKind::Weather },
        { "weather off", CommandKind::WeatherOff },
        { "weather-hour 2300 -40", CommandKind::WeatherHour },
        { "weather-day \"Next Monday\" 5 1 icon=rain", CommandKind::WeatherDay },
        { "calendar \"Home and Garden\"", CommandKind::Calendar },
        { "event Meeting start=now", CommandKind::Event },
        { "reminder \"x\"", CommandKind::Reminder },
        { "notification com.apple.mobilemail", CommandKind::Notification },
        { "notifications grouped=yes", CommandKind::NotificationGrouping },
        { "music playing=no", CommandKind::Music },
        { "music none", CommandKind::MusicNone },
        { "volume 1", CommandKind::Volume },
        { "alarm today 07:30", CommandKind::Alarm },
        { "alarm none", CommandKind::AlarmNone },
        { "timer paused 90s", CommandKind::Timer },
        { "timer stopped", CommandKind::Timer },
        { "call incoming", CommandKind::Call },
        { "facetime invitation", CommandKind::FaceTime },
        { "advance 0s", CommandKind::Advance },
        { "tap 10,20", CommandKind::Tap },
        { "doubletap \"#_time label\"", CommandKind::DoubleTap },
        { "longpress KVView", CommandKind::LongPress },
        { "swipe down #_foregroundScrollView", CommandKind::Swipe },
        { "slide #volume 0.5", CommandKind::Slide },
        { "scroll KVTableView 0 -200", CommandKind::Scroll },
        { "pick UIPickerView 1 59", CommandKind::Pick },
        { "home", CommandKind::Home },
        { "display on", CommandKind::Display },
        { "alert dismiss", CommandKind::Alert },
        { "rotate landscape-right", CommandKind::Rotate },
        { "lock", CommandKind::Lock },
        { "unlock", CommandKind::Unlock },
        { "nc hide", CommandKind::NotificationCenter },
        { "search hide", CommandKind::Search },
        { "notification-remove com.apple.MobileSMS", CommandKind::NotificationRemove },
        { "soak 6h", CommandKind::Soak },
        { "shot shots/a.png", CommandKind::Shot },
        { "dump a.json", CommandKind::Dump },
        { "expect #x text \"a b\"", CommandKind::ExpectProperty },
        { "expect UILabel@3 absent", CommandKind::ExpectAbsent },
        { "expect host {\"locked\": true}", CommandKind::ExpectHost },
        { "expect-shot reference/lock.png", CommandKind::ExpectShot },
        { "expect-shot panel.png KVView@1 precision=0.99 perceptual=0.98", CommandKind::ExpectShot },
    };
    for (auto [line, kind] : lines)
        EXPECT_EQ(single(line).kind, kind) << line;
}

TEST(ScenarioParser, ReadsSoakRuns)
{
    auto soak = single("soak 7d seed=42 step=1m30s").as<SoakCommand>();
    EXPECT_EQ(soak.seconds, 7 * 86400);
    EXPECT_EQ(soak.seed, 42);
    EXPECT_EQ(soak.step, 90);
    auto defaults = single("soak 1h").as<SoakCommand>();
    EXPECT_EQ(defaults.seed, 1);
    EXPECT_EQ(defaults.step, 600);
    EXPECT_EQ(firstDiagnostic("soak 1h seed=-1"), "option 'seed': expected a whole number from 0 to 1000000000, got '-1'");
    EXPECT_EQ(firstDiagnostic("soak"), "missing argument: usage is 'soak DURATION seed=N step=DURATION'");
}

TEST(ScenarioParser, ReportsMistakesWithHelpfulMessages)
{
    const std::pair<const char*, const char*> lines[] = {
        { "tapp #x", "unknown command 'tapp', did you mean 'tap'?" },
        { "\"tap\" #x", "unknown command '\"tap\"'" },
        { "advance 6x", "expected a duration like 6s, got '6x'" },
        { "battery levle=0.5", "option 'levle' is not one of level, ac, lowpower, current, max, did you mean 'level'?" },
        { "battery level=1.5", "option 'level': expected a number from 0 to 1, got '1.5'" },
        { "battery ac=true", "option 'ac': expected yes or no, got 'true'" },
        { "battery level=0.1 level=0.2", "option 'level' is given twice" },
        { "battery 0.5", "unexpected argument '0.5': usage is 'battery level=F" },
        { "tap", "missing argument: usage is 'tap TARGET'" },
        { "tap #a #b", "unexpected argument '#b'" },
        { "tap #a x=1", "'tap' takes no options, got 'x=1'" },
        { "tap 10,", "expected a target like #name" },
        { "swipe sideways #x", "expected one of up, down, left, right, got 'sideways'" },
        { "rotate landscape-left", "expected one of portrait, landscape, landscape-right, upside-down" },
        { "device iphone6pluss", "unknown device 'iphone6pluss', did you mean 'iphone6plus'?" },
        { "device iphone7", "unknown device 'iphone7', did you mean 'iphone5'? (devices: iphone4s, iphone5," },
        { "device code=x", "option 'code': expected a whole number from 1 to 999" },
        { "system nine", "expected a version like 9.3.3, got 'nine'" },
        { "locale english", "expected a locale like en_US" },
        { "timezone ../etc/passwd", "expected a time zone" },
        { "missing method X y", "expected one of class, ivar, got 'method'" },
        { "missing class A B", "unexpected argument 'B'" },
        { "now tomorrow", "expected a time like +10m" },
        { "prefs a=b", "'prefs' takes no options" },
        { "file relative.txt \"x\"", "expected an absolute path on the device" },
        { "file /a/../../etc/passwd \"x\"", "expected an absolute path on the device" },
        { "file /a \"x\\q\"", "unknown escape '\\q'" },
        { "file /a to b", "expected 'from' after the path, got 'to'" },
        { "file /a \"from\" b", "expected 'from' after the path" },
        { "app com.x color=red", "option 'color': expected a colour like #1badf8, got 'red'" },
        { "app \"not an id\"", "expected a bundle identifier" },
        { "weather on", "expected one of off, got 'on'" },
        { "weather off city=X", "'weather off' takes no options" },
        { "weather temp=20.5", "option 'temp': expected a whole number from -100 to 100, got '20.5'" },
        { "weather-hour 9:00 20", "expected an hour like 0900, got '9:00'" },
        { "weather-day Today 5", "missing argument" },
        { "event \"x\"", "missing option start=TIME" },
        { "event x start=+2h end=+1h", "the event ends (end=+1h) before it starts (start=+2h)" },
        { "reminder x due=never", "option 'due': expected a time" },
        { "notification com.x actions=-1", "option 'actions': expected a whole number from 0 to 100" },
        { "notification com.x image=1", "option 'image': expected yes or no" },
        { "notifications", "missing option grouped=yes|no" },
        { "music track=13/12", "option 'track': expected a track position like 3/12, got '13/12'" },
        { "music none playing=yes", "'music none' takes no options" },
        { "music artwork=cover.jpg", "option 'artwork': expected a colour like #1badf8 or a picture file like cover.png" },
        { "music artwork=#12345", "option 'artwork': expected a colour" },
        { "calendar-import", "missing argument" },
        { "calendar-import a.ics calender=Work", "option 'calender' is not one of calendar, did you mean 'calendar'?" },
        { "volume 2", "expected a number from 0 to 1, got '2'" },
        { "alarm today", "missing argument" },
        { "alarm none 7:00", "unexpected argument '7:00'" },
        { "alarm today 25:00", "expected a time of day like 07:30, got '25:00'" },
        { "timer running", "missing argument" },
        { "timer stopped 5m", "unexpected argument '5m'" },
        { "call ringing", "expected one of incoming, active, none" },
        { "facetime ended", "expected one of active, invitation, none" },
        { "longpress #x 1", "expected a duration like 6s, got '1'" },
        { "slide #x half", "expected a number, got 'half'" },
        { "pick UIPickerView 0 -1", "expected a whole number from 0 to 100000, got '-1'" },
        { "display dim", "expected one of on, off, got 'dim'" },
        { "alert hide", "expected one of show, dismiss" },
        { "nc open", "expected one of show, hide" },
        { "search show", "missing argument" },
        { "search show left", "expected one of right, top, got 'left'" },
        { "search hide top", "unexpected argument 'top'" },
        { "shot screen.jpg", "expected a file name ending in .png" },
        { "shot /tmp/x.png", "expected a file name ending in .png" },
        { "dump ../x.json", "expected a file name ending in .json" },
        { "expect #x text hello there", "expected a JSON value or a quoted string, got 'hello there'" },
        { "expect #x", "missing argument" },
        { "expect #x text", "missing argument" },
        { "expect host. 1", "expected a path like host.timer.state" },
        { "expect #x frame..2 1", "expected a property of the view's dump" },
        { "expect #x text \"a\" \"b\"", "expected a JSON value or a quoted string" },
        { "expect-shot", "missing argument: usage is 'expect-shot REF.png [TARGET] [precision=F] [perceptual=F]'" },
        { "expect-shot ../lock.png", "expected a file name ending in .png, relative to the scenario's folder, got '../lock.png'" },
        { "expect-shot /tmp/lock.png", "relative to the scenario's folder" },
        { "expect-shot lock.jpg", "relative to the scenario's folder" },
        { "expect-shot lock.png 187,300", "expected a view (#name or ClassName), whose rectangle of the screen is compared, got '187,300'" },
        { "expect-shot lock.png precision=1.5", "option 'precision': expected a number from 0 to 1, got '1.5'" },
        { "expect-shot lock.png tolerance=0.1", "option 'tolerance' is not one of precision, perceptual" },
    };
    for (auto [line, message] : lines)
        EXPECT_NE(firstDiagnostic(line).find(message), std::string::npos) << line << "\n  got: " << firstDiagnostic(line);
    EXPECT_EQ(firstDiagnostic("expect host.x " + std::string(70, '[') + std::string(70, ']')), "the expected value nests deeper than 64 levels");
}

TEST(ScenarioParser, KeepsTypedFields)
{
    auto battery = single("battery level=0.42 lowpower=yes max=1810").as<BatteryCommand>();
    EXPECT_EQ(battery.level, 0.42);
    EXPECT_FALSE(battery.externalPower);
    EXPECT_EQ(battery.lowPowerMode, true);
    EXPECT_FALSE(battery.currentCapacity);
    EXPECT_EQ(battery.maxCapacity, 1810);

    auto notification = single("notification com.apple.MobileSMS title=\"\" message=\"Hi\\nthere\" date=-5m").as<NotificationCommand>();
    EXPECT_EQ(notification.title, "");
    EXPECT_FALSE(notification.subtitle);
    EXPECT_EQ(notification.message, "Hi\nthere");
    EXPECT_EQ(notification.date->offset, -300);
    EXPECT_FALSE(notification.image);

    auto device = single("device ipad2").as<DeviceCommand>();
    EXPECT_EQ(device.model, DeviceModel::iPad2);
    EXPECT_EQ(device.code, 14);
    EXPECT_EQ(deviceInfo(DeviceModel::iPad2).scale, 1);
    auto bareCode = single("device code=99").as<DeviceCommand>();
    EXPECT_FALSE(bareCode.model);
    EXPECT_EQ(bareCode.code, 99);

    auto event = single("event \"Lunch\" start=2026-11-21T12:30 end=+1h location=\"Café\"").as<EventCommand>();
    EXPECT_EQ(event.start.local, (LocalDateTime { 2026, 11, 21, 12, 30, 0 }));
    EXPECT_TRUE(event.end->isRelative());
    EXPECT_EQ(event.location, "Café");
    EXPECT_FALSE(event.calendar);

    EXPECT_FALSE(single("reminder x due=none").as<ReminderCommand>().due);
    EXPECT_EQ(single("music track=3/12 artwork=#336699").as<MusicCommand>().artwork, (Color { 0x33, 0x66, 0x99 }));
    EXPECT_EQ(single("music artwork=\"art/cover 1.png\"").as<MusicCommand>().artworkFile, "art/cover 1.png");
    auto import = single("calendar-import \"My Calendars/work.ics\" calendar=Work").as<CalendarImportCommand>();
    EXPECT_EQ(import.hostPath, "My Calendars/work.ics");
    EXPECT_EQ(import.calendar, "Work");
    EXPECT_DOUBLE_EQ(single("longpress #x").as<LongPressCommand>().duration, 0.6);
    EXPECT_DOUBLE_EQ(single("longpress #x 2s").as<LongPressCommand>().duration, 2);
    EXPECT_EQ(single("search show top").as<SearchCommand>().edge, SearchCommand::Edge::Top);
    EXPECT_EQ(single("alarm tomorrow 6:45").as<AlarmCommand>().time, (TimeOfDay { 6, 45 }));
    EXPECT_DOUBLE_EQ(single("timer running 1h30m").as<TimerCommand>().remaining, 5400);

    auto wholeScreen = single("expect-shot reference/lock.png").as<ExpectShotCommand>();
    EXPECT_EQ(wholeScreen.reference, "reference/lock.png");
    EXPECT_FALSE(wholeScreen.target);
    EXPECT_EQ(wholeScreen.precision, 1);
    EXPECT_EQ(wholeScreen.perceptual, 1);
    auto oneView = single("expect-shot panel.png perceptual=0.98 #_timeLabel@1").as<ExpectShotCommand>();
    EXPECT_EQ(oneView.target->toString(), "#_timeLabel@1");
    EXPECT_DOUBLE_EQ(oneView.perceptual, 0.98);
}

TEST(ScenarioParser, PrefsValuesTakeTheirTypeFromTheirForm)
{
    EXPECT_EQ(single("prefs A yes").as<PrefsCommand>().value, PrefsValue(true));
    EXPECT_EQ(single("prefs A -3").as<PrefsCommand>().value, PrefsValue(int64_t(-3)));
    EXPECT_EQ(single("prefs A 0.35").as<PrefsCommand>().value, PrefsValue(0.35));
    EXPECT_EQ(single("prefs A hello").as<PrefsCommand>().value, PrefsValue(std::string("hello")));
    EXPECT_EQ(single("prefs A \"12\"").as<PrefsCommand>().value, PrefsValue(std::string("12")));
    EXPECT_EQ(single("prefs A \"yes\"").as<PrefsCommand>().value, PrefsValue(std::string("yes")));
    EXPECT_EQ(single("prefs \"Key With Blanks\" no").as<PrefsCommand>().key, "Key With Blanks");
}

TEST(ScenarioParser, ExpectValuesAreJsonOrOneQuotedString)
{
    auto frame = single("expect KVView@1 frame [0, 0, 375.5, 667] # the panel").as<ExpectPropertyCommand>();
    EXPECT_EQ(frame.target.index, 1);
    EXPECT_EQ(frame.property, (std::vector<std::string> { "frame" }));
    EXPECT_EQ(frame.value, nlohmann::json::parse("[0, 0, 375.5, 667]"));

    auto nested = single("expect #_label runs.0.text \"Mo\\\"n\"").as<ExpectPropertyCommand>();
    EXPECT_EQ(nested.property, (std::vector<std::string> { "runs", "0", "text" }));
    EXPECT_EQ(nested.value, "Mo\"n");

    auto host = single("expect host.alerts.0 {\"title\": \"Alarm # 1\", \"others\": []}").as<ExpectHostCommand>();
    EXPECT_EQ(host.path, (std::vector<std::string> { "alerts", "0" }));
    EXPECT_EQ(host.value["title"], "Alarm # 1");

    EXPECT_EQ(single("expect host.timer.fireTime null").as<ExpectHostCommand>().value, nullptr);
    EXPECT_EQ(single("expect host.media.track \"3\"").as<ExpectHostCommand>().value, "3");
    EXPECT_EQ(single("expect host.media.track 3").as<ExpectHostCommand>().value, 3);
    EXPECT_EQ(single("expect host.log [\"a\\u00e9\"]").as<ExpectHostCommand>().value[0], "a\xc3\xa9");
    EXPECT_EQ(single("expect #x text \"absent\"").kind, CommandKind::ExpectProperty);
}

TEST(ScenarioParser, EnforcesTheOrderOfHostShapeBootAndActing)
{
    auto result = ScenarioParser::parseText("tap #x\nshot a.png\nboot\ndevice iphone5\nnow +1m\nhome\nlocale en_GB\nboot\nvolume x\ntimezone UTC\n", "s");
    ASSERT_EQ(result.diagnostics.size(), 5u);
    EXPECT_EQ(result.diagnostics[0].toString(), "s:1: 'tap' needs the running host: it must come after boot");
    EXPECT_EQ(result.diagnostics[1].line, 2);
    // Known only when `home` acts on the host that `device` came too late for.
    EXPECT_EQ(result.diagnostics[2].toString(), "s:4: 'device' shapes the host and must come before boot (line 3), or before a later boot, which starts a fresh host");
    EXPECT_EQ(result.diagnostics[3].line, 9);
    EXPECT_EQ(result.diagnostics[4].toString(), "s:10: 'timezone' shapes the host, but no boot follows it");
    EXPECT_TRUE(result.commands.empty());

    // Host shape between two boots shapes the second one's fresh host.
    auto twoBoots = ScenarioParser::parseText("boot\nhome\ndevice iphone5\nboot\nhome\n", "s");
    EXPECT_TRUE(twoBoots.ok()) << twoBoots.diagnosticText();

    auto good = ScenarioParser::parseText("now 2026-01-01T00:00\ndevice iphone5\nboot\nnow +1m\nhome\n", "s");
    EXPECT_TRUE(good.ok());
    ASSERT_EQ(good.commands.size(), 5u);
    EXPECT_EQ(good.commands[4].location(), "s:5");
    EXPECT_EQ(good.commands[3].text, "now +1m");
}

TEST(ScenarioParser, CollectsMistakesFromEveryLineUpToALimit)
{
    auto result = ScenarioParser::parseText("boot\nbattery level=2 ac=maybe\n\n# fine\nvolume x\n", "s");
    ASSERT_EQ(result.diagnostics.size(), 3u);
    EXPECT_EQ(result.diagnostics[1].line, 2);
    EXPECT_EQ(result.diagnostics[2].line, 5);

    std::string many;
    for (int i = 0; i < 200; ++i)
        many += "bogus\n";
    auto flood = ScenarioParser::parseText(many, "s");
    EXPECT_EQ(flood.diagnostics.size(), ScenarioParser::maximumDiagnostics + 1);
    EXPECT_EQ(flood.diagnostics.back().message, "too many mistakes; stopping here");
}

TEST(ScenarioParser, ReadsFilesAndReportsUnreadableOnes)
{
    auto missing = ScenarioParser::parseFile("/nonexistent/x.scenario");
    ASSERT_EQ(missing.diagnostics.size(), 1u);
    EXPECT_EQ(missing.diagnostics[0].toString(), "/nonexistent/x.scenario: cannot read the scenario: No such file or directory");
    EXPECT_FALSE(ScenarioParser::parseFile(KV_SCENARIO_DIRECTORY).ok());
}

TEST(ScenarioParser, ExampleScenariosParseCleanlyAndCoverEveryCommand)
{
    std::set<CommandKind> seen;
    size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(KV_SCENARIO_DIRECTORY "/parse")) {
        auto result = ScenarioParser::parseFile(entry.path().string());
        EXPECT_TRUE(result.ok()) << result.diagnosticText();
        for (const Command& command : result.commands) {
            EXPECT_EQ(command.file, entry.path().string());
            seen.insert(command.kind);
        }
        ++files;
    }
    EXPECT_GE(files, 3u);
    for (int kind = 0; kind <= static_cast<int>(CommandKind::Tree); ++kind)
        EXPECT_TRUE(seen.contains(static_cast<CommandKind>(kind))) << commandName(static_cast<CommandKind>(kind)) << " (" << kind << ")";
}

TEST(ScenarioParser, AdvanceUntilTakesWhatExpectTakesAndTreeItsTarget)
{
    auto host = single("advance until host.timer.state 2 max=5s").as<AdvanceUntilCommand>();
    EXPECT_EQ(host.maxSeconds, 5);
    EXPECT_EQ(std::get<ExpectHostCommand>(host.condition).path, (std::vector<std::string> { "timer", "state" }));
    auto property = single("advance until #_headerLabel@1 text \"No notifications\"").as<AdvanceUntilCommand>();
    EXPECT_EQ(property.maxSeconds, 60);
    EXPECT_EQ(std::get<ExpectPropertyCommand>(property.condition).target.index, 1);
    EXPECT_TRUE(std::holds_alternative<ExpectAbsentCommand>(single("advance until KVTimeDisplayView absent").as<AdvanceUntilCommand>().condition));

    auto tree = single("tree #tableView all").as<TreeCommand>();
    EXPECT_TRUE(tree.all);
    EXPECT_EQ(tree.target->name, "tableView");
    EXPECT_FALSE(single("tree").as<TreeCommand>().target);

    EXPECT_EQ(firstDiagnostic("advance 1s max=2s"), "'advance DURATION' takes no options, got 'max=2s'");
    EXPECT_EQ(firstDiagnostic("advance until #x text"), "missing argument: usage is 'advance DURATION or advance until TARGET PROPERTY VALUE|host.PATH VALUE [max=DURATION]'");
    EXPECT_EQ(firstDiagnostic("advance until host.locked true max=401d"), "option 'max': '401d' is longer than the limit of 400 days (400d) that a run may take");
    EXPECT_EQ(firstDiagnostic("advance 400d"), "(none)");
    EXPECT_EQ(firstDiagnostic("tree 10,20"), "tree needs a view, as #name or ClassName, not a point");
    EXPECT_EQ(firstDiagnostic("tree #a #b"), "unexpected '#b': usage is 'tree [TARGET] [all]'");
}
