#include "KVAmpero/KVAmperoEstimator.h"

#include <gtest/gtest.h>

namespace {

using Reading = KVAmperoEstimator::Reading;
using Color = KVAmperoEstimator::BatteryText::Color;

Reading draining(double percent, double current = 1000)
{
    return { current, 1810, percent / 100.0, false };
}

Reading charging(double percent, double current, double maximum)
{
    return { current, maximum, percent / 100.0, true };
}

std::string calling(int seconds) { return KVAmperoEstimator::durationText(seconds, "%d %s and %d %s of calling.", "%d %s of calling."); }

// Runs the one-second tick `seconds` times, as the overlay's timer does
// between two samples.
void tick(KVAmperoEstimator& estimator, int seconds)
{
    for (int i = 0; i < seconds; ++i)
        estimator.countDown();
}

} // namespace

TEST(AmperoEstimator, DurationsUseAtMostTwoUnitsWithSingularForOne)
{
    EXPECT_EQ(calling(3600), "1 hour and 0 minutes of calling.");
    EXPECT_EQ(calling(7260), "2 hours and 1 minute of calling.");
    EXPECT_EQ(calling(7322), "2 hours and 2 minutes of calling.");
    EXPECT_EQ(calling(61), "1 minute and 1 second of calling.");
    EXPECT_EQ(calling(120), "2 minutes and 0 seconds of calling.");
    EXPECT_EQ(calling(59), "59 seconds of calling.");
    EXPECT_EQ(calling(1), "1 second of calling.");
    EXPECT_EQ(calling(0), "0 seconds of calling.");
    EXPECT_EQ(KVAmperoEstimator::isecFromSeconds(-5), -5);
}

TEST(AmperoEstimator, UsageRowsComeFromTheRemainingChargeAndTheDevice)
{
    KVAmperoEstimator iPhone6(8);
    auto rows = iPhone6.AmperoUpdate(draining(50)).usageTexts;
    EXPECT_EQ(rows[KVAmperoEstimator::Phone], "7 hours and 44 minutes of calling.");
    EXPECT_EQ(rows[KVAmperoEstimator::HDVideo], "6 hours and 4 minutes of HD video.");
    EXPECT_EQ(rows[KVAmperoEstimator::Wifi], "6 hours and 4 minutes of internet.");
    EXPECT_EQ(rows[KVAmperoEstimator::Music], "27 hours and 37 minutes of music listening.");
    EXPECT_EQ(rows[KVAmperoEstimator::Standby], "132 hours and 35 minutes of standby time.");

    // While charging the rows still follow the charge that is there.
    EXPECT_EQ(iPhone6.AmperoUpdate(charging(50, 1000, 1810)).usageTexts[KVAmperoEstimator::Phone], "7 hours and 44 minutes of calling.");
}

TEST(AmperoEstimator, MultipliersFollowTheDeviceTable)
{
    struct Row {
        long long code;
        double phone, video, wifi, music, standby;
    };
    for (Row row : { Row { 4, 23.08, 23.08, 23.08, 92.31, 553.85 }, Row { 7, 23.08, 23.08, 23.08, 92.31, 553.85 },
             Row { 30, 23.08, 23.08, 23.08, 92.31, 553.85 }, Row { 8, 27.85, 21.88, 21.88, 99.45, 477.35 },
             Row { 9, 29.64, 17.29, 14.82, 98.8, 597.74 }, Row { 10, 27.85, 21.88, 21.88, 99.45, 477.35 },
             Row { 11, 31.42, 18.33, 15.71, 104.73, 633.6 }, Row { 14, 4.08, 4.08, 4.08, 4.08, 40.08 },
             Row { 18, 4.08, 4.08, 4.08, 4.08, 40.08 }, Row { 15, 5.56, 5.56, 5.56, 5.56, 50.56 }, Row { 19, 5.56, 5.56, 5.56, 5.56, 50.56 },
             Row { 20, 4.9, 4.9, 4.9, 4.9, 49.0 }, Row { 21, 7.03, 7.03, 7.03, 7.03, 70.03 }, Row { 22, 7.03, 7.03, 7.03, 7.03, 70.03 },
             // Codes without a flag are taken for an iPhone 6.
             Row { 12, 27.85, 21.88, 21.88, 99.45, 477.35 }, Row { 25, 27.85, 21.88, 21.88, 99.45, 477.35 },
             Row { 0, 27.85, 21.88, 21.88, 99.45, 477.35 } }) {
        KVAmperoEstimator estimator(row.code);
        SCOPED_TRACE(row.code);
        EXPECT_EQ(estimator.phoneTimeMultiplier(), row.phone);
        EXPECT_EQ(estimator.hdVideoTimeMultiplier(), row.video);
        EXPECT_EQ(estimator.wifiTimeMultiplier(), row.wifi);
        EXPECT_EQ(estimator.musicTimeMultiplier(), row.music);
        EXPECT_EQ(estimator.standbyTimeMultiplier(), row.standby);
    }
}

TEST(AmperoEstimator, ChargingTextsAssumeAThousandMilliampHoursAnHour)
{
    KVAmperoEstimator estimator(8);
    auto hours = estimator.AmperoUpdate(charging(41, 1200, 2915));
    EXPECT_TRUE(hours.animatedBolt);
    EXPECT_FALSE(hours.stillBoltFrame);
    EXPECT_EQ(*hours.batteryText, (KVAmperoEstimator::BatteryText { "41% Charging\nBattery full in 1 hour and 42 minutes", "Charging", Color::Green }));

    auto minutes = estimator.AmperoUpdate(charging(85, 2500, 2915));
    EXPECT_EQ(minutes.batteryText->text, "85% Charging\nBattery full in about 24 minutes");

    // 99.5 percent is still charging: the percentage is truncated.
    EXPECT_EQ(estimator.AmperoUpdate(charging(99.5, 2900, 2915)).batteryText->text, "99% Charging\nBattery full in about 0 minutes");
}

