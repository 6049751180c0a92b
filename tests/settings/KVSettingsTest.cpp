#include "PreferencesFile.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSNumber.h>
#include <Foundation/NSString.h>

#include <climits>
#include <set>

namespace {

// A reader whose every answer raises, as a broken reader on the phone would.
class RaisingPreferenceManager final : public CVPreferenceManager {
    OBJC_CLASS(RaisingPreferenceManager)
public:
    StrongId valueForkey(const std::string& key, const std::string&) const override
    {
        objc::raise("cannot read " + key);
        return nullptr;
    }
};

// A reader that hands back an object no conversion message answers.
class OpaquePreferenceManager final : public CVPreferenceManager {
    OBJC_CLASS(OpaquePreferenceManager)
public:
    StrongId valueForkey(const std::string&, const std::string&) const override { return make<NSObject>(); }
};

// The boolean preferences that default to NO; every other one defaults to YES.
const std::set<std::string> booleansOffByDefault = {
    "militaryTime", "secondsEnabled", "vestrumHomeButtonCloseEnabled", "forecastMilitaryTime", "forecastHomeButtonCloseEnabled",
    "amperoHomeButtonCloseEnabled", "calveraPrivacyModeEnabled", "calveraStrongerColorEnabled", "calveraHomeButtonCloseEnabled",
    "notaraPrivacyModeEnabled", "notaraStrongerColorEnabled", "dismissAllNotificationsButtonEnabled", "notaraHomeButtonCloseEnabled",
    "useCustomApps", "melodraHomeButtonCloseEnabled",
};

#define KV_NAME(key, fallback) #key,
const std::vector<std::string> booleanKeys = { KV_BOOL_SETTINGS(KV_NAME) };
const std::vector<std::string> colorKeys = { KV_COLOR_SETTINGS(KV_NAME) };
#undef KV_NAME

bool isWhite(const UIColor* color) { return color && color->hexString() == "#ffffffff"; }

// Every getter, asked by name through the runtime, gives its default.
void expectDefaults(const KVSettings* settings, const std::string& context)
{
    SCOPED_TRACE(context);
    auto* self = const_cast<KVSettings*>(settings);
    EXPECT_EQ(booleanKeys.size(), 53u);
    for (auto& key : booleanKeys)
        EXPECT_EQ(objc::send<bool>(self, key.c_str()), !booleansOffByDefault.contains(key)) << key;
    for (auto& key : colorKeys)
        EXPECT_TRUE(isWhite(objc::send<RefPtr<UIColor>>(self, key.c_str()).get())) << key;
    EXPECT_EQ(settings->location(), LockScreen);
    EXPECT_EQ(settings->temperatureScale(), 1);
    EXPECT_EQ(settings->calveraDaysFromNow(), 7);
    EXPECT_EQ(settings->appLauncherShape(), 2);
    EXPECT_EQ(settings->calveraMaxEvents(), 99);
    EXPECT_EQ(settings->calveraMaxReminders(), 99);
    EXPECT_EQ(settings->idleTimerDuration(), 60.0);
    EXPECT_EQ(settings->weatherUpdateRate(), 1800.0);
    EXPECT_EQ(NSStringValue(settings->calendarBlacklist().get()), "");
    EXPECT_TRUE(objc::cast<NSString>(settings->calendarBlacklist()));
    EXPECT_EQ(NSStringValue(settings->addAppBundleID().get()), "YES");
    EXPECT_TRUE(isWhite(settings->themeColor().get()));
}

} // namespace

OBJC_IMPLEMENT_CLASS(RaisingPreferenceManager, CVPreferenceManager) { c.method<&RaisingPreferenceManager::valueForkey>("valueForkey:fallback:"); }
OBJC_IMPLEMENT_CLASS(OpaquePreferenceManager, CVPreferenceManager) { c.method<&OpaquePreferenceManager::valueForkey>("valueForkey:fallback:"); }

using KVSettingsTest = PreferencesTest;

TEST_F(KVSettingsTest, EveryKeyTakesItsDefaultWhenTheFileSaysNothing)
{
    expectDefaults(freshSettings().get(), "absent file");
    writeRaw("");
    expectDefaults(freshSettings().get(), "empty file");
    writeXML("<dict/>");
    expectDefaults(freshSettings().get(), "empty dictionary");
    writeXML("<dict><key>unrelated</key><string>x</string></dict>");
    expectDefaults(freshSettings().get(), "unrelated keys");
}

