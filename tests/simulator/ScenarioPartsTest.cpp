#include <scenario/ScenarioParser.h>
#include <scenario/ScenarioParts.h>

#include <gtest/gtest.h>

using namespace sim;

namespace {

// Each part's lines, as written, joined by " / ".
std::vector<std::string> partTexts(std::string_view scenario)
{
    auto parsed = ScenarioParser::parseText(scenario, "s");
    EXPECT_TRUE(parsed.ok()) << parsed.diagnosticText();
    std::vector<std::string> texts;
    for (const ScenarioPart& part : splitIntoParts(parsed.commands)) {
        std::string text;
        for (const Command& command : part.commands)
            text += (text.empty() ? "" : " / ") + command.text;
        texts.push_back(text + " (" + std::to_string(part.replayedSetup) + " replayed)");
    }
    return texts;
}

}

TEST(ScenarioParts, OneBootIsOnePartHoldingEverything)
{
    EXPECT_EQ(partTexts("volume 0.2\nboot\nhome\nvolume 1\n"), std::vector<std::string> { "volume 0.2 / boot / home / volume 1 (0 replayed)" });
    EXPECT_EQ(partTexts("volume 0.2\n"), std::vector<std::string> { "volume 0.2 (0 replayed)" });
}

TEST(ScenarioParts, EachLaterBootReplaysTheSetupThenTakesTheLinesAfterThePreviousPartsLastAction)
{
    auto parts = partTexts("now 2026-01-01\nvolume 0.2\n"
                           "boot\nhome\nshot a.png\nvolume 0.4\n"
                           "prefs location 2\ndevice iphone5\nboot\nadvance 1s\n"
                           "boot\nhome\nvolume 1\n");
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_EQ(parts[0], "now 2026-01-01 / volume 0.2 / boot / home / shot a.png (0 replayed)");
    EXPECT_EQ(parts[1], "now 2026-01-01 / volume 0.2 / volume 0.4 / prefs location 2 / device iphone5 / boot / advance 1s (2 replayed)");
    EXPECT_EQ(parts[2], "now 2026-01-01 / volume 0.2 / boot / home / volume 1 (2 replayed)");
}
