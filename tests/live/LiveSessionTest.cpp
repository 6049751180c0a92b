#include "support/live/FakePhone.h"

#include <live/LiveBatch.h>
#include <live/LiveSession.h>
#include <live/LiveTranscript.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

using namespace sim::live;

namespace {

Confinement confinementIn(const std::filesystem::path& folder)
{
    return { folder, { folder / "out", folder / "root" } };
}

// A session on a stand-in phone, opened without a starting scenario.
class LiveSessionTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(session.open(std::nullopt), 0); }

    FakePhone phone;
    EventHub events;
    LiveSession session { phone, events, confinementIn("/tmp") };
};

}

TEST(LiveBatch, SplitsLinesForAFreshHostFromTheOthersAndKeepsLineNumbers)
{
    auto batch = LiveBatch::read("tap 10,20\ndevice iphone5\n# a comment\nadvance 1s\nlocale de_DE\n", confinementIn("/tmp"));
    ASSERT_TRUE(batch.ok());
    EXPECT_TRUE(batch.freshHost);
    ASSERT_EQ(batch.shape.size(), 2u);
    EXPECT_EQ(batch.shape[0].line, 2);
    EXPECT_EQ(batch.shape[1].text, "locale de_DE");
    ASSERT_EQ(batch.acts.size(), 2u);
    EXPECT_EQ(batch.acts[0].line, 1);
    EXPECT_EQ(batch.acts[1].line, 4);
    EXPECT_EQ(batch.actsText, "tap 10,20\n\n# a comment\nadvance 1s\n\n");

    auto reboot = LiveBatch::read("boot", confinementIn("/tmp"));
    EXPECT_TRUE(reboot.ok() && reboot.freshHost && reboot.shape.empty() && reboot.acts.empty());

    auto quiet = LiveBatch::read("advance 1s", confinementIn("/tmp"));
    EXPECT_FALSE(quiet.freshHost);
}

TEST(LiveBatch, ReportsEveryMistakeInLineOrderAndKeepsNothing)
{
    auto batch = LiveBatch::read("advance 1s\ndevice iphone99\ntapp 1,1\nboot now\n", confinementIn("/tmp"));
    ASSERT_EQ(batch.errors.size(), 3u);
    EXPECT_TRUE(batch.errors[0].starts_with("live:2: unknown device 'iphone99'")) << batch.errors[0];
    EXPECT_EQ(batch.errors[1], "live:3: unknown command 'tapp', did you mean 'tap'?");
    EXPECT_TRUE(batch.errors[2].starts_with("live:4: ")) << batch.errors[2];
    EXPECT_TRUE(batch.acts.empty() && batch.shape.empty() && !batch.freshHost);
}

