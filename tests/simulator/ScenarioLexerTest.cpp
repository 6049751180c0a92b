#include <scenario/ScenarioLexer.h>

#include <gtest/gtest.h>

using namespace sim;

namespace {

std::vector<std::string> texts(std::string_view line)
{
    LexedLine lexed = ScenarioLexer::splitWords(line);
    EXPECT_FALSE(lexed.error) << line << ": " << lexed.error.value_or("");
    std::vector<std::string> result;
    for (const Word& word : lexed.words)
        result.push_back(word.isOption() ? word.key + "=" + word.text : word.text);
    return result;
}

using Words = std::vector<std::string>;

}

TEST(ScenarioLexer, SplitsOnBlanksAndKeepsQuotedBlanks)
{
    EXPECT_EQ(texts("tap   #clock\t"), (Words { "tap", "#clock" }));
    EXPECT_EQ(texts("applist \"a b\" \"\" c"), (Words { "applist", "a b", "", "c" }));
    EXPECT_EQ(texts("file /x \"one\\ntwo \\\"three\\\" \\\\\""), (Words { "file", "/x", "one\ntwo \"three\" \\" }));
    EXPECT_EQ(texts("x ab\"c d\"e"), (Words { "x", "abc de" }));
}

TEST(ScenarioLexer, CommentsStartAtALoneHashOrTheLineStart)
{
    EXPECT_EQ(texts("# tap #clock"), Words {});
    EXPECT_EQ(texts("   #tap #clock"), Words {});
    EXPECT_EQ(texts("tap #clock # the clock"), (Words { "tap", "#clock" }));
    EXPECT_EQ(texts("tap #clock #"), (Words { "tap", "#clock" }));
    EXPECT_EQ(texts("app x color=#1badf8 # hash in a value"), (Words { "app", "x", "color=#1badf8" }));
    EXPECT_EQ(texts("prefs k \"a # b\""), (Words { "prefs", "k", "a # b" }));
}

TEST(ScenarioLexer, OptionsAreKeyEqualsValueWithAnOptionallyQuotedValue)
{
    LexedLine lexed = ScenarioLexer::splitWords("weather city=\"New York\" temp=3 \"a=b\" /p=q x-y_2=");
    ASSERT_EQ(lexed.words.size(), 6u);
    EXPECT_EQ(lexed.words[1].key, "city");
    EXPECT_EQ(lexed.words[1].text, "New York");
    EXPECT_TRUE(lexed.words[1].quoted);
    EXPECT_EQ(lexed.words[2].key, "temp");
    EXPECT_FALSE(lexed.words[2].quoted);
    EXPECT_FALSE(lexed.words[3].isOption());
    EXPECT_TRUE(lexed.words[3].quoted);
    EXPECT_FALSE(lexed.words[4].isOption());
    EXPECT_EQ(lexed.words[5].key, "x-y_2");
    EXPECT_EQ(lexed.words[5].text, "");
    EXPECT_EQ(std::string_view("weather city=\"New York\"").substr(lexed.words[1].begin, lexed.words[1].end - lexed.words[1].begin), "city=\"New York\"");
}

TEST(ScenarioLexer, ReportsUnterminatedQuotesAndUnknownEscapes)
{
    EXPECT_EQ(ScenarioLexer::splitWords("file /x \"open").error, "unterminated quote");
    EXPECT_EQ(ScenarioLexer::splitWords("file /x \"ends in a backslash\\").error, "unterminated quote");
    LexedLine lexed = ScenarioLexer::splitWords("file /x \"a\\tb\"");
    ASSERT_FALSE(lexed.error);
    ASSERT_TRUE(lexed.words[2].problem);
    EXPECT_NE(lexed.words[2].problem->find("unknown escape '\\t'"), std::string::npos);
}

TEST(ScenarioLexer, RejectsControlCharactersAndBrokenUtf8)
{
    EXPECT_TRUE(ScenarioLexer::splitWords(std::string_view("tap \0x", 6)).error);
    EXPECT_TRUE(ScenarioLexer::splitWords("tap \x7f").error);
    EXPECT_TRUE(ScenarioLexer::splitWords("prefs k \"\xc3\"").error);
    EXPECT_TRUE(ScenarioLexer::splitWords("prefs k \xed\xa0\x80").error); // a surrogate
    EXPECT_TRUE(ScenarioLexer::splitWords("prefs k \xc0\xaf").error); // overlong
    EXPECT_EQ(texts("weather city=\"Zürich\" icon=☀️"), (Words { "weather", "city=Zürich", "icon=☀️" }));
}

TEST(ScenarioLexer, SplitsLinesDroppingCarriageReturnsAndAByteOrderMark)
{
    auto lines = ScenarioLexer::splitLines("\xef\xbb\xbf" "boot\r\nhome\n\nlock");
    EXPECT_EQ(lines, (std::vector<std::string_view> { "boot", "home", "", "lock" }));
    EXPECT_EQ(ScenarioLexer::splitLines("boot\n").size(), 1u);
}
