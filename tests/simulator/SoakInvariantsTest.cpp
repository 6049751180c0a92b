#include <SoakInvariants.h>

#include <gtest/gtest.h>

using sim::SoakInvariants;

TEST(SoakInvariants, LockScreenPanelHidesForAlertsAndCallsOnly)
{
    SoakInvariants::PanelSituation situation;
    EXPECT_EQ(SoakInvariants::expectedPanelHidden(situation), false);
    situation.callOrFaceTime = true;
    EXPECT_EQ(SoakInvariants::expectedPanelHidden(situation), true);
    situation.callOrFaceTime = false;
    situation.fullscreenAlertFlag = true;
    EXPECT_EQ(SoakInvariants::expectedPanelHidden(situation), true);
    // A search page presented from any edge has no say on the lock screen.
    situation.fullscreenAlertFlag = false;
    situation.lastSearchEdge = 1;
    EXPECT_EQ(SoakInvariants::expectedPanelHidden(situation), false);
}

TEST(SoakInvariants, OtherPlacementsFollowTheirOwnRules)
{
    SoakInvariants::PanelSituation situation;
    situation.callOrFaceTime = true;
    situation.fullscreenAlertFlag = true;
    situation.location = 2;
    EXPECT_EQ(SoakInvariants::expectedPanelHidden(situation), false);

    situation.location = 3;
    EXPECT_EQ(SoakInvariants::expectedPanelHidden(situation), false) << "never presented yet";
    situation.lastSearchEdge = 8;
    EXPECT_EQ(SoakInvariants::expectedPanelHidden(situation), false);
    situation.lastSearchEdge = 1;
    EXPECT_EQ(SoakInvariants::expectedPanelHidden(situation), true);
    situation.location = 4;
    EXPECT_EQ(SoakInvariants::expectedPanelHidden(situation), false);

    situation.enabled = false;
    EXPECT_EQ(SoakInvariants::expectedPanelHidden(situation), std::nullopt);
    situation.enabled = true;
    situation.location = 7;
    EXPECT_EQ(SoakInvariants::expectedPanelHidden(situation), std::nullopt);
}

TEST(SoakInvariants, FlatMeansAQuarterOrTheSlack)
{
    EXPECT_TRUE(SoakInvariants::staysFlat(4000, 5000, 500));
    EXPECT_FALSE(SoakInvariants::staysFlat(4000, 5001, 500));
    EXPECT_TRUE(SoakInvariants::staysFlat(100, 600, 500));
    EXPECT_FALSE(SoakInvariants::staysFlat(100, 601, 500));
    EXPECT_TRUE(SoakInvariants::staysFlat(4000, 10, 500)) << "shrinking is flat";
}

TEST(SoakInvariants, StaleTextsAreThoseWithARemovedToken)
{
    EXPECT_EQ(SoakInvariants::token(17), "[17]");
    std::vector<std::string> shown { "Soak [17]", "Soak [170]", "Soak [1]", "[x] [17", "Messages", "a [3] b [4]", "[99999999999]" };
    auto stale = SoakInvariants::staleTexts(shown, { 17, 4 });
    EXPECT_EQ(stale, (std::vector<std::string> { "Soak [17]", "a [3] b [4]" }));
    EXPECT_TRUE(SoakInvariants::staleTexts(shown, {}).empty());
}
