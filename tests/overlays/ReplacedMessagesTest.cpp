// The extension's own classes are reached through the runtime, as on the
// phone: another extension that replaces one of the panel's, the settings' or
// an overlay's methods with MSHookMessageEx sees every call the hooks, the
// timers and the taps make, and what its replacement answers is used.

#include "_KVContainerView/KVView.h"
#include "clock/KVTimeDisplayView.h"
#include "host/HostHooks.h"
#include "settings/KVSettings.h"

#include <Foundation/NSRunLoop.h>
#include <UIKit/UILabel.h>
#include <host/SimulatedHost.h>
#include <host/SpringBoard/SBBacklightController.h>

#include "support/FixedPreferences.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

using objc::IMP;
using objc::SEL;

namespace {

// Calls seen by the replacements, by selector.
std::map<std::string, int> s_calls;
bool s_disabledByReplacement;
bool s_launcherOffByReplacement;
IMP s_lanceraEnabled;
IMP s_sharedPanel, s_addVestrum, s_update, s_updateForecastLabels, s_appLauncherView, s_timeFromDate, s_enabled, s_show, s_tableViewController;

NSObject* countSharedPanel(NSObject* self, SEL cmd)
{
    ++s_calls["sharedInstance"];
    return objc::callOriginal<NSObject*>(s_sharedPanel, self, cmd);
}

template<IMP* Original, const char* Name>
void countVoid(NSObject* self, SEL cmd)
{
    ++s_calls[Name];
    objc::callOriginal(*Original, self, cmd);
}

NSObject* countAppLauncherView(NSObject* self, SEL cmd)
{
    ++s_calls["appLauncherView"];
    return objc::callOriginal<NSObject*>(s_appLauncherView, self, cmd);
}

NSObject* countTableViewController(NSObject* self, SEL cmd)
{
    ++s_calls["tableViewController"];
    return objc::callOriginal<NSObject*>(s_tableViewController, self, cmd);
}

// Another extension's clock text.
std::string replacedTime(NSObject*, SEL, NSObject*)
{
    ++s_calls["timeFromNSDate:"];
    return "NOON";
}

bool replacedEnabled(NSObject* self, SEL cmd)
{
    return s_disabledByReplacement ? false : objc::callOriginal<bool>(s_enabled, self, cmd);
}

bool replacedLanceraEnabled(NSObject* self, SEL cmd)
{
    return s_launcherOffByReplacement ? false : objc::callOriginal<bool>(s_lanceraEnabled, self, cmd);
}

constexpr char addVestrumName[] = "addVestrum";
constexpr char updateName[] = "update";
constexpr char updateForecastLabelsName[] = "updateForecastLabels";
constexpr char showName[] = "show";

void installReplacements()
{
    objc::Class* panel = objc::objc_getClass("KVView");
    MSHookMessageEx(panel->metaclass(), objc::sel_registerName("sharedInstance"), &countSharedPanel, &s_sharedPanel);
    MSHookMessageEx(panel, objc::sel_registerName("addVestrum"), &countVoid<&s_addVestrum, addVestrumName>, &s_addVestrum);
    MSHookMessageEx(panel, objc::sel_registerName("update"), &countVoid<&s_update, updateName>, &s_update);
    MSHookMessageEx(panel, objc::sel_registerName("updateForecastLabels"), &countVoid<&s_updateForecastLabels, updateForecastLabelsName>, &s_updateForecastLabels);
    MSHookMessageEx(panel, objc::sel_registerName("appLauncherView"), &countAppLauncherView, &s_appLauncherView);
    MSHookMessageEx(panel, objc::sel_registerName("tableViewController"), &countTableViewController, &s_tableViewController);
    MSHookMessageEx(panel, objc::sel_registerName("timeFromNSDate:"), &replacedTime, &s_timeFromDate);
    MSHookMessageEx(objc::objc_getClass("KVSettings"), objc::sel_registerName("enabled"), &replacedEnabled, &s_enabled);
    MSHookMessageEx(objc::objc_getClass("KVSettings"), objc::sel_registerName("lanceraEnabled"), &replacedLanceraEnabled, &s_lanceraEnabled);
    MSHookMessageEx(objc::objc_getClass("KVTimeDisplayView"), objc::sel_registerName("show"), &countVoid<&s_show, showName>, &s_show);
}

// A phone with the lock screen hooks and the replacements of another
// extension loaded after them, booted at the lock screen.
class ReplacedMessages : public testing::Test {
protected:
    void SetUp() override
    {
        m_preferences = make<FixedPreferences>();
        KVSettings::sharedInstance()->setPrefs(m_preferences);
        // Hooks stay for the process; ctest runs each test in its own.
        static bool installed = (installLockScreenHooks(), installReplacements(), true);
        (void)installed;
        m_host = std::make_unique<SimulatedHost>();
        m_host->boot();
    }
    void TearDown() override { m_host.reset(); }

