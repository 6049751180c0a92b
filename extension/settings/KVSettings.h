#pragma once

#include <CorvLib/CVPreferenceManager.h>
#include <UIKit/UIColor.h>
#include <objc/objc.h>

#include <string>

// Where the panel is shown: the value of the "location" preference.
// NotificationCenter and the two search-page placements work on iOS 9 only.
enum KVPanelLocation : int {
    LockScreen = 1,
    NotificationCenter = 2,
    SearchPageRight = 3,
    SearchPageTop = 4,
};

// Every preference, as X(key, fallback), grouped by how its value is
// converted. The key is also the getter's name; the fallback is the string
// handed to the reader, which answers it for a missing key.
#define KV_BOOL_SETTINGS(X)                      \
    X(enabled, "YES")                            \
    X(shouldShowStatusBar, "YES")                \
    X(blurEnabled, "YES")                        \
    X(vestrumOverlayEnabled, "YES")              \
    X(militaryTime, "NO")                        \
    X(secondsEnabled, "NO")                      \
    X(showAlarmTimer, "YES")                     \
    X(vestrumPauseResumeTimerEnabled, "YES")     \
    X(vestrumCancelTimerEnabled, "YES")          \
    X(vestrumTimerHourAndSeconds, "YES")         \
    X(vestrumResetLockScreenDim, "YES")          \
    X(vestrumHomeButtonCloseEnabled, "NO")       \
    X(forecastOverlayEnabled, "YES")             \
    X(forecastMilitaryTime, "NO")                \
    X(forecastResetLockScreenDim, "YES")         \
    X(forecastHomeButtonCloseEnabled, "NO")      \
    X(forecastErrorMessageEnabled, "YES")        \
    X(amperoEnabled, "YES")                      \
    X(amperoOverlayEnabled, "YES")               \
    X(amperoResetLockScreenDim, "YES")           \
    X(amperoHomeButtonCloseEnabled, "NO")        \
    X(calveraEnabled, "YES")                     \
    X(calveraOverlayEnabled, "YES")              \
    X(calveraPrivacyModeEnabled, "NO")           \
    X(calveraCalendarColorsEnabled, "YES")       \
    X(calveraStrongerColorEnabled, "NO")         \
    X(autoColorEventSectionEnabled, "YES")       \
    X(calveraCollapseEnabled, "YES")             \
    X(nothingScheduledLabelEnabled, "YES")       \
    X(somethingScheduledLabelEnabled, "YES")     \
    X(calveraResetLockScreenDim, "YES")          \
    X(calveraHomeButtonCloseEnabled, "NO")       \
    X(notaraEnabled, "YES")                      \
    X(notaraOverlayEnabled, "YES")               \
    X(notaraLaunchEnabled, "YES")                \
    X(notaraPrivacyModeEnabled, "NO")            \
    X(notaraStrongerColorEnabled, "NO")          \
    X(autoColorNotificationSectionEnabled, "YES") \
    X(notaraCollapseEnabled, "YES")              \
    X(dismissAllNotificationsButtonEnabled, "NO") \
    X(noNotificationsLabelEnabled, "YES")        \
    X(hasNotificationsLabelEnabled, "YES")       \
    X(notaraResetLockScreenDim, "YES")           \
    X(notaraHomeButtonCloseEnabled, "NO")        \
    X(lanceraEnabled, "YES")                     \
    X(useCustomApps, "NO")                       \
    X(melodraEnabled, "YES")                     \
    X(melodraOverlayEnabled, "YES")              \
    X(melodraQuickGesturesEnabled, "YES")        \
    X(autoColorMelodraSectionEnabled, "YES")     \
    X(autoColorMelodraOverlayEnabled, "YES")     \
    X(melodraResetLockScreenDim, "YES")          \
    X(melodraHomeButtonCloseEnabled, "NO")

// Some integer defaults are numbers written out in decimal.
#define KV_INT_SETTINGS(X)                 \
    X(location, std::to_string(LockScreen)) \
    X(temperatureScale, std::to_string(1)) \
    X(calveraDaysFromNow, "7")             \
    X(appLauncherShape, std::to_string(2))

