#include <scenario/ScenarioValues.h>
#include <scenario/Target.h>

#include <gtest/gtest.h>

using namespace sim;

TEST(ScenarioValues, DurationsReadEveryUnitAndCombinations)
{
    const std::pair<const char*, double> good[] = {
        { "250ms", 0.25 }, { "6s", 6 }, { "10m", 600 }, { "2h", 7200 }, { "3d", 259200 },
        { "0.5s", 0.5 }, { "1h30m", 5400 }, { "2m30s", 150 }, { "0s", 0 },
    };
    for (auto [text, seconds] : good) {
        auto value = parseDuration(text);
        ASSERT_TRUE(value) << text;
        EXPECT_DOUBLE_EQ(*value, seconds) << text;
    }
    for (const char* text : { "", "6", "6x", "-5s", "s", "1.2.3s", "inf", "1e3s", "5 s", "6S", "m5" })
        EXPECT_FALSE(parseDuration(text)) << text;
}

TEST(ScenarioValues, TimesAreRelativeOrLocal)
{
    auto later = parseTime("+10m");
    ASSERT_TRUE(later);
    EXPECT_TRUE(later->isRelative());
    EXPECT_EQ(later->offset, 600);
    EXPECT_EQ(parseTime("-5m")->offset, -300);
    EXPECT_EQ(parseTime("+1d")->offset, 86400);
    EXPECT_EQ(parseTime("now")->offset, 0);

    auto absolute = parseTime("2026-11-21T09:05:07");
    ASSERT_TRUE(absolute);
    EXPECT_EQ(absolute->kind, TimeSpec::Kind::Absolute);
    EXPECT_EQ(absolute->local, (LocalDateTime { 2026, 11, 21, 9, 5, 7 }));
    EXPECT_EQ(absolute->local.toString(), "2026-11-21T09:05:07");
    EXPECT_EQ(parseTime("2026-11-21T09:05")->local, (LocalDateTime { 2026, 11, 21, 9, 5, 0 }));
    EXPECT_EQ(parseTime("2028-02-29")->local, (LocalDateTime { 2028, 2, 29, 0, 0, 0 }));

    for (const char* text : { "+", "10m", "+-5m", "2026-02-29T09:00:00", "2026-13-01T00:00", "2026-11-21T24:00",
             "2026-11-21T09:60", "2026-11-21 09:05", "2026-11-21T9:05", "2026-11-21T09:05:00Z", "2026-4-01" })
        EXPECT_FALSE(parseTime(text)) << text;
}

TEST(ScenarioValues, SmallValueForms)
{
    EXPECT_EQ(parseBoolean("yes"), true);
    EXPECT_EQ(parseBoolean("no"), false);
    EXPECT_FALSE(parseBoolean("true"));
    EXPECT_FALSE(parseBoolean("Yes"));

    EXPECT_EQ(parseColor("#1badF8"), (Color { 0x1b, 0xad, 0xf8 }));
    EXPECT_EQ(parseColor("#1BADF8")->toString(), "#1badf8");
    for (const char* text : { "1badf8", "#1badf", "#1badf8ff", "#1badg8", "#" })
        EXPECT_FALSE(parseColor(text)) << text;

    EXPECT_EQ(parseInteger("-12"), -12);
    EXPECT_FALSE(parseInteger("12.0"));
    EXPECT_FALSE(parseInteger("99999999999999999999"));
    EXPECT_EQ(parseDecimal("0.76"), 0.76);
    EXPECT_EQ(parseDecimal("-120.5"), -120.5);
    for (const char* text : { "", "nan", "inf", "1e5", "0x10", "+1", "1,5" })
        EXPECT_FALSE(parseDecimal(text)) << text;

    EXPECT_EQ(parseTrackPosition("3/12"), (TrackPosition { 3, 12 }));
    for (const char* text : { "3", "13/12", "1/0", "-1/3", "a/b", "/3" })
        EXPECT_FALSE(parseTrackPosition(text)) << text;

    EXPECT_EQ(parseCompactTimeOfDay("0905"), (TimeOfDay { 9, 5 }));
    EXPECT_FALSE(parseCompactTimeOfDay("2400"));
    EXPECT_FALSE(parseCompactTimeOfDay("905"));
    EXPECT_EQ(parseTimeOfDay("6:45"), (TimeOfDay { 6, 45 }));
    EXPECT_EQ(parseTimeOfDay("23:59"), (TimeOfDay { 23, 59 }));
    for (const char* text : { "24:00", "7:60", "0745", "7:5", "123:00", ":30" })
        EXPECT_FALSE(parseTimeOfDay(text)) << text;
}

TEST(ScenarioTarget, NamesClassesIndicesAndPoints)
{
    auto name = parseTarget("#_timeDateLabel");
    ASSERT_TRUE(name);
    EXPECT_EQ(name->kind, Target::Kind::Name);
    EXPECT_EQ(name->name, "_timeDateLabel");
    EXPECT_FALSE(name->index);

    auto nth = parseTarget("KVTableCell@2");
    ASSERT_TRUE(nth);
    EXPECT_EQ(nth->kind, Target::Kind::Class);
    EXPECT_EQ(nth->name, "KVTableCell");
    EXPECT_EQ(nth->index, 2);
    EXPECT_EQ(parseTarget("#_notificationView@0")->index, 0);

    auto point = parseTarget("187.5,-10");
    ASSERT_TRUE(point);
    EXPECT_EQ(point->kind, Target::Kind::Point);
    EXPECT_EQ(point->x, 187.5);
    EXPECT_EQ(point->y, -10);

    for (const char* text : { "#_a@1", "UIView", "10,20" })
        EXPECT_EQ(parseTarget(text)->toString(), text);
    for (const char* text : { "", "#", "@2", "UIView@", "UIView@-1", "UIView@x", "1,x", "Cl-ass", "#a@b", "2View", ",5" })
        EXPECT_FALSE(parseTarget(text)) << text;
}
