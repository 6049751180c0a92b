// The host's state as the simulator's dump reports it, and the world's
// effects on what SpringBoard answers and shows.

#include "HostTestSupport.h"

#include <host/SpringBoard/SBApplicationIcon.h>
#include <host/SpringBoard/SBLockScreenView.h>
#include <host/SpringBoard/SBLockScreenViewController.h>

#include <Foundation/NSArray.h>
#include <Foundation/NSProcessInfo.h>
#include <Foundation/NSString.h>

namespace {

class HostState : public HostTest { };

template<typename R>
R ask(const char* className, const char* shared, const char* selector)
{
    return objc::send<R>(objc::send<StrongId>(objc::objc_getClass(className), shared), selector);
}

} // namespace

TEST_F(HostState, DumpHasEveryFieldWithTheBootedDefaults)
{
    auto state = dump();
    EXPECT_EQ(state["system"], "9.3.3");
    EXPECT_EQ(state["device"], "iphone6");
    EXPECT_EQ(state["locked"], true);
    EXPECT_EQ(state["screenOn"], true);
    EXPECT_EQ(state["orientation"], "portrait");
    EXPECT_EQ(state["statusBarAlpha"], 1.0);
    EXPECT_EQ(state["dimInterval"], 8.0);
    EXPECT_EQ(state["idleTimerResets"], 0);
    EXPECT_EQ(state["hooks"], nlohmann::json::array());
    EXPECT_TRUE(state["log"].is_array());
    EXPECT_EQ(state["timer"], nlohmann::json({ { "state", 1 }, { "fireTime", 0.0 }, { "commands", nlohmann::json::array() } }));
    EXPECT_EQ(state["media"], nlohmann::json({ { "playing", false }, { "track", 0 }, { "tracks", 0 }, { "volume", 0.5 }, { "commands", nlohmann::json::array() } }));
    for (auto* list : { "alarms", "launches", "notifications", "removed", "actions", "alerts" })
        EXPECT_EQ(state[list], nlohmann::json::array()) << list;
    EXPECT_EQ(state["menuPressesHandledByHost"], 0);
    EXPECT_EQ(state["fullscreenAlert"], false);
}

TEST_F(HostState, BatteryAnswersAndTheChargingLine)
{
    EXPECT_DOUBLE_EQ(ask<double>("SBUIController", "sharedInstance", "batteryCapacity"), 0.76);
    auto* lockScreen = host().lockScreenViewController()->lockScreenView();
    EXPECT_FALSE(lockScreen->m_chargingView);

    host().changeBattery({ .level = 0.5, .onAC = true, .lowPowerMode = true });
    EXPECT_TRUE(ask<bool>("SBUIController", "sharedInstance", "isOnAC"));
    EXPECT_TRUE(NSProcessInfo::processInfo()->isLowPowerModeEnabled());
    ASSERT_TRUE(lockScreen->m_chargingView);
    EXPECT_EQ(lockScreen->m_chargingView->text(), "Charging: 50%");

    // Options left out keep their values; NaN is refused.
    host().changeBattery({ .level = std::nan(""), .onAC = false });
    EXPECT_DOUBLE_EQ(ask<double>("SBUIController", "sharedInstance", "batteryCapacity"), 0.5);
    EXPECT_FALSE(lockScreen->m_chargingView);
    EXPECT_TRUE(NSProcessInfo::processInfo()->isLowPowerModeEnabled());
}

TEST_F(HostState, CallsAndFaceTimeAreOneStateAtATime)
{
    host().setCallState(SimulatedHost::CallState::IncomingCall);
    EXPECT_TRUE(ask<bool>("SBTelephonyManager", "sharedTelephonyManager", "incomingCallExists"));
    EXPECT_FALSE(ask<bool>("SBTelephonyManager", "sharedTelephonyManager", "inCall"));
    host().setCallState(SimulatedHost::CallState::ActiveFaceTime);
    EXPECT_FALSE(ask<bool>("SBTelephonyManager", "sharedTelephonyManager", "incomingCallExists"));
    EXPECT_TRUE(ask<bool>("SBConferenceManager", "sharedInstance", "activeFaceTimeCallExists"));
    host().setCallState(SimulatedHost::CallState::None);
    EXPECT_FALSE(ask<bool>("SBConferenceManager", "sharedInstance", "activeFaceTimeCallExists"));
    EXPECT_FALSE(ask<bool>("SBConferenceManager", "sharedInstance", "faceTimeInvitationExists"));
}