// Read inside an exception guard (99 if the read raises), negatives clamped to 0.
#define KV_LIMIT_SETTINGS(X)    \
    X(calveraMaxEvents, "99") \
    X(calveraMaxReminders, "99")

// Seconds, read with floatValue and widened.
#define KV_INTERVAL_SETTINGS(X)     \
    X(idleTimerDuration, "60.0") \
    X(weatherUpdateRate, "1800")

// "#rrggbb" strings made into colours by CVColorFactory.
#define KV_COLOR_SETTINGS(X)          \
    X(timeColor, "#ffffff")        \
    X(alarmTimerColor, "#ffffff")  \
    X(weatherColor, "#ffffff")     \
    X(amperoThemeColor, "#ffffff")

// Answered as stored, unconverted.
#define KV_OBJECT_SETTINGS(X)    \
    X(calendarBlacklist, "") \
    X(addAppBundleID, "YES")

// The one place the extension reads its preferences from: the property list
// that the settings pane writes, read whole when the object is made and
// again on every `reload` (the hooks call it when the host builds or
// presents the view that holds the panel; there is no file watcher). Main
// thread only.
class KVSettings final : public NSObject {
    OBJC_CLASS(KVSettings)
public:
    static constexpr const char* preferencesPath = "/private/var/mobile/Library/Preferences/com.Corvane.Kavelin.plist";

    KVSettings() = default;
    // The one shared instance, made (and read) on first use.
    static KVSettings* sharedInstance();
    // Reads the preferences; answers self.
    RefPtr<KVSettings> init();
    // Replaces the reader with a fresh one on the preferences file.
    void reload();

    RefPtr<CVPreferenceManager> prefs() const { return m_prefs; }
    void setPrefs(RefPtr<CVPreferenceManager> prefs) { m_prefs = std::move(prefs); }

    // Every getter is a message named after its key, and so is themeColor
    // (not a preference: always opaque white). The C++ getter sends it, so
    // that another extension's replacement of a getter is seen by every
    // reader; its implementation, the matching ...Value method, reads and
    // converts what the file holds. Call the getters, not those.
#define KV_DECLARE_GETTER(type, key)                                                                 \
    type key() const { return objc::send<type>(const_cast<KVSettings*>(this), OBJC_SEL(#key)); } \
    type key##Value() const;
    KV_DECLARE_GETTER(RefPtr<UIColor>, themeColor)
#define KV_DECLARE_BOOL(key, fallback) KV_DECLARE_GETTER(bool, key)
#define KV_DECLARE_INT(key, fallback) KV_DECLARE_GETTER(int, key)
#define KV_DECLARE_INTERVAL(key, fallback) KV_DECLARE_GETTER(double, key)
#define KV_DECLARE_COLOR(key, fallback) KV_DECLARE_GETTER(RefPtr<UIColor>, key)
#define KV_DECLARE_OBJECT(key, fallback) KV_DECLARE_GETTER(StrongId, key)
    KV_BOOL_SETTINGS(KV_DECLARE_BOOL)
    KV_INT_SETTINGS(KV_DECLARE_INT)
    KV_LIMIT_SETTINGS(KV_DECLARE_INT)
    KV_INTERVAL_SETTINGS(KV_DECLARE_INTERVAL)
    KV_COLOR_SETTINGS(KV_DECLARE_COLOR)
    KV_OBJECT_SETTINGS(KV_DECLARE_OBJECT)
#undef KV_DECLARE_BOOL
#undef KV_DECLARE_INT
#undef KV_DECLARE_INTERVAL
#undef KV_DECLARE_COLOR
#undef KV_DECLARE_OBJECT
#undef KV_DECLARE_GETTER

private:
    StrongId valueForKey(const char* key, const std::string& fallback) const;
    int limitForKey(const char* key, const std::string& fallback) const;

    RefPtr<CVPreferenceManager> m_prefs;
};
