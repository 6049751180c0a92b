#include <scenario/ExpectComparison.h>

#include <gtest/gtest.h>

using namespace sim;
using nlohmann::json;

TEST(ExpectComparison, NumbersMatchWithinAMillionth)
{
    EXPECT_TRUE(jsonValuesMatch(json(375.0000001), json::parse("375")));
    EXPECT_TRUE(jsonValuesMatch(json(0.1 + 0.2), json::parse("0.3")));
    EXPECT_TRUE(jsonValuesMatch(json(1e-9), json::parse("0")));
    EXPECT_TRUE(jsonValuesMatch(json(int64_t(667)), json::parse("667")));
    EXPECT_FALSE(jsonValuesMatch(json(375.01), json::parse("375")));
    EXPECT_FALSE(jsonValuesMatch(json(int64_t(-1)), json::parse("18446744073709551615")));
    EXPECT_FALSE(jsonValuesMatch(json(uint64_t(9007199254740993ull)), json::parse("9007199254740992")));
}

TEST(ExpectComparison, OtherValuesMatchExactlyAndDeeply)
{
    EXPECT_TRUE(jsonValuesMatch(json("7:55"), json("7:55")));
    EXPECT_FALSE(jsonValuesMatch(json("7:55"), json("7:55 ")));
    EXPECT_FALSE(jsonValuesMatch(json(true), json(1)));
    EXPECT_FALSE(jsonValuesMatch(json(nullptr), json("")));
    EXPECT_TRUE(jsonValuesMatch(json::parse(R"({"a": [1, 2.0000000001], "b": null})"), json::parse(R"({"b": null, "a": [1, 2]})")));
    EXPECT_FALSE(jsonValuesMatch(json::parse(R"({"a": 1, "b": 2})"), json::parse(R"({"a": 1})")));
    EXPECT_FALSE(jsonValuesMatch(json::parse("[1, 2, 3]"), json::parse("[1, 2]")));
}

TEST(ExpectComparison, DescribesTheFirstDifference)
{
    EXPECT_FALSE(jsonMismatch(json::parse("[0, 0, 375, 667]"), json::parse("[0, 0, 375, 667]")));
    EXPECT_EQ(jsonMismatch(json::parse("[0, 0, 320, 568]"), json::parse("[0, 0, 375, 667]")), "at [2]: expected 375, found 320");
    EXPECT_EQ(jsonMismatch(json("a"), json(1)), "expected 1, found \"a\"");
    EXPECT_EQ(jsonMismatch(json::parse(R"({"t": {"state": "paused"}})"), json::parse(R"({"t": {"state": "running"}})")),
        "at t.state: expected \"running\", found \"paused\"");
    EXPECT_EQ(jsonMismatch(json::parse("[1]"), json::parse("[1, 2]")), "expected 2 elements, found 1 in [1]");
    EXPECT_EQ(jsonMismatch(json::parse("{}"), json::parse(R"({"k": 1})")), "expected a member \"k\", found none in {}");
    EXPECT_LT(describeJson(json(std::string(1000, 'x'))).size(), 210u);
    EXPECT_EQ(describeJson(json(std::string("\xff"))), "\"\xef\xbf\xbd\"");
}

TEST(ExpectComparison, WalksHostPathsThroughObjectsAndArrays)
{
    json dump = json::parse(R"({"host": {"timer": {"state": "running"}, "alerts": [{"title": "Alarm"}, {"title": "Two"}], "10": "key"}})");
    ASSERT_TRUE(walkHostPath(dump, "host.timer.state"));
    EXPECT_EQ(*walkHostPath(dump, "host.timer.state"), "running");
    EXPECT_EQ(*walkHostPath(dump, "host.alerts.1.title"), "Two");
    EXPECT_EQ(*walkHostPath(dump, "host.10"), "key");
    EXPECT_EQ(walkHostPath(dump, "host"), &dump["host"]);
    for (const char* missing : { "host.alerts.2", "host.alerts.01", "host.alerts.-1", "host.alerts.x", "host.timer.state.x", "host..timer", "host.", "hostile", "timer.state" })
        EXPECT_FALSE(walkHostPath(dump, missing)) << missing;

    std::vector<std::string> path { "frame", "2" };
    json node = json::parse(R"({"frame": [0, 0, 375, 667]})");
    EXPECT_EQ(*walkJsonPath(node, path), 375);
    EXPECT_EQ(walkJsonPath(node, {}), &node);
}