TEST(LiveBatch, HostPathsStayInsideTheOutputAndRootFolders)
{
    auto folder = std::filesystem::temp_directory_path() / ("kavelin-live-batch-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder / "out");
    std::filesystem::create_directories(folder / "root");
    std::filesystem::create_directories(folder / "elsewhere");
    std::filesystem::create_directory_symlink(folder / "elsewhere", folder / "out" / "link");
    Confinement confinement { folder / "out", { folder / "out", folder / "root" } };

    EXPECT_TRUE(LiveBatch::read("file /a.txt from uploads/a.txt", confinement).ok());
    EXPECT_TRUE(LiveBatch::read("file /a.txt from " + (folder / "root" / "x").string(), confinement).ok());
    for (const std::string& outside : std::vector<std::string> { "/etc/passwd", "../elsewhere/a.txt", "link/a.txt", (folder / "outside").string() }) {
        auto batch = LiveBatch::read("advance 1s\nfile /a.txt from " + outside, confinement);
        ASSERT_EQ(batch.errors.size(), 1u) << outside;
        EXPECT_TRUE(batch.errors[0].starts_with("live:2: '" + outside + "' is outside")) << batch.errors[0];
    }
    // A reference picture is read (and recorded) in the session's folder too.
    Confinement scenarioFolder { folder / "elsewhere", { folder / "out" } };
    EXPECT_FALSE(LiveBatch::read("expect-shot ref.png", scenarioFolder).ok());
    EXPECT_FALSE(LiveBatch::read("calendar-import /etc/week.ics", confinement).ok());
    EXPECT_TRUE(LiveBatch::read("calendar-import uploads/week.ics", confinement).ok());
    EXPECT_FALSE(LiveBatch::read("music artwork=/etc/cover.png", confinement).ok());
    EXPECT_TRUE(LiveBatch::read("music artwork=#ff0000", confinement).ok());
    std::filesystem::remove_all(folder);
}

TEST(LiveTranscript, AShapeLineTakesThePlaceOfTheOneThatSetTheSameThing)
{
    // Shape lines read alone; lines of a running host after a `boot`.
    auto command = [](const std::string& text) {
        auto parsed = sim::ScenarioParser::parseText(text, "t");
        return parsed.ok() ? parsed.commands.at(0) : sim::ScenarioParser::parseText("boot\n" + text, "t").commands.at(1);
    };
    LiveTranscript transcript;
    for (const char* line : { "device iphone6plus", "now 2026-11-21T09:00:00", "missing class SBFoo" })
        transcript.append(command(line), line);
    transcript.appendBoot();
    transcript.append(command("advance 1s"), "advance 1s");

    transcript.applyShape(command("device ipad2"));
    transcript.applyShape(command("missing class SBFoo"));
    transcript.applyShape(command("missing class SBBar"));
    transcript.applyShape(command("locale de_DE"));
    EXPECT_EQ(transcript.text(),
        "device ipad2\nnow 2026-11-21T09:00:00\nmissing class SBFoo\nmissing class SBBar\nlocale de_DE\nboot\nadvance 1s\n");
}

TEST(LiveTranscript, KeepsWhatPlayedAsItPlayedAndReportsTheRest)
{
    auto parsed = sim::ScenarioParser::parseText("now +1h\nboot\nexpect host.locked false\nadvance 300d\nadvance 1s\ntap #gone\n", "transcript");
    PlayOutcome outcome;
    outcome.lines = { { 1, 0, "", "", std::nullopt }, { 2, 0, "", "", std::nullopt }, { 3, 1, "transcript:3: expected host.locked to be false, found true\n", "", std::nullopt },
        { 4, 0, "", "", "advance 2h1ms" } };
    LiveTranscript::Problems problems;
    auto played = LiveTranscript::fromPlayed(parsed.commands, outcome, problems);
    EXPECT_EQ(played.text(), "now +1h\nboot\nadvance 2h1ms\n");
    EXPECT_EQ(problems.failed, std::vector<std::string> { "transcript:3: expected host.locked to be false, found true" });
    EXPECT_EQ(problems.dropped, (std::vector<std::string> { "advance 1s", "tap #gone" }));

    outcome.lines = { { 1, 0, "", "", std::nullopt }, { 2, 0, "", "", std::nullopt }, { 3, 0, "", "", std::nullopt }, { 4, 0, "", "", std::nullopt },
        { 5, 0, "", "", std::nullopt }, { 6, 2, "transcript:6: nothing on screen matches #gone\n", "", std::nullopt } };
    problems = {};
    played = LiveTranscript::fromPlayed(parsed.commands, outcome, problems);
    EXPECT_EQ(played.afterBoot().size(), 3u);
    EXPECT_EQ(problems.errors, std::vector<std::string> { "transcript:6: nothing on screen matches #gone" });
    EXPECT_EQ(problems.dropped, std::vector<std::string> { "tap #gone" });
}

TEST_F(LiveSessionTest, PlayedLinesJoinTheTranscriptAndMistakesChangeNothing)
{
    phone.answers["expect host.locked false"] = { 1, "live:2: expected host.locked to be false, found true\n", std::nullopt };
    auto answer = session.play("advance 1s\nexpect host.locked false\nbattery level=0.5");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body["played"], 2);
    EXPECT_EQ(answer.body["failed"], nlohmann::json::array({ "live:2: expected host.locked to be false, found true" }));
    EXPECT_EQ(session.transcript(), "boot\nadvance 1s\nbattery level=0.5\n");

    size_t plays = phone.played.size();
    answer = session.play("advance 1s\nadvance soon");
    EXPECT_EQ(answer.status, 400);
    EXPECT_EQ(phone.played.size(), plays);

    phone.answers["tap #gone"] = { 2, "live:2: nothing on screen matches #gone\n", std::nullopt };
    answer = session.play("advance 2s\ntap #gone\nadvance 3s");
    EXPECT_EQ(answer.status, 400);
    EXPECT_EQ(answer.body["played"], 1);
    EXPECT_EQ(session.transcript(), "boot\nadvance 1s\nbattery level=0.5\nadvance 2s\n");
}

