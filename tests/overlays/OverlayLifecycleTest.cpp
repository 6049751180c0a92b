// The lifecycle every overlay shares (one instance, in the root window,
// shown and hidden with a fade, the dim timer reset per module) and the one
// routine that closes open overlays.

#include "KVAmpero/KVAmperoDisplayView.h"
#include "KVCalveraNotara/KVClearAllNotificationsDisplayView.h"
#include "KVCalveraNotara/KVSingleEventDisplayView.h"
#include "KVCalveraNotara/KVSingleNotificationDisplayView.h"
#include "KVMelodra/KVMusicDisplayView.h"
#include "_KVContainerView/KVView.h"
#include "clock/KVTimeDisplayView.h"
#include "settings/KVSettings.h"
#include "weather/KVWeatherDisplayView.h"

#include <CorvLib/CVPreferenceManager.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/NSString.h>
#include <UIKit/UIApplication.h>
#include <UIKit/UIControl.h>
#include <UIKit/UIVisualEffectView.h>
#include <UIKit/UIWindow.h>
#include <host/FrontBoard/FBRootWindow.h>
#include <host/SimulatedHost.h>
#include <host/SpringBoard/SBBacklightController.h>

#include "support/FixedPreferences.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>

namespace {

class Overlays : public testing::Test {
protected:
    void SetUp() override
    {
        m_preferences = make<FixedPreferences>();
        KVSettings::sharedInstance()->setPrefs(m_preferences);
        m_host = std::make_unique<SimulatedHost>();
        m_host->boot();
    }
    void TearDown() override { m_host.reset(); }

    void set(const std::string& key, const std::string& value) { m_preferences->values[key] = value; }
    static void advance(double seconds) { NSRunLoop::mainRunLoop()->advance(seconds); }
    static int idleTimerResets() { return SBBacklightController::sharedInstance()->idleTimerResets(); }
    SimulatedHost& host() { return *m_host; }

    // The five overlays built on CVDisplayView, each with its module's
    // ResetLockScreenDim key (the two notification overlays share one).
    static std::vector<std::pair<CVDisplayView*, std::string>> displayOverlays()
    {
        return {
            { KVAmperoDisplayView::sharedInstance(), "amperoResetLockScreenDim" },
            { KVClearAllNotificationsDisplayView::sharedInstance(), "notaraResetLockScreenDim" },
            { KVSingleEventDisplayView::sharedInstance(), "calveraResetLockScreenDim" },
            { KVSingleNotificationDisplayView::sharedInstance(), "notaraResetLockScreenDim" },
            { KVMusicDisplayView::sharedInstance(), "melodraResetLockScreenDim" },
        };
    }

private:
    RefPtr<FixedPreferences> m_preferences;
    std::unique_ptr<SimulatedHost> m_host;
};

} // namespace

TEST_F(Overlays, DisplayOverlaysWaitHiddenInTheRootWindowAndComeAndGoWithAFade)
{
    for (auto [overlay, dimKey] : displayOverlays()) {
        SCOPED_TRACE(overlay->className());
        EXPECT_EQ(overlay->superview(), host().rootWindow());
        EXPECT_TRUE(overlay->isHidden());
        EXPECT_FALSE(overlay->isActive());
        EXPECT_EQ(overlay->displayContainerView()->superview(), overlay);

        int resets = idleTimerResets();
        objc::send(overlay, OBJC_SEL("show"));
        EXPECT_TRUE(overlay->isActive());
        EXPECT_FALSE(overlay->isHidden());
        advance(1);
        EXPECT_EQ(overlay->alpha(), 1);
        EXPECT_EQ(overlay->superview()->subviews().back().get(), overlay);
        EXPECT_EQ(idleTimerResets(), resets + 1);

        objc::send(overlay, OBJC_SEL("hide"));
        EXPECT_FALSE(overlay->isActive());
        EXPECT_FALSE(overlay->isHidden());
        advance(1);
        EXPECT_TRUE(overlay->isHidden());
        EXPECT_EQ(idleTimerResets(), resets + 2);

        // With the module's dim setting off the backlight is left alone.
        set(dimKey, "NO");
        objc::send(overlay, OBJC_SEL("show"));
        advance(1);
        objc::send(overlay, OBJC_SEL("hide"));
        advance(1);
        EXPECT_EQ(idleTimerResets(), resets + 2);
        EXPECT_TRUE(overlay->isHidden());
        set(dimKey, "YES");
    }
}