TEST(AmperoEstimator, FullOnTheChargerShowsTheLastStillFrame)
{
    KVAmperoEstimator estimator(8);
    auto full = estimator.AmperoUpdate(charging(100, 2915, 2915));
    EXPECT_FALSE(full.animatedBolt);
    EXPECT_EQ(full.stillBoltFrame, 10);
    EXPECT_EQ(*full.batteryText, (KVAmperoEstimator::BatteryText { "Battery fully charged\n", "Battery fully charged\n", Color::Green }));
}

TEST(AmperoEstimator, StillBoltFrameFollowsTheLevelInStepsOfTen)
{
    KVAmperoEstimator estimator(8);
    auto frame = [&](double percent) { return estimator.AmperoUpdate(draining(percent)).stillBoltFrame; };
    EXPECT_EQ(frame(0), 0);
    EXPECT_EQ(frame(0.5), 1);
    EXPECT_EQ(frame(10), 1);
    EXPECT_EQ(frame(10.5), 2);
    EXPECT_EQ(frame(57), 6);
    EXPECT_EQ(frame(90), 9);
    EXPECT_EQ(frame(91), 10);
    EXPECT_EQ(frame(100), 10);
    EXPECT_FALSE(frame(101));
    EXPECT_FALSE(frame(-1));
}

TEST(AmperoEstimator, LearnsTheDrainFromTheSecondDropAndAveragesLaterOnes)
{
    KVAmperoEstimator estimator(8);
    // The first sample starts timing and shows the calibration text.
    auto first = estimator.AmperoUpdate(draining(52));
    EXPECT_EQ(first.batteryText->text, KVAmperoEstimator::calibrationText);
    EXPECT_TRUE(estimator._inTimeCountingState);

    // The first drop ends an interval that began anywhere: not used.
    tick(estimator, 30);
    EXPECT_FALSE(estimator.AmperoUpdate(draining(51)).batteryText);
    EXPECT_TRUE(estimator._hasAlreadyDecreasedAtLeastOnce);
    EXPECT_EQ(estimator._timeLeft, -1);
    EXPECT_FALSE(estimator._inTimeCountingState);

    // The next sample starts a new interval; 600 s later the level drops to 50.
    estimator.AmperoUpdate(draining(51));
    EXPECT_FALSE(estimator.countDown());
    tick(estimator, 599);
    estimator.AmperoUpdate(draining(50));
    EXPECT_EQ(estimator._secondsSinceLastBatteryPercentageChange, 600);
    EXPECT_EQ(estimator._timeLeft, 30000);

    // The count-down shows the draining text and moves a second a tick.
    auto text = estimator.countDown();
    ASSERT_TRUE(text);
    EXPECT_EQ(*text, (KVAmperoEstimator::BatteryText { "50% Draining\nBattery empty in 8 hours and 20 minutes", "Draining", Color::Red }));
    EXPECT_EQ(estimator._timeLeft, 29999);

    // A further 300 s interval ending at 49 percent, with the count-down at
    // 29,700: (29,700 + 300 × 49) / 2.
    estimator.AmperoUpdate(draining(50));
    tick(estimator, 300);
    estimator._timeLeft = 29700;
    estimator.AmperoUpdate(draining(49));
    EXPECT_EQ(estimator._timeLeft, 22200);
}

TEST(AmperoEstimator, RunsOutAtOneSecondAndKeepsTheLastText)
{
    KVAmperoEstimator estimator(8);
    estimator._timeLeft = 2;
    estimator._currentBatteryPercentage = 3;
    EXPECT_EQ(estimator.countDown()->text, "3% Draining\nBattery empty in 2 seconds");
    EXPECT_EQ(estimator.countDown()->text, "3% Draining\nBattery empty in 1 second");
    EXPECT_FALSE(estimator.countDown());
    EXPECT_EQ(estimator._timeLeft, 0);
}

TEST(AmperoEstimator, ChargingStartsCalibrationAfresh)
{
    KVAmperoEstimator estimator(8);
    estimator._hasAlreadyDecreasedAtLeastOnce = true;
    estimator._inTimeCountingState = true;
    estimator._timeLeft = 5000;
    estimator.AmperoUpdate(charging(60, 1500, 2915));
    EXPECT_FALSE(estimator._hasAlreadyDecreasedAtLeastOnce);
    EXPECT_FALSE(estimator._inTimeCountingState);
    EXPECT_EQ(estimator._timeLeft, -1);
    EXPECT_FALSE(estimator.countDown());

    // Unplugged: the next sample is the calibration message again.
    EXPECT_EQ(estimator.AmperoUpdate(draining(60)).batteryText->text, KVAmperoEstimator::calibrationText);
}

TEST(AmperoEstimator, NoticesTheChargerOnlyWhenItChanges)
{
    KVAmperoEstimator estimator(8);
    EXPECT_FALSE(estimator.chargerStateChanged(false));
    EXPECT_TRUE(estimator.chargerStateChanged(true));
    EXPECT_FALSE(estimator.chargerStateChanged(true));
    EXPECT_TRUE(estimator.chargerStateChanged(false));
}

TEST(AmperoEstimator, MissingReadingsGiveNonsenseNotACrash)
{
    KVAmperoEstimator estimator(8);
    auto presentation = estimator.AmperoUpdate({ -100.0, -100.0, 0.5, false });
    EXPECT_EQ(presentation.usageTexts[KVAmperoEstimator::Phone], "-46 minutes and -25 seconds of calling.");
    estimator.AmperoUpdate({ 1e300, -1e300, 0.5, true });
}
