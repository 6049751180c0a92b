#include "clock/KVTimeDisplayView.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVPreferenceManager.h>
#include <Foundation/NSCalendar.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSTimeZone.h>
#include <Foundation/VirtualClock.h>

#include <gtest/gtest.h>

namespace {

// The overlay reads "vestrumTimerHourAndSeconds" from the shared settings;
// an empty reader answers every default (hours and seconds on).
class TimerText : public testing::Test {
protected:
    void SetUp() override { KVSettings::sharedInstance()->setPrefs(make<CVPreferenceManager>()); }
    std::string text(double seconds) { return KVTimeDisplayView::sharedInstance()->timeUntilFiredStringRepresentation(seconds); }
};

} // namespace

TEST_F(TimerText, UnderAnHourShowsMinutesAndSeconds)
{
    EXPECT_EQ(text(0.4), "00:00");
    EXPECT_EQ(text(59), "00:59");
    EXPECT_EQ(text(307), "05:07");
    EXPECT_EQ(text(600), "10:00");
    EXPECT_EQ(text(3599.9), "59:59");
}

TEST_F(TimerText, HoursKeepALeadingZeroUnderTen)
{
    EXPECT_EQ(text(3907), "01:05:07");
    EXPECT_EQ(text(35999.6), "09:59:59");
    EXPECT_EQ(text(36000), "10:00:00");
    EXPECT_EQ(text(12 * 3600), "12:00:00");
}

TEST_F(TimerText, WithoutHoursAndSecondsTheSecondsGo)
{
    auto prefs = make<CVPreferenceManager>();
    KVSettings::sharedInstance()->setPrefs(prefs);
    // A reader over a file holding the one key.
    auto path = std::string(testing::TempDir()) + "timer-text.plist";
    FILE* file = fopen(path.c_str(), "w");
    ASSERT_TRUE(file);
    fputs("<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>vestrumTimerHourAndSeconds</key><false/></dict></plist>", file);
    fclose(file);
    KVSettings::sharedInstance()->setPrefs(make<CVPreferenceManager>()->initWithContentsOfFile(path));
    EXPECT_EQ(text(35999.6), "09:59");
    EXPECT_EQ(text(3907), "01:05");
    EXPECT_EQ(text(307), "05:07");
}

TEST_F(TimerText, HugeAndNegativeValuesStayDefined)
{
    EXPECT_FALSE(text(1e300).empty());
    EXPECT_FALSE(text(-1e300).empty());
    EXPECT_EQ(text(-0.5), "00:00");
}

TEST(TimerDate, ShiftedDateCountsSecondsSince2001)
{
    NSTimeZone::setDefaultTimeZoneName("Europe/Berlin");
    VirtualClock::shared().setWallNow(817000000);
    auto shifted = KVTimeDisplayView::sharedInstance()->currentRelativeTimerDateWithHourOffset(0, 0, 0);
    // Its seconds since 1970 are now's seconds since 2001.
    EXPECT_DOUBLE_EQ(shifted->timeIntervalSince1970(), 817000000);
    auto later = KVTimeDisplayView::sharedInstance()->currentRelativeTimerDateWithHourOffset(1, 30, 5);
    EXPECT_DOUBLE_EQ(later->timeIntervalSince1970(), 817000000 + 3600 + 1800 + 5);
    NSTimeZone::setDefaultTimeZoneName("UTC");
}