TEST_F(HostState, MediaCommandsAreRecordedAndMoveThroughTheTracks)
{
    SBMediaController::NowPlaying album;
    album.song = "First";
    album.track = 1;
    album.tracks = 2;
    host().setNowPlaying(album, false);
    StrongId media = objc::send<StrongId>(objc::objc_getClass("SBMediaController"), "sharedInstance");
    EXPECT_TRUE(objc::send<bool>(media, "isFirstTrack"));
    objc::send<bool>(media, "play");
    EXPECT_TRUE(objc::send<bool>(media, "changeTrack:", 1LL));
    EXPECT_FALSE(objc::send<bool>(media, "changeTrack:", 1LL));
    EXPECT_TRUE(objc::send<bool>(media, "isLastTrack"));
    objc::send<bool>(media, "changeTrack:", -1LL);
    objc::send(media, "setVolume:", 2.0);
    auto state = dump()["media"];
    EXPECT_EQ(state["playing"], true);
    EXPECT_EQ(state["track"], 1);
    EXPECT_EQ(state["volume"], 1.0);
    EXPECT_EQ(state["commands"], nlohmann::json({ "play", "next", "next", "previous" }));
}

TEST_F(HostState, NotificationsAreListedOnTheLockScreenAndRecordedWhenRemoved)
{
    host().deliverNotification({ .app = "com.apple.MobileSMS", .title = "Anna", .message = "Lunch?" });
    host().deliverNotification({ .app = "com.apple.mobilemail", .title = std::nullopt, .message = "Invoice" });
    auto* list = host().lockScreenViewController()->lockScreenView()->m_notificationView.get();
    ASSERT_EQ(list->subviews().size(), 2u);
    EXPECT_EQ(objc::cast<UILabel>(list->subviews()[0]->subviews()[0].get())->text(), "Mail\nInvoice");
    EXPECT_EQ(objc::cast<UILabel>(list->subviews()[1]->subviews()[0].get())->text(), "Messages  Anna\nLunch?");

    EXPECT_TRUE(host().world().removeNotification(0));
    EXPECT_FALSE(host().world().removeNotification(5));
    auto state = dump();
    EXPECT_EQ(state["removed"], nlohmann::json({ { { "app", "com.apple.MobileSMS" }, { "title", "Anna" }, { "message", "Lunch?" } } }));
    EXPECT_EQ(state["notifications"][0]["title"], nullptr);
    EXPECT_EQ(list->subviews().size(), 1u);
}

// The bulletin board answers sections in order of first delivery and each
// section's bulletins in order of delivery, kept while their notification
// stays, however deliveries and removals interleave.
TEST_F(HostState, BulletinBoardFollowsDeliveriesAndRemovals)
{
    StrongId server = objc::send<StrongId>(objc::objc_getClass("BBServer"), "sharedInstance");
    auto sectionIDs = [&] {
        std::vector<std::string> identifiers;
        auto answered = objc::castRef<NSArray>(objc::send<StrongId>(server, "allSectionIDs"));
        for (auto& identifier : answered->objects())
            identifiers.push_back(objc::cast<NSString>(identifier.get())->string());
        return identifiers;
    };
    auto bulletins = [&](const std::string& section) { return objc::castRef<NSArray>(objc::send<StrongId>(server, "bulletinsForSectionID:", section)); };
    auto titles = [&](const std::string& section) {
        std::vector<std::string> found;
        auto answered = bulletins(section);
        for (auto& bulletin : answered->objects())
            found.push_back(objc::send<RefPtr<NSString>>(bulletin, "title")->string());
        return found;
    };

    host().deliverNotification({ .app = "com.apple.MobileSMS", .title = "A1" });
    host().deliverNotification({ .app = "com.apple.mobilemail", .title = "B1" });
    host().deliverNotification({ .app = "com.apple.MobileSMS", .title = "A2" });
    EXPECT_EQ(sectionIDs(), (std::vector<std::string> { "com.apple.MobileSMS", "com.apple.mobilemail" }));
    EXPECT_EQ(titles("com.apple.MobileSMS"), (std::vector<std::string> { "A1", "A2" }));
    StrongId secondBefore = bulletins("com.apple.MobileSMS")->objectAtIndex(1);

    EXPECT_TRUE(host().world().removeNotification(0));
    host().deliverNotification({ .app = "com.apple.Music", .title = "C1" });
    host().deliverNotification({ .app = "com.apple.MobileSMS", .title = "A3" });
    EXPECT_EQ(sectionIDs(), (std::vector<std::string> { "com.apple.mobilemail", "com.apple.MobileSMS", "com.apple.Music" }));
    EXPECT_EQ(titles("com.apple.MobileSMS"), (std::vector<std::string> { "A2", "A3" }));
    EXPECT_EQ(bulletins("com.apple.MobileSMS")->objectAtIndex(0).get(), secondBefore.get()) << "kept while its notification stays";
    EXPECT_EQ(bulletins("com.apple.unknown")->count(), 0u);

    EXPECT_EQ(objc::send<long>(server, "removeBulletinsInSectionID:", std::string("com.apple.MobileSMS")), 2);
    EXPECT_EQ(sectionIDs(), (std::vector<std::string> { "com.apple.mobilemail", "com.apple.Music" }));
    EXPECT_TRUE(titles("com.apple.MobileSMS").empty());
}

