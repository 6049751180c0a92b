// A host without some classes or instance variables (as older or newer
// systems are) keeps working with its own objects. These change the class
// table for good, so they run in a process of their own.

#include "HostTestSupport.h"

#include <host/SpringBoard/SBClockDataProvider.h>
#include <host/SpringBoard/SBLockScreenView.h>
#include <host/SpringBoard/SBLockScreenViewController.h>

TEST(HostWithoutSomePieces, MissingClassesAndInstanceVariablesAreTolerated)
{
    auto& runtime = objc::Runtime::shared();
    runtime.hideClass("SBLockScreenView");
    runtime.hideClass("FBRootWindow");
    runtime.hideIvar("SBClockDataProvider", "_nextAlarmForToday");
    runtime.hideIvar("SBLockScreenView", "_foregroundScrollView");

    SimulatedHost host;
    host.boot();
    ASSERT_TRUE(host.rootWindow());
    auto* lockScreen = host.lockScreenViewController()->lockScreenView();
    ASSERT_TRUE(lockScreen);
    EXPECT_EQ(objc::objc_getClass("SBLockScreenView"), nullptr);
    EXPECT_FALSE(objc::object_getIvar(lockScreen, "_foregroundScrollView"));
    EXPECT_TRUE(objc::object_getIvar(lockScreen, "_slideToUnlockView"));

    // The host keeps its next alarm; only the name no longer finds it.
    ASSERT_TRUE(host.setNextAlarm(SimulatedHost::AlarmDay::Today, 23, 59));
    auto provider = SBClockDataProvider::sharedInstance();
    EXPECT_TRUE(provider->nextAlarmForToday());
    EXPECT_FALSE(objc::object_getIvar(provider.get(), "_nextAlarmForToday"));
    ASSERT_TRUE(host.setNextAlarm(SimulatedHost::AlarmDay::Tomorrow, 6, 30));
    EXPECT_TRUE(objc::object_getIvar(provider.get(), "_firstAlarmForTomorrow"));

    host.lock();
    EXPECT_NE(host.lockScreenViewController()->lockScreenView(), lockScreen);
}