TEST_F(KVSettingsTest, HostileFilesReadAsDefaults)
{
    auto preferences = NSDictionary::create();
    preferences->setObject(NSNumber::numberWithBool(false), "enabled");
    auto data = NSPropertyListSerialization::dataWithPropertyList(preferences.get(), NSPropertyListBinaryFormat_v1_0);
    std::string binary(data->bytes().begin(), data->bytes().end());
    const std::pair<const char*, std::string> files[] = {
        { "truncated binary", binary.substr(0, binary.size() - 5) },
        { "truncated XML", "<?xml version=\"1.0\"?><plist><dict><key>enabled</key><fal" },
        { "not a plist", "enabled = NO;\n" },
        { "root is an array", "<plist><array><false/></array></plist>" },
        { "root is a string", "<plist><string>enabled</string></plist>" },
        { "binary zeros", std::string(64, '\0') },
    };
    for (auto& [name, bytes] : files) {
        writeRaw(bytes);
        expectDefaults(freshSettings().get(), name);
    }
    std::filesystem::remove(NSFileManager::hostPath(KVSettings::preferencesPath));
    std::filesystem::create_directories(NSFileManager::hostPath(KVSettings::preferencesPath));
    expectDefaults(freshSettings().get(), "a folder in the file's place");
}

TEST_F(KVSettingsTest, ReadsValuesFromXMLAndBinaryLists)
{
    writeXML("<dict><key>enabled</key><false/><key>location</key><integer>3</integer><key>militaryTime</key><true/>"
             "<key>idleTimerDuration</key><real>0.5</real><key>timeColor</key><string>#ff0000</string>"
             "<key>calendarBlacklist</key><string>Work,Birthdays</string><key>weatherUpdateRate</key><integer>600</integer></dict>");
    auto fromXML = freshSettings();

    auto preferences = NSDictionary::create();
    preferences->setObject(NSNumber::numberWithBool(false), "enabled");
    preferences->setObject(NSNumber::numberWithInt(3), "location");
    preferences->setObject(NSNumber::numberWithBool(true), "militaryTime");
    preferences->setObject(NSNumber::numberWithDouble(0.5), "idleTimerDuration");
    preferences->setObject(NSString::create("#ff0000"), "timeColor");
    preferences->setObject(NSString::create("Work,Birthdays"), "calendarBlacklist");
    preferences->setObject(NSNumber::numberWithInt(600), "weatherUpdateRate");
    writePreferences(preferences.get());
    auto fromBinary = freshSettings();

    for (auto& settings : { fromXML, fromBinary }) {
        EXPECT_FALSE(settings->enabled());
        EXPECT_EQ(settings->location(), SearchPageRight);
        EXPECT_TRUE(settings->militaryTime());
        EXPECT_EQ(settings->idleTimerDuration(), 0.5);
        EXPECT_EQ(settings->weatherUpdateRate(), 600.0);
        EXPECT_EQ(settings->timeColor()->hexString(), "#ff0000ff");
        EXPECT_EQ(settings->alarmTimerColor()->hexString(), "#ffffffff");
        EXPECT_EQ(NSStringValue(settings->calendarBlacklist().get()), "Work,Birthdays");
        EXPECT_TRUE(settings->blurEnabled());
    }
}

TEST_F(KVSettingsTest, ConvertsValuesOfTheWrongTypeAsFoundationWould)
{
    auto preferences = NSDictionary::create();
    auto set = [&](const char* key, StrongId value) { preferences->setObject(std::move(value), key); };
    set("enabled", NSString::create("abc"));
    set("blurEnabled", NSString::create("NO"));
    set("militaryTime", NSString::create("YES"));
    set("secondsEnabled", NSNumber::numberWithInt(2));
    set("showAlarmTimer", NSNumber::numberWithDouble(0.0));
    set("location", NSString::create("4"));
    set("temperatureScale", NSNumber::numberWithDouble(2.9));
    set("calveraDaysFromNow", NSNumber::numberWithDouble(1e300));
    set("appLauncherShape", NSNumber::numberWithLongLong(99999999999));
    set("idleTimerDuration", NSString::create("abc"));
    set("weatherUpdateRate", NSString::create("0.1"));
    set("weatherColor", NSNumber::numberWithInt(0xff0000));
    set("addAppBundleID", NSNumber::numberWithBool(false));
    writePreferences(preferences.get());
    auto settings = freshSettings();
    EXPECT_FALSE(settings->enabled());
    EXPECT_FALSE(settings->blurEnabled());
    EXPECT_TRUE(settings->militaryTime());
    EXPECT_TRUE(settings->secondsEnabled());
    EXPECT_FALSE(settings->showAlarmTimer());
    EXPECT_EQ(settings->location(), SearchPageTop);
    EXPECT_EQ(settings->temperatureScale(), 2);
    EXPECT_EQ(settings->calveraDaysFromNow(), INT_MAX);
    EXPECT_EQ(settings->appLauncherShape(), static_cast<int>(99999999999LL));
    EXPECT_EQ(settings->idleTimerDuration(), 0.0);
    // Intervals pass through single precision, as floatValue does.
    EXPECT_EQ(settings->weatherUpdateRate(), static_cast<double>(0.1f));
    EXPECT_TRUE(isWhite(settings->weatherColor().get()));
    EXPECT_TRUE(objc::cast<NSNumber>(settings->addAppBundleID()));
}