TEST_F(Overlays, ShowingTwiceLaysOutAgainAndKeepsOneInstance)
{
    auto* overlay = KVMusicDisplayView::sharedInstance();
    overlay->show();
    advance(1);
    EXPECT_EQ(overlay->frame(), CGRectMake(0, 0, 375, 667));
    host().rotate(UIInterfaceOrientationLandscapeLeft);
    overlay->show();
    // Already in: it stays in while it lays out for the new orientation.
    EXPECT_EQ(overlay->alpha(), 1);
    EXPECT_EQ(overlay->frame(), CGRectMake(0, 0, 667, 375));
    EXPECT_EQ(overlay->displayContainerView()->frame(), CGRectMake(0, 0, 667, 375));
    EXPECT_EQ(overlay->_blurEffectView->frame(), CGRectMake(0, 0, 667, 375));
    EXPECT_EQ(KVMusicDisplayView::sharedInstance(), overlay);
    EXPECT_EQ(objc::send<NSObject*>(objc::objc_getClass("KVMusicDisplayView"), OBJC_SEL("sharedInstance")), overlay);
}

TEST_F(Overlays, DetailOverlaysKeepTheRecordTheyWereHanded)
{
    auto record = make<NSString>("a row");
    auto* notification = KVSingleNotificationDisplayView::sharedInstance();
    objc::send(notification, OBJC_SEL("updateRow:"), static_cast<NSObject*>(record.get()));
    EXPECT_EQ(objc::object_getIvar(notification, "_row").get(), record.get());
    auto* event = KVSingleEventDisplayView::sharedInstance();
    objc::send(event, OBJC_SEL("updateEventItem:"), static_cast<NSObject*>(record.get()));
    EXPECT_EQ(objc::object_getIvar(event, "_eventItem").get(), record.get());
    // Hidden and shown again, the overlay still has it.
    event->show();
    event->hide();
    advance(1);
    event->show();
    EXPECT_EQ(event->eventItem(), record.get());
}

TEST_F(Overlays, HomeButtonClosesOnlyOverlaysItsModulesAllow)
{
    set("amperoHomeButtonCloseEnabled", "YES");
    KVView* panel = KVView::sharedInstance();
    auto* battery = KVAmperoDisplayView::sharedInstance();
    auto* music = KVMusicDisplayView::sharedInstance();
    EXPECT_FALSE(panel->hideAnyShowingDisplayViewsBecauseHomeButtonPressed(true));
    battery->show();
    music->show();
    advance(1);

    EXPECT_TRUE(panel->hideAnyShowingDisplayViewsBecauseHomeButtonPressed(true));
    EXPECT_FALSE(battery->isActive());
    EXPECT_TRUE(music->isActive());
    advance(1);
    EXPECT_TRUE(battery->isHidden());
    EXPECT_FALSE(music->isHidden());
    // What stays open the home button cannot close.
    EXPECT_FALSE(panel->hideAnyShowingDisplayViewsBecauseHomeButtonPressed(true));

    // Anything else (a dark display, an alert) closes everything open.
    battery->show();
    EXPECT_TRUE(panel->hideAnyShowingDisplayViewsBecauseHomeButtonPressed(false));
    EXPECT_FALSE(battery->isActive());
    EXPECT_FALSE(music->isActive());
    EXPECT_FALSE(panel->hideAnyShowingDisplayViewsBecauseHomeButtonPressed(false));
}

TEST_F(Overlays, ClearAllConfirmationIsNotClosedByTheHomeButtonOrADarkDisplay)
{
    set("notaraHomeButtonCloseEnabled", "YES");
    auto* clearAll = KVClearAllNotificationsDisplayView::sharedInstance();
    clearAll->show();
    EXPECT_FALSE(KVView::sharedInstance()->hideAnyShowingDisplayViewsBecauseHomeButtonPressed(false));
    EXPECT_TRUE(clearAll->isActive());
}

