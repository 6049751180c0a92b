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

TEST(KVAppList, KeepsRepeatedIdentifiersAndStopsWhenAsked)
{
    EXPECT_EQ(KVAppList::bundleIdentifiersFromText("a.b\nc.d\na.b:again\nc.d\r\n"), (Identifiers { "a.b", "c.d", "a.b", "c.d" }));

    Identifiers seen;
    KVAppList::forEachBundleIdentifier("one\ntwo\nthree\n", [&](std::string_view identifier) {
        seen.emplace_back(identifier);
        return seen.size() < 2;
    });
    EXPECT_EQ(seen, (Identifiers { "one", "two" }));
}

TEST(KVAppList, SkipsLinesThatAreNotUTF8)
{
    // A stray Latin-1 byte, a truncated sequence, an overlong encoding and a
    // UTF-16 surrogate are not UTF-8; proper multi-byte text is.
    EXPECT_EQ(KVAppList::bundleIdentifiersFromText("caf\xE9.app\ncom.\xE2\x82\nover\xC0\xAFlong\nsur\xED\xA0\x80rogate\ncom.example.caf\xC3\xA9\nok.app"),
        (Identifiers { "com.example.caf\xC3\xA9", "ok.app" }));
}

TEST(KVAppList, FileMissingIsNoListAndAHugeFileIsReadOnlyAtItsStart)
{
    TemporaryDeviceRoot root;
    EXPECT_FALSE(KVAppList::bundleIdentifiersFromFile().has_value());

    root.write(KVAppList::path, "");
    ASSERT_TRUE(KVAppList::bundleIdentifiersFromFile().has_value());
    EXPECT_TRUE(KVAppList::bundleIdentifiersFromFile()->empty());

    // Ten megabytes: only the first MiB is read.
    std::string line = "com.apple.Music:" + std::string(100, 'x') + "\n";
    std::string huge;
    while (huge.size() < 10 * 1024 * 1024)
        huge += line;
    root.write(KVAppList::path, "com.apple.weather\n" + huge + "late.app\n");
    auto identifiers = KVAppList::bundleIdentifiersFromFile();
    ASSERT_TRUE(identifiers.has_value());
    EXPECT_EQ(identifiers->front(), "com.apple.weather");
    // The line the limit cuts is kept when its ":" came before the cut.
    size_t whole = (KVAppList::maximumFileLength - 18) / line.size();
    size_t rest = (KVAppList::maximumFileLength - 18) % line.size();
    EXPECT_EQ(identifiers->size(), 1 + whole + (rest > line.find(':') ? 1 : 0));
    EXPECT_EQ(identifiers->back(), "com.apple.Music");
}

// A file cut at the limit keeps its last line when the identifier ended
// before the cut, and drops it when the cut may have split the identifier.
TEST(KVAppList, TheCutAtTheLimitDropsOnlyASplitIdentifier)
{
    TemporaryDeviceRoot root;
    auto fileEndingWith = [&](const std::string& last, const std::string& rest) {
        std::string padding = "pad.app\n";
        std::string text(KVAppList::maximumFileLength - last.size(), '\n');
        text.replace(0, padding.size(), padding);
        root.write(KVAppList::path, text + last + rest);
        return KVAppList::bundleIdentifiersFromFile().value();
    };
    // The identifier ends exactly at the limit, before a line end, a Windows
    // line end or a comment.
    EXPECT_EQ(fileEndingWith("com.apple.Music", "\nmore.app\n"), (Identifiers { "pad.app", "com.apple.Music" }));
    EXPECT_EQ(fileEndingWith("com.apple.Music", "\r\n"), (Identifiers { "pad.app", "com.apple.Music" }));
    EXPECT_EQ(fileEndingWith("com.apple.Music", ":Music\n"), (Identifiers { "pad.app", "com.apple.Music" }));
    // The comment is cut, the identifier is whole.
    EXPECT_EQ(fileEndingWith("com.apple.Music:Mu", "sic\n"), (Identifiers { "pad.app", "com.apple.Music" }));
    // The identifier itself is cut: "com.apple.Mus" names no app of the list.
    EXPECT_EQ(fileEndingWith("com.apple.Mus", "ic\n"), Identifiers { "pad.app" });
    EXPECT_EQ(fileEndingWith("com.apple.Music", " Store\n"), Identifiers { "pad.app" });
}
