#include "clock/KVTimeDisplayView.h"
#include "settings/KVSettings.h"
#include "weather/KVWeatherDisplayHourlyView.h"

#include <CorvLib/CVPreferenceManager.h>
#include <CorvLib/CVWeatherProvider.h>
#include <UIKit/NSAttributedString.h>
#include <UIKit/UIPickerView.h>

#include <gtest/gtest.h>

namespace {

class PickerTitles : public testing::Test {
protected:
    void SetUp() override { KVSettings::sharedInstance()->setPrefs(make<CVPreferenceManager>()); }
    KVTimeDisplayView& overlay() { return *KVTimeDisplayView::sharedInstance(); }
};

} // namespace

TEST_F(PickerTitles, HoursDescendWithTheirTwelveHourForm)
{
    EXPECT_EQ(overlay().pickerViewNumberOfRowsInComponent(nullptr, 0), 24);
    EXPECT_EQ(overlay().pickerViewNumberOfRowsInComponent(nullptr, 1), 60);
    EXPECT_EQ(overlay().titleForRow(0, 0), "23  |  11pm");
    EXPECT_EQ(overlay().titleForRow(10, 0), "13  |  1pm");
    EXPECT_EQ(overlay().titleForRow(11, 0), "12  |  12pm");
    EXPECT_EQ(overlay().titleForRow(12, 0), "11  |  11am");
    EXPECT_EQ(overlay().titleForRow(22, 0), "01  |  1am");
    EXPECT_EQ(overlay().titleForRow(23, 0), "00  |  12am");
    EXPECT_EQ(overlay().titleForRow(24, 0), "");
}

TEST_F(PickerTitles, MinutesDescendPaddedToTwoDigits)
{
    EXPECT_EQ(overlay().titleForRow(0, 1), "59");
    EXPECT_EQ(overlay().titleForRow(50, 1), "09");
    EXPECT_EQ(overlay().titleForRow(59, 1), "00");
}

TEST_F(PickerTitles, TitlesAreWhiteAndStartAtNoonAndZeroMinutes)
{
    auto title = objc::castRef<NSAttributedString>(overlay().pickerViewAttributedTitleForRow(nullptr, 11, 0));
    ASSERT_TRUE(title);
    EXPECT_EQ(title->string(), "12  |  12pm");
    auto color = title->attributesAtIndex(0).foregroundColor;
    ASSERT_TRUE(color);
    EXPECT_EQ(color->red() + color->green() + color->blue(), 3);
    EXPECT_EQ(overlay().pickerView()->selectedRowInComponent(0), 11);
    EXPECT_EQ(overlay().pickerView()->selectedRowInComponent(1), 59);
}

TEST(WeatherHourText, TwelveHourFormUnlessMilitaryTime)
{
    EXPECT_EQ(KVWeatherDisplayHourlyView::hourText("0000", false), "12am");
    EXPECT_EQ(KVWeatherDisplayHourlyView::hourText("0900", false), "9am");
    EXPECT_EQ(KVWeatherDisplayHourlyView::hourText("1200", false), "12pm");
    EXPECT_EQ(KVWeatherDisplayHourlyView::hourText("1300", false), "1pm");
    EXPECT_EQ(KVWeatherDisplayHourlyView::hourText("2300", false), "11pm");
    EXPECT_EQ(KVWeatherDisplayHourlyView::hourText("0700", true), "07");
    EXPECT_EQ(KVWeatherDisplayHourlyView::hourText("2300", true), "23");
    // Not an hour of day: nothing.
    EXPECT_EQ(KVWeatherDisplayHourlyView::hourText("2400", false), "");
    EXPECT_EQ(KVWeatherDisplayHourlyView::hourText("ab", false), "");
    EXPECT_EQ(KVWeatherDisplayHourlyView::hourText("", false), "");
}

TEST(WeatherDegrees, FahrenheitIsRoundedFromCelsius)
{
    EXPECT_EQ(CVWeatherProvider::degrees(21, true), 21);
    EXPECT_EQ(CVWeatherProvider::degrees(21, false), 70);
    EXPECT_EQ(CVWeatherProvider::degrees(-3, false), 27);
    EXPECT_EQ(CVWeatherProvider::degrees(-40, false), -40);
    EXPECT_EQ(CVWeatherProvider::degrees(1e300, false), 0);
}
