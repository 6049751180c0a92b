#include <CommandLine.h>

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <unistd.h>

using namespace sim;

namespace {

CommandLine parse(std::vector<std::string> arguments) { return CommandLine::parse(arguments); }

}

TEST(CommandLine, DefaultsPlayTheDemoIntoKavelinOut)
{
    CommandLine commandLine = parse({});
    ASSERT_TRUE(commandLine.isValid());
    EXPECT_FALSE(commandLine.options().scenario);
    EXPECT_EQ(commandLine.options().outputDirectory, "./kavelin-out");
    EXPECT_FALSE(commandLine.options().rootDirectory);
    EXPECT_FALSE(commandLine.options().help);
}

TEST(CommandLine, ReadsTheScenarioAndBothFolderOptionsInAnyOrder)
{
    CommandLine spaced = parse({ "--out", "/tmp/o", "day.scenario", "--root", "/tmp/r" });
    ASSERT_TRUE(spaced.isValid()) << spaced.error();
    EXPECT_EQ(spaced.options().scenario, "day.scenario");
    EXPECT_EQ(spaced.options().outputDirectory, "/tmp/o");
    EXPECT_EQ(spaced.options().rootDirectory, "/tmp/r");

    CommandLine joined = parse({ "-", "--out=o", "--root=r", "--record=failed" });
    ASSERT_TRUE(joined.isValid());
    EXPECT_EQ(joined.options().scenario, "-");
    EXPECT_EQ(joined.options().outputDirectory, "o");
    EXPECT_EQ(joined.options().recordMode, "failed");
    EXPECT_EQ(parse({ "--record", "never" }).options().recordMode, "never");

    CommandLine dashed = parse({ "--", "-odd-name" });
    ASSERT_TRUE(dashed.isValid());
    EXPECT_EQ(dashed.options().scenario, "-odd-name");

    CommandLine argv = CommandLine::parse(3, std::array<const char*, 3> { "kavelin-sim", "--help", nullptr }.data());
    EXPECT_TRUE(argv.options().help);
}

TEST(CommandLine, UsageMistakesAreErrors)
{
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        { { "--verbose" }, "unknown option '--verbose'" },
        { { "--outdir=x" }, "unknown option '--outdir', did you mean --out?" },
        { { "--strct" }, "unknown option '--strct', did you mean --strict?" },
        { { "-x" }, "unknown option '-x'" },
        { { "--trace=yes" }, "option '--trace' takes no value" },
        { { "--out" }, "option '--out' needs a folder" },
        { { "--root=" }, "option '--root' needs a folder" },
        { { "--out", "a", "--out", "b" }, "option '--out' is given twice" },
        { { "--record" }, "option '--record' needs a mode (missing, all, failed or never)" },
        { { "--record=all", "--record=never" }, "option '--record' is given twice" },
        { { "a.scenario", "b.scenario" }, "more than one scenario: 'a.scenario' and 'b.scenario'" },
    };
    for (const auto& [arguments, message] : cases) {
        CommandLine commandLine = parse(arguments);
        EXPECT_FALSE(commandLine.isValid()) << arguments[0];
        EXPECT_EQ(commandLine.error(), message);
    }
    EXPECT_NE(CommandLine::usage().find("usage: kavelin-sim [SCENARIO] [--out DIR] [--root DIR]"), std::string::npos);
}

TEST(CommandLine, ReadsTheFlags)
{
    CommandLine commandLine = parse({ "--strict", "day.scenario", "--trace" });
    ASSERT_TRUE(commandLine.isValid()) << commandLine.error();
    EXPECT_TRUE(commandLine.options().strict);
    EXPECT_TRUE(commandLine.options().trace);
    EXPECT_FALSE(commandLine.options().printDemo);
    EXPECT_TRUE(parse({ "--version" }).options().version);
    EXPECT_TRUE(parse({ "--print-demo" }).options().printDemo);
}

TEST(CommandLine, AnOutputFolderThatIsAFileIsAUsageMistake)
{
    auto file = std::filesystem::temp_directory_path() / ("kavelin-cli-" + std::to_string(::getpid()));
    std::ofstream(file) << "not a folder";
    CommandLine commandLine = parse({ "--out", file.string() });
    EXPECT_EQ(commandLine.error(), "--out names '" + file.string() + "', which is a file, not a folder");
    std::filesystem::remove(file);
    // A folder that does not exist yet is made when the scenario plays.
    EXPECT_TRUE(parse({ "--out", file.string() }).isValid());
}