TEST_F(Overlays, ContainerOverlayClosesOnATapOutsideItsContent)
{
    auto* weather = KVWeatherDisplayView::sharedInstance();
    weather->show();
    advance(1);
    EXPECT_TRUE(weather->isActive());
    CVContainerWindow* window = weather->containerWindow();
    EXPECT_FALSE(window->isHidden());
    EXPECT_TRUE(window->tapToTerminateEnabled());

    // A control of the overlay takes its own taps; a tap anywhere else closes.
    auto button = make<UIControl>(CGRectMake(20, 20, 60, 40));
    weather->addSubview(button.get());
    UIApplication::sharedApplication()->tapAt(CGPointMake(50, 40));
    advance(1);
    EXPECT_TRUE(weather->isActive());
    UIApplication::sharedApplication()->tapAt(CGPointMake(187, 400));
    advance(1);
    EXPECT_FALSE(weather->isActive());
    EXPECT_TRUE(window->isHidden());
    button->removeFromSuperview();

    // Showing again works the same way, with one recogniser.
    weather->show();
    advance(1);
    EXPECT_TRUE(weather->isActive());
    EXPECT_EQ(window->gestureRecognizers().size(), 1u);
}

TEST_F(Overlays, AThousandVisitsLeaveNothingBehind)
{
    auto* overlay = KVAmperoDisplayView::sharedInstance();
    size_t windowChildren = host().rootWindow()->subviews().size();
    size_t overlayChildren = overlay->displayContainerView()->subviews().size();
    for (int visit = 0; visit < 1000; ++visit) {
        overlay->show();
        advance(0.5);
        overlay->hide();
        advance(0.5);
    }
    EXPECT_TRUE(overlay->isHidden());
    EXPECT_FALSE(overlay->isActive());
    EXPECT_EQ(host().rootWindow()->subviews().size(), windowChildren);
    EXPECT_EQ(overlay->displayContainerView()->subviews().size(), overlayChildren);
}

TEST_F(Overlays, DisplayOverlayShowsAboveTheHostsWindowsAndGoesHomeOnceHidden)
{
    host().showNotificationCenter();
    auto* battery = KVAmperoDisplayView::sharedInstance();
    battery->show();
    advance(1);
    UIWindow* window = battery->presentationWindow();
    ASSERT_TRUE(window);
    EXPECT_EQ(battery->superview(), window);
    EXPECT_FALSE(window->isHidden());
    EXPECT_EQ(window->frame(), CGRectMake(0, 0, 375, 667));
    // The front-most view under a finger is the overlay's, not the centre's.
    UIView* hit = UIApplication::sharedApplication()->hitTest(CGPointMake(187, 333));
    ASSERT_TRUE(hit);
    EXPECT_TRUE(hit->isDescendantOfView(battery));

    battery->hide();
    advance(1);
    EXPECT_EQ(battery->superview(), host().rootWindow());
    EXPECT_TRUE(window->isHidden());
    EXPECT_TRUE(battery->isHidden());

    // A show that starts during the fade-out keeps it where it is seen.
    battery->show();
    advance(1);
    battery->hide();
    advance(0.1);
    battery->show();
    advance(1);
    EXPECT_EQ(battery->superview(), window);
    EXPECT_FALSE(window->isHidden());
}

TEST_F(Overlays, EveryOverlayLaysItselfOutAgainWhenTurnedWhileOpen)
{
    std::vector<UIView*> overlays { KVTimeDisplayView::sharedInstance(), KVWeatherDisplayView::sharedInstance() };
    for (auto [overlay, dimKey] : displayOverlays())
        overlays.push_back(overlay);
    for (UIView* overlay : overlays) {
        SCOPED_TRACE(overlay->className());
        objc::send(overlay, OBJC_SEL("show"));
        advance(1);
        host().rotate(UIInterfaceOrientationLandscapeLeft);
        EXPECT_EQ(overlay->frame(), CGRectMake(0, 0, 667, 375));
        EXPECT_EQ(overlay->window()->frame(), CGRectMake(0, 0, 667, 375));
        host().rotate(UIInterfaceOrientationPortrait);
        EXPECT_EQ(overlay->frame(), CGRectMake(0, 0, 375, 667));
        objc::send(overlay, OBJC_SEL("hide"));
        advance(1);
    }
    // Closed, an overlay waits for its next show to lay out.
    auto* music = KVMusicDisplayView::sharedInstance();
    host().rotate(UIInterfaceOrientationLandscapeLeft);
    EXPECT_EQ(music->frame(), CGRectMake(0, 0, 375, 667));
}