TEST_F(HostState, ShapeIsFixedAtBoot)
{
    EXPECT_FALSE(host().setSystemVersion("10.0"));
    EXPECT_FALSE(host().setDevice(*DeviceModel::named("ipad2")));
    EXPECT_EQ(DeviceModel::named("code=22")->modelCode, 22);
    EXPECT_EQ(DeviceModel::named("code=22")->screenSize, CGSizeMake(375, 667));
    EXPECT_FALSE(DeviceModel::named("code="));
    EXPECT_FALSE(DeviceModel::named("iphone7"));
    auto plus = DeviceModel::named("iphone6splus");
    EXPECT_EQ(plus->screenSizeClass, 4);
    EXPECT_EQ(plus->scale, 3);
}

TEST_F(HostState, IconsAreCutToTheRoundedSquareMask)
{
    // A picture from the art folder and one drawn for an app without one:
    // corners clear, the middle and the middle of each edge opaque.
    const HostWorld::App* calendar = host().world().appWithIdentifier("com.apple.mobilecal");
    ASSERT_TRUE(calendar);
    const HostWorld::App drawn { "com.example.plain", "Plain", "#336699" };
    for (auto* app : { calendar, &drawn }) {
        auto icon = SBApplicationIcon::iconImageForApp(*app, 2);
        ASSERT_TRUE(icon);
        EXPECT_EQ(icon->name(), "icon:" + app->bundleIdentifier);
        int side = icon->pixelWidth();
        EXPECT_EQ(icon->pixelAt(0, 0).alpha, 0);
        EXPECT_EQ(icon->pixelAt(side - 1, side - 1).alpha, 0);
        // Just inside the corner's arc (0.2237 of the side) the picture shows.
        int inside = int(side * SBApplicationIcon::cornerRadiusRatio * 0.35);
        EXPECT_EQ(icon->pixelAt(inside, inside).alpha, 255);
        EXPECT_EQ(icon->pixelAt(side / 2, 0).alpha, 255);
        EXPECT_EQ(icon->pixelAt(side / 2, side / 2).alpha, 255);
    }
}

TEST_F(HostState, IconsAreMadeOnceWhileTheirAppIsUnchanged)
{
    const HostWorld::App* calendar = host().world().appWithIdentifier("com.apple.mobilecal");
    ASSERT_TRUE(calendar);
    auto fromArt = SBApplicationIcon::iconImageForApp(*calendar, 2);
    size_t decoded = UIImage::decodedFileCount();
    EXPECT_EQ(SBApplicationIcon::iconImageForApp(*calendar, 2).get(), fromArt.get());
    EXPECT_EQ(UIImage::decodedFileCount(), decoded);

    HostWorld::App drawn { "com.example.recoloured", "Recoloured", "#336699" };
    auto blue = SBApplicationIcon::iconImageForApp(drawn, 2);
    EXPECT_EQ(SBApplicationIcon::iconImageForApp(drawn, 2).get(), blue.get());
    drawn.color = "#ff0000";
    auto red = SBApplicationIcon::iconImageForApp(drawn, 2);
    EXPECT_NE(red.get(), blue.get());
    EXPECT_EQ(red->pixelAt(red->pixelWidth() / 2, 2).red, 255);
}