    static double dimInterval()
    {
        return objc::send<double>(SBBacklightController::sharedInstance(), OBJC_SEL("defaultLockScreenDimInterval"));
    }

    RefPtr<FixedPreferences> m_preferences;
    std::unique_ptr<SimulatedHost> m_host;
};

} // namespace

TEST_F(ReplacedMessages, SeeThePanelsConstructionTheHooksCallsAndTheTimersCalls)
{
    // The lock screen hook asked for the panel and its launcher, and sent
    // the panel updateForecastLabels; the panel built itself by messages.
    EXPECT_GE(s_calls["sharedInstance"], 1);
    EXPECT_EQ(s_calls["addVestrum"], 1);
    EXPECT_GE(s_calls["updateForecastLabels"], 1);
    EXPECT_GE(s_calls["appLauncherView"], 1);
    EXPECT_GE(s_calls["tableViewController"], 1);

    // The one-second timer writes the clock with the replacement's text, and
    // the first update five seconds in is a message too.
    int updatesBefore = s_calls["update"];
    NSRunLoop::mainRunLoop()->advance(6);
    EXPECT_GT(s_calls["update"], updatesBefore);
    EXPECT_GE(s_calls["timeFromNSDate:"], 5);
    auto* clock = objc::cast<UILabel>(objc::object_getIvar(KVView::sharedInstance(), "_timeDateLabel"));
    ASSERT_TRUE(clock);
    EXPECT_EQ(clock->text().rfind("NOON\n", 0), 0u) << clock->text();
}

TEST_F(ReplacedMessages, SettingsAnsweredByAReplacementDecideWhatTheHooksDo)
{
    // The extension's default of 60 seconds, until a replacement of
    // `enabled` answers NO: then the host's own interval.
    EXPECT_DOUBLE_EQ(dimInterval(), 60);
    s_disabledByReplacement = true;
    EXPECT_DOUBLE_EQ(dimInterval(), SBBacklightController::sharedInstance()->defaultLockScreenDimInterval());
    s_disabledByReplacement = false;

    // The panel reads its settings by messages too: the launcher goes at
    // the next second's refresh.
    auto* launcher = objc::cast<UIView>(objc::object_getIvar(KVView::sharedInstance(), "_appLauncherView"));
    ASSERT_TRUE(launcher);
    EXPECT_FALSE(launcher->isHidden());
    s_launcherOffByReplacement = true;
    NSRunLoop::mainRunLoop()->advance(1);
    EXPECT_TRUE(launcher->isHidden());
    s_launcherOffByReplacement = false;
}

TEST_F(ReplacedMessages, SeeTheOverlayOpenedByATap)
{
    m_preferences->values["vestrumOverlayEnabled"] = "YES";
    objc::send(KVView::sharedInstance(), OBJC_SEL("timeContainerSingleTapRecognizer:"), static_cast<NSObject*>(nullptr));
    EXPECT_EQ(s_calls["show"], 1);
}
