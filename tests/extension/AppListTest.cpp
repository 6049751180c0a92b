#include "launcher/KVAppList.h"

#include "../Foundation/DeviceRoot.h"

#include <gtest/gtest.h>

using Identifiers = std::vector<std::string>;

TEST(KVAppList, TakesTheTextBeforeTheFirstColonOfEachLineInOrder)
{
    EXPECT_EQ(KVAppList::bundleIdentifiersFromText("com.apple.Music\ncom.apple.mobilesafari:Safari:extra\ncom.apple.weather"),
        (Identifiers { "com.apple.Music", "com.apple.mobilesafari", "com.apple.weather" }));
    EXPECT_EQ(KVAppList::bundleIdentifiersFromText("com.apple.Music"), Identifiers { "com.apple.Music" });
}

TEST(KVAppList, SkipsBlankLinesAndLinesWithoutAnIdentifier)
{
    EXPECT_EQ(KVAppList::bundleIdentifiersFromText(""), Identifiers {});
    EXPECT_EQ(KVAppList::bundleIdentifiersFromText("\n\n  \t\n:only a comment\n\ncom.apple.Music\n\n"), Identifiers { "com.apple.Music" });
}

TEST(KVAppList, ReadsWindowsLineEndsAndTrimsBlanksAndAByteOrderMark)
{
    EXPECT_EQ(KVAppList::bundleIdentifiersFromText("\xEF\xBB\xBF" "com.apple.Music\r\n  com.apple.weather \r\n\r\n"),
        (Identifiers { "com.apple.Music", "com.apple.weather" }));
}

TEST(KVAppList, KeepsOnlyTheFirstOfRepeatedIdentifiers)
{
    EXPECT_EQ(KVAppList::bundleIdentifiersFromText("a.b\nc.d\na.b:again\nc.d\r\n"), (Identifiers { "a.b", "c.d" }));
}

TEST(KVAppList, SkipsLinesThatAreNotUTF8)
{
    // A stray Latin-1 byte, a truncated sequence, an overlong encoding and a
    // UTF-16 surrogate are not UTF-8; proper multi-byte text is.
    EXPECT_EQ(KVAppList::bundleIdentifiersFromText("caf\xE9.app\ncom.\xE2\x82\nover\xC0\xAFlong\nsur\xED\xA0\x80rogate\ncom.example.caf\xC3\xA9\nok.app"),
        (Identifiers { "com.example.caf\xC3\xA9", "ok.app" }));
}

TEST(KVAppList, StopsAtTheEntryLimitAndDropsTheCutLastLine)
{
    std::string text;
    for (size_t i = 0; i < KVAppList::maximumEntries + 50; ++i)
        text += "app." + std::to_string(i) + "\n";
    auto identifiers = KVAppList::bundleIdentifiersFromText(text);
    ASSERT_EQ(identifiers.size(), KVAppList::maximumEntries);
    EXPECT_EQ(identifiers.back(), "app." + std::to_string(KVAppList::maximumEntries - 1));

    EXPECT_EQ(KVAppList::bundleIdentifiersFromText("one.app\ntwo.app\nthree.ap", true), (Identifiers { "one.app", "two.app" }));
    EXPECT_EQ(KVAppList::bundleIdentifiersFromText("no.line.break", true), Identifiers {});
}

TEST(KVAppList, FileMissingIsNoListAndAHugeFileIsReadOnlyAtItsStart)
{
    TemporaryDeviceRoot root;
    EXPECT_FALSE(KVAppList::bundleIdentifiersFromFile().has_value());

    root.write(KVAppList::path, "");
    ASSERT_TRUE(KVAppList::bundleIdentifiersFromFile().has_value());
    EXPECT_TRUE(KVAppList::bundleIdentifiersFromFile()->empty());

    // Ten megabytes of one repeated line: the bounded read still finds it.
    std::string line = "com.apple.Music:" + std::string(100, 'x') + "\n";
    std::string huge;
    while (huge.size() < 10 * 1024 * 1024)
        huge += line;
    root.write(KVAppList::path, "com.apple.weather\n" + huge + "late.app\n");
    EXPECT_EQ(KVAppList::bundleIdentifiersFromFile(), (Identifiers { "com.apple.weather", "com.apple.Music" }));
}
