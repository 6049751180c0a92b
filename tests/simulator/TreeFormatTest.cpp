#include <scenario/TreeFormat.h>
#include <scenario/Warnings.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace sim;
using nlohmann::json;

namespace {

json view(std::string target, std::vector<double> screen, json children = json::array(), json extra = json::object())
{
    json node = { { "target", target }, { "class", "UIView" }, { "screen", screen }, { "hidden", false }, { "alpha", 1.0 }, { "children", children } };
    node.update(extra);
    return node;
}

}

TEST(TreeFormat, ALineHoldsTargetClassRectangleTextAndGestures)
{
    json label = view("#_timeLabel", { 12.5, 40, 100, 30 }, json::array(), { { "class", "UILabel" }, { "text", "9:41\n\"AM\"" }, { "gestures", { "tap", "longpress" } } });
    EXPECT_EQ(TreeFormat::line(label, 2), "    #_timeLabel  UILabel  [12.5, 40, 100, 30]  \"9:41\\n\\\"AM\\\"\"  gestures: tap, longpress");
    EXPECT_EQ(TreeFormat::line(view("UIView@3", { 0, 0, 375, 667 }), 0), "UIView@3  UIView  [0, 0, 375, 667]");

    // Long text is cut, never inside a UTF-8 sequence.
    std::string text = std::string(59, 'a') + "\xc3\xa9" + "tail";
    std::string line = TreeFormat::line(view("#l", { 0, 0, 1, 1 }, json::array(), { { "text", text } }), 0);
    EXPECT_NE(line.find("\"" + std::string(59, 'a') + "...\""), std::string::npos) << line;
}

TEST(TreeFormat, ViewsThatCannotBeSeenAreLeftOutWithTheirSubtreesUnlessAll)
{
    json child = view("#child", { 10, 10, 5, 5 });
    json windows = json::array({ view("#window", { 0, 0, 375, 667 },
        json::array({
            view("#hidden", { 0, 0, 10, 10 }, json::array({ child }), { { "hidden", true } }),
            view("#faded", { 0, 0, 10, 10 }, json::array({ child }), { { "alpha", 0.009 } }),
            view("#offscreen", { 375, 0, 10, 10 }, json::array({ child })),
            view("#above", { 0, -10, 10, 10 }),
            // An empty container on screen still shows what it holds.
            view("#empty", { 20, 20, 0, 0 }, json::array({ child })),
            view("#edge", { -5, -5, 10, 10 }),
        })) });
    EXPECT_EQ(TreeFormat::tree(windows, 375, 667, false),
        "#window  UIView  [0, 0, 375, 667]\n"
        "  #empty  UIView  [20, 20, 0, 0]\n"
        "    #child  UIView  [10, 10, 5, 5]\n"
        "  #edge  UIView  [-5, -5, 10, 10]\n");
    std::string all = TreeFormat::tree(windows, 375, 667, true);
    EXPECT_NE(all.find("  #hidden  UIView  [0, 0, 10, 10]\n    #child"), std::string::npos) << all;
    EXPECT_NE(all.find("  #offscreen"), std::string::npos);
    EXPECT_NE(all.find("  #above"), std::string::npos);
}

TEST(Warnings, PrintEachAtOnceAndStopTheRunOnlyWhenStrict)
{
    std::ostringstream out;
    Warnings warnings(out);
    EXPECT_TRUE(warnings.warn("a.scenario", 3, "nothing took the tap"));
    EXPECT_EQ(out.str(), "a.scenario:3: warning: nothing took the tap\n");
    warnings.setStrict(true);
    EXPECT_FALSE(warnings.warn("a.scenario", 4, "again"));
    ASSERT_EQ(warnings.count(), 2u);
    EXPECT_EQ(warnings.list()[1].toString(), "a.scenario:4: warning: again");
}