TEST_F(LiveSessionTest, AShapeLineStartsAFreshPhoneThatReplaysTheTranscript)
{
    session.play("advance 1s");
    int starts = phone.starts;
    auto answer = session.play("device iphone5\nadvance 2s");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body["played"], 2);
    EXPECT_EQ(phone.starts, starts + 1);
    ASSERT_GE(phone.played.size(), 2u);
    const auto& replay = phone.played[phone.played.size() - 2];
    EXPECT_FALSE(replay.afterBoot);
    EXPECT_EQ(replay.text, "device iphone5\nboot\nadvance 1s\n");
    EXPECT_EQ(session.transcript(), "device iphone5\nboot\nadvance 1s\nadvance 2s\n");
}

TEST_F(LiveSessionTest, AShapeThatDoesNotBootGoesBackToTheOldOne)
{
    session.play("advance 1s");
    phone.answers["locale xx_YY"] = { 2, "transcript:1: unknown locale 'xx_YY'\n", std::nullopt };
    auto answer = session.play("locale xx_YY");
    EXPECT_EQ(answer.status, 400);
    EXPECT_EQ(answer.body["errors"], nlohmann::json::array({ "transcript:1: unknown locale 'xx_YY'" }));
    EXPECT_EQ(session.transcript(), "boot\nadvance 1s\n");
    EXPECT_EQ(phone.played.back().text, "boot\nadvance 1s\n");
}

TEST_F(LiveSessionTest, APhoneThatCrashesIsReportedAndARestartReplaysWhatPlayed)
{
    session.play("advance 1s");
    phone.crashOn = "tap 10,10";
    auto answer = session.play("tap 10,10");
    EXPECT_EQ(answer.status, 500);
    EXPECT_EQ(answer.body["phone"], "stopped");
    EXPECT_EQ(session.state()["phone"], "stopped");
    EXPECT_EQ(session.play("advance 1s").status, 503);

    phone.crashOn.clear();
    answer = session.restart();
    EXPECT_EQ(answer.status, 200) << answer.body;
    EXPECT_EQ(session.transcript(), "boot\nadvance 1s\n");
    EXPECT_EQ(session.play("advance 1s").status, 200);
}

TEST_F(LiveSessionTest, PicturesAndDumpsAreTakenOncePerChange)
{
    auto first = session.shot();
    ASSERT_TRUE(first);
    size_t plays = phone.played.size();
    EXPECT_EQ(session.shot()->bytes, first->bytes);
    session.play("advance 1s");
    auto second = session.shot();
    EXPECT_GT(second->generation, first->generation);
    EXPECT_NE(second->bytes, first->bytes);
    EXPECT_FALSE(second->busy);
    EXPECT_EQ(phone.played.size(), plays + 1);
}

TEST_F(LiveSessionTest, EveryChangeIsAnEvent)
{
    uint64_t before = events.lastId();
    session.play("advance 1s");
    auto published = events.waitAfter(before, std::chrono::milliseconds(0));
    std::vector<std::string> types;
    for (const auto& event : published)
        types.push_back(event.type);
    // The screen's news comes once the session is no longer busy, so that a
    // picture asked for on it is taken afresh, not answered from before.
    EXPECT_EQ(types, (std::vector<std::string> { "busy", "busy", "screen" }));
    EXPECT_EQ(nlohmann::json::parse(published[1].data)["busy"], false);
    EXPECT_EQ(nlohmann::json::parse(published[2].data)["cause"], "play");
}