TEST_F(KVSettingsTest, ValuesOfTypesThePaneNeverWritesTakeTheDefault)
{
    auto preferences = NSDictionary::create();
    preferences->setObject(NSArray::create({ NSNumber::numberWithBool(false) }), "enabled");
    preferences->setObject(NSDictionary::create(), "location");
    preferences->setObject(NSDate::dateWithTimeIntervalSinceReferenceDate(0), "timeColor");
    preferences->setObject(NSData::dataWithBytes("\x01", 1), "calveraMaxEvents");
    preferences->setObject(NSArray::create({ NSString::create("Work") }), "calendarBlacklist");
    writePreferences(preferences.get());
    auto settings = freshSettings();
    EXPECT_TRUE(settings->enabled());
    EXPECT_EQ(settings->location(), LockScreen);
    EXPECT_TRUE(isWhite(settings->timeColor().get()));
    EXPECT_EQ(settings->calveraMaxEvents(), 99);
    EXPECT_EQ(NSStringValue(settings->calendarBlacklist().get()), "");
}

TEST_F(KVSettingsTest, LimitsAreClampedAtZeroAndGuardedAgainstRaisingReaders)
{
    writeValue("calveraMaxEvents", NSNumber::numberWithInt(-5));
    EXPECT_EQ(freshSettings()->calveraMaxEvents(), 0);
    writeValue("calveraMaxEvents", NSNumber::numberWithInt(250));
    EXPECT_EQ(freshSettings()->calveraMaxEvents(), 250);
    writeValue("calveraMaxReminders", NSString::create("-3"));
    EXPECT_EQ(freshSettings()->calveraMaxReminders(), 0);
    writeValue("calveraMaxReminders", NSString::create("abc"));
    EXPECT_EQ(freshSettings()->calveraMaxReminders(), 0);
    // Other integers pass negative values through.
    writeValue("calveraDaysFromNow", NSNumber::numberWithInt(-5));
    EXPECT_EQ(freshSettings()->calveraDaysFromNow(), -5);

    std::vector<std::string> log;
    objc::Runtime::shared().setLogSink([&](const std::string& line) { log.push_back(line); });
    auto settings = freshSettings();
    settings->setPrefs(make<RaisingPreferenceManager>());
    EXPECT_EQ(settings->calveraMaxEvents(), 99);
    EXPECT_EQ(settings->calveraMaxReminders(), 99);
    EXPECT_TRUE(log.empty());
    // Elsewhere the failure reaches the runtime, which reports it and answers zero.
    EXPECT_FALSE(settings->enabled());
    EXPECT_EQ(log.size(), 1u);

    log.clear();
    settings->setPrefs(make<OpaquePreferenceManager>());
    EXPECT_EQ(settings->calveraMaxReminders(), 99);
    EXPECT_EQ(settings->location(), 0);
    EXPECT_EQ(log.size(), 1u);
    objc::Runtime::shared().setLogSink(nullptr);
}

TEST_F(KVSettingsTest, ThemeColorIsWhiteWhateverTheFileSays)
{
    writeValue("themeColor", NSString::create("#000000"));
    auto settings = freshSettings();
    EXPECT_TRUE(isWhite(settings->themeColor().get()));
    settings->setPrefs(nullptr);
    EXPECT_TRUE(isWhite(settings->themeColor().get()));
}

TEST_F(KVSettingsTest, ReloadReplacesTheReaderAndEarlierAnswersKeepTheirValues)
{
    writeValue("timeColor", NSString::create("#ff0000"));
    auto settings = freshSettings();
    auto firstReader = settings->prefs();
    auto red = settings->timeColor();
    EXPECT_EQ(red->hexString(), "#ff0000ff");

    writeValue("timeColor", NSString::create("#0000ff"));
    EXPECT_EQ(settings->timeColor()->hexString(), "#ff0000ff") << "the file is read only on reload";
    objc::send(settings, "reload");
    EXPECT_NE(settings->prefs(), firstReader);
    EXPECT_EQ(settings->timeColor()->hexString(), "#0000ffff");
    EXPECT_EQ(red->hexString(), "#ff0000ff");

    auto secondReader = settings->prefs();
    NSFileManager::defaultManager()->removeItemAtPath(KVSettings::preferencesPath);
    settings->reload();
    EXPECT_NE(settings->prefs(), secondReader);
    expectDefaults(settings.get(), "after the file was removed");
}

TEST_F(KVSettingsTest, SharedInstanceIsMadeOnceAndReachableByName)
{
    writeValue("location", NSNumber::numberWithInt(NotificationCenter));
    auto* shared = KVSettings::sharedInstance();
    ASSERT_TRUE(shared);
    EXPECT_EQ(shared->location(), NotificationCenter);
    EXPECT_EQ(KVSettings::sharedInstance(), shared);
    auto* byName = objc::objc_getClass("KVSettings");
    ASSERT_TRUE(byName);
    EXPECT_EQ(objc::send<NSObject*>(byName, "sharedInstance"), shared);
    EXPECT_EQ(objc::send<int>(shared, "location"), NotificationCenter);
}
