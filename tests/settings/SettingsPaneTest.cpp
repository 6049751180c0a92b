#include "PreferencesFile.h"

#include <CorvLib/CVColorFactory.h>
#include <Foundation/NSString.h>
#include <settings/SettingsPane.h>

#include <fstream>
#include <set>

using sim::PreferenceSpecifier;
using sim::PrefsValue;
using sim::SettingsPane;
using Cell = PreferenceSpecifier::Cell;

namespace {

SettingsPane shippedPane()
{
    std::string error;
    auto pane = SettingsPane::load(KV_SETTINGS_PANE, error);
    EXPECT_TRUE(pane) << error;
    return pane.value_or(SettingsPane {});
}

// What the store would make of the pane's default, had the pane written it.
std::string defaultAsString(const PrefsValue& value)
{
    if (auto* text = std::get_if<std::string>(&value))
        return *text;
    if (auto* integer = std::get_if<int64_t>(&value))
        return std::to_string(*integer);
    if (auto* real = std::get_if<double>(&value))
        return std::to_string(*real);
    return std::get<bool>(value) ? "YES" : "NO";
}

} // namespace

using SettingsPaneTest = PreferencesTest;

// The pane is the one list of keys: every getter of the store has a specifier
// of the right kind whose default is what the store answers with no file, and
// the pane has no key that the store does not read.
TEST_F(SettingsPaneTest, PaneAndStoreHaveTheSameKeysAndDefaults)
{
    SettingsPane pane = shippedPane();
    auto settings = freshSettings();
    auto* self = settings.get();
    std::set<std::string> storeKeys;
    auto specifierFor = [&](const char* key, std::set<Cell> cells) -> const PreferenceSpecifier* {
        storeKeys.insert(key);
        const PreferenceSpecifier* specifier = pane.specifierForKey(key);
        EXPECT_TRUE(specifier) << key << " is not in the pane";
        if (specifier) {
            EXPECT_TRUE(cells.contains(specifier->cell)) << key << " has a cell that cannot store what the store reads";
        }
        return specifier;
    };
#define KV_CHECK_BOOL(key, fallback)                                    \
    if (auto* s = specifierFor(#key, { Cell::Switch })) {               \
        EXPECT_EQ(std::get<bool>(s->defaultValue), self->key()) << #key; \
    }
#define KV_CHECK_INT(key, fallback)                                                           \
    if (auto* s = specifierFor(#key, { Cell::LinkList, Cell::Slider, Cell::EditText })) {     \
        EXPECT_EQ(NSString::intValue(defaultAsString(s->defaultValue)), self->key()) << #key; \
    }
#define KV_CHECK_INTERVAL(key, fallback)                                                                 \
    if (auto* s = specifierFor(#key, { Cell::Slider, Cell::EditText })) {                                \
        double stored = static_cast<float>(NSString::doubleValue(defaultAsString(s->defaultValue)));     \
        EXPECT_EQ(stored, self->key()) << #key;                                                          \
    }
#define KV_CHECK_COLOR(key, fallback)                                                             \
    if (auto* s = specifierFor(#key, { Cell::EditText })) {                                        \
        EXPECT_TRUE(s->isColor()) << #key;                                                         \
        auto color = CVColorFactory::colorFromHexString(defaultAsString(s->defaultValue));         \
        EXPECT_EQ(color->hexString(), self->key()->hexString()) << #key;                           \
    }
#define KV_CHECK_OBJECT(key, fallback)                                                     \
    if (auto* s = specifierFor(#key, { Cell::EditText })) {                                \
        EXPECT_EQ(defaultAsString(s->defaultValue), NSStringValue(self->key().get())) << #key; \
    }
    KV_BOOL_SETTINGS(KV_CHECK_BOOL)
    KV_INT_SETTINGS(KV_CHECK_INT)
    KV_LIMIT_SETTINGS(KV_CHECK_INT)
    KV_INTERVAL_SETTINGS(KV_CHECK_INTERVAL)
    KV_COLOR_SETTINGS(KV_CHECK_COLOR)
    KV_OBJECT_SETTINGS(KV_CHECK_OBJECT)
#undef KV_CHECK_BOOL
#undef KV_CHECK_INT
#undef KV_CHECK_INTERVAL
#undef KV_CHECK_COLOR
#undef KV_CHECK_OBJECT

    std::set<std::string> paneKeys;
    for (const PreferenceSpecifier& specifier : pane.specifiers()) {
        EXPECT_TRUE(paneKeys.insert(specifier.key).second) << specifier.key << " is in the pane twice";
        EXPECT_TRUE(storeKeys.contains(specifier.key)) << specifier.key << " is read by nothing";
        EXPECT_FALSE(specifier.group.empty()) << specifier.key << " is in no group";
    }
    // The location list offers exactly the placements there are.
    const PreferenceSpecifier* location = pane.specifierForKey("location");
    ASSERT_TRUE(location);
    EXPECT_EQ(location->validValues, (std::vector<int64_t> { LockScreen, NotificationCenter, SearchPageRight, SearchPageTop }));
}

TEST_F(SettingsPaneTest, WarnsAboutKeysAndValuesThePaneCannotWrite)
{
    SettingsPane pane = shippedPane();
    const std::pair<const char*, PrefsValue> accepted[] = {
        { "enabled", false }, { "location", int64_t(4) }, { "temperatureScale", int64_t(2) }, { "timeColor", std::string("#FF8000") },
        { "idleTimerDuration", 0.5 }, { "idleTimerDuration", int64_t(300) }, { "weatherUpdateRate", int64_t(600) },
        { "weatherUpdateRate", std::string("90.5") }, { "calendarBlacklist", std::string("Work, Birthdays") }, { "calendarBlacklist", std::string() },
        { "calveraMaxEvents", std::string("250") },
    };
    for (auto& [key, value] : accepted)
        EXPECT_EQ(pane.checkPreference(key, value), std::nullopt) << key;

    const std::tuple<const char*, PrefsValue, std::string> refused[] = {
        { "location", int64_t(7), "preference 'location' takes 1 (Lock screen), 2 (Notification centre), 3 (Search page (right)) or 4 (Search page (top)), got 7" },
        { "location", std::string("2"), "got \"2\"" },
        { "timeColor", std::string("red"), "preference 'timeColor' takes a colour written #rrggbb, got \"red\"" },
        { "timeColor", std::string("#fff"), "#rrggbb" },
        { "enabled", std::string("YES"), "preference 'enabled' takes yes or no, got \"YES\"" },
        { "enabled", int64_t(1), "yes or no" },
        { "idleTimerDuration", 900.0, "takes a number from 0 to 300, got 900" },
        { "calveraDaysFromNow", int64_t(0), "a number from 1 to" },
        { "weatherUpdateRate", std::string("soon"), "takes a number, got \"soon\"" },
        { "calendarBlacklist", int64_t(5), "takes text (quote it), got 5" },
        { "calveraDayFromNow", int64_t(3), "the extension has no preference 'calveraDayFromNow', did you mean 'calveraDaysFromNow'?" },
        { "Enabled", true, "did you mean 'enabled'?" },
        { "ClockStyle", int64_t(2), "no preference 'ClockStyle' (docs/preferences.md" },
    };
    for (auto& [key, value, message] : refused) {
        auto warning = pane.checkPreference(key, value);
        ASSERT_TRUE(warning) << key;
        EXPECT_NE(warning->find(message), std::string::npos) << *warning;
    }
}

TEST_F(SettingsPaneTest, BrokenPanesAreReportedWithTheFileName)
{
    auto path = m_root.folder() / "Root.plist";
    auto loadText = [&](const std::string& text) {
        std::ofstream(path, std::ios::trunc) << text;
        std::string error;
        EXPECT_FALSE(SettingsPane::load(path, error));
        return error;
    };
    auto wrapped = [](const std::string& items) {
        return "<plist version=\"1.0\"><dict><key>items</key><array>" + items + "</array></dict></plist>";
    };
    EXPECT_NE(loadText("not a plist").find(path.string() + ": not a settings pane"), std::string::npos);
    EXPECT_NE(loadText(wrapped("<dict><key>cell</key><string>PSSwitchCell</string><key>key</key><string>enabled</string>"
                               "<key>label</key><string>Enabled</string></dict>"))
                  .find("needs a key, a label and a default (key 'enabled')"),
        std::string::npos);
    EXPECT_NE(loadText(wrapped("<dict><key>cell</key><string>PSLinkListCell</string><key>key</key><string>location</string>"
                               "<key>label</key><string>Where</string><key>default</key><integer>1</integer>"
                               "<key>validValues</key><array><integer>1</integer></array><key>validTitles</key><array/></dict>"))
                  .find("as many validTitles as validValues"),
        std::string::npos);
    EXPECT_NE(loadText(wrapped("<dict><key>cell</key><string>PSColorCell</string><key>key</key><string>timeColor</string></dict>"))
                  .find("a cell the pane does not know ('PSColorCell')"),
        std::string::npos);
    std::string error;
    EXPECT_FALSE(SettingsPane::load(m_root.folder() / "missing.plist", error));
    EXPECT_NE(error.find("cannot read the settings pane"), std::string::npos);
}
