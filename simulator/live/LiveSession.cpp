#include "LiveSession.h"

#include "Simulator.h"
#include "scenario/ScenarioLexer.h"
#include "scenario/ScenarioParser.h"
#include "scenario/ScenarioParts.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace sim::live {

using namespace std::chrono_literals;

// How long a request waits for the phone before it answers that it is busy,
// and how long a cancelled line has to stop before its phone is ended.
static constexpr auto waitForPhone = 2s;
static constexpr auto waitForStop = 2s;
static constexpr const char* transcriptName = "transcript";

// What one request made of the phone, gathered for its answer.
struct LiveSession::Report {
    int played { 0 };
    std::vector<std::string> failed;
    std::vector<std::string> errors;
    std::vector<std::string> warnings;
    std::vector<std::string> dropped;
    std::string output;
    bool mistake { false }; // a line that could not play: 400
    bool cancelled { false };
    std::string phoneProblem; // the phone failed or stopped: 500
};

// Marks the session busy for a request's whole time with the phone, and
// tells the page when it starts and ends.
class LiveSession::BusyScope {
public:
    BusyScope(LiveSession& session, std::string what)
        : m_session(session)
    {
        {
            std::lock_guard lock(session.m_stateLock);
            session.m_busyWith = what;
            session.m_lastProgress = nullptr;
        }
        session.m_killedForCancel = false;
        session.m_busy = true;
        session.m_events.publish("busy", { { "busy", true }, { "line", what } });
    }
    ~BusyScope()
    {
        {
            std::lock_guard lock(m_session.m_stateLock);
            m_session.m_busyWith.clear();
            m_session.m_busy = false;
        }
        m_session.m_idle.notify_all();
        m_session.m_events.publish("busy", { { "busy", false } });
    }

private:
    LiveSession& m_session;
};

LiveSession::LiveSession(Phone& phone, EventHub& events, Confinement confinement)
    : m_phone(phone)
    , m_events(events)
    , m_confinement(std::move(confinement))
{
}

static std::optional<std::string> readScenario(const std::string& path)
{
    if (path == "-")
        return std::string(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    if (!in)
        return std::nullopt;
    return text.str();
}

int LiveSession::open(const std::optional<std::string>& scenarioPath, const std::string& withoutScenario)
{
    std::string fileName = transcriptName;
    std::string text = withoutScenario;
    if (scenarioPath) {
        auto read = readScenario(*scenarioPath);
        if (!read) {
            std::cerr << *scenarioPath << ": cannot read the scenario\n";
            return ExitCannotPlay;
        }
        fileName = *scenarioPath == "-" ? "<stdin>" : *scenarioPath;
        text = std::move(*read);
    }
    ScenarioParseResult parsed = ScenarioParser::parseText(text, fileName);
    bool booted = std::any_of(parsed.commands.begin(), parsed.commands.end(), [](const Command& c) { return c.kind == CommandKind::Boot; });
    if (parsed.ok() && !booted) {
        // The session shows a running host: a scenario that only sets the world up gets its `boot`.
        text += "\nboot\n";
        parsed = ScenarioParser::parseText(text, fileName);
    }
    if (!parsed.ok()) {
        std::cerr << parsed.diagnosticText();
        return ExitCannotPlay;
    }
    if (auto parts = splitIntoParts(parsed.commands); parts.size() > 1) {
        // One phone shows one boot: the last part, its setup and its own
        // lines, each kept on its line so that messages name the file's lines.
        const std::vector<Command>& last = parts.back().commands;
        std::vector<std::string_view> lines = ScenarioLexer::splitLines(text);
        std::string kept;
        for (size_t index = 0, next = 0; index < lines.size(); ++index) {
            bool inPart = next < last.size() && last[next].line == static_cast<int>(index + 1);
            kept += inPart ? std::string(lines[index]) + "\n" : "\n";
            next += inPart;
        }
        std::cerr << "kavelin-sim: " << fileName << " boots " << parts.size() << " times; the live preview plays its last boot (line "
                  << std::find_if(last.begin(), last.end(), [](const Command& c) { return c.kind == CommandKind::Boot; })->line << ")\n";
        text = std::move(kept);
        parsed = ScenarioParser::parseText(text, fileName);
    }

    std::lock_guard phone(m_phoneLock);
    if (std::string error = m_phone.start(); !error.empty()) {
        std::cerr << "kavelin-sim: " << error << "\n";
        return ExitHostFailed;
    }
    PlayOutcome outcome = m_phone.play({ fileName, text, false }, [this](const WorkerMessage& message) { onProgress(message); });
    LiveTranscript::Problems problems;
    LiveTranscript played = LiveTranscript::fromPlayed(parsed.commands, outcome, problems);
    for (const PlayedLine& line : outcome.lines)
        std::cout << line.output, std::cerr << line.messages;
    if (outcome.phoneStopped && m_shuttingDown)
        return ExitSuccess;
    if (outcome.phoneStopped) {
        std::cerr << "kavelin-sim: " << outcome.stopMessage << "\n";
        return ExitHostFailed;
    }
    int worst = ExitSuccess;
    for (const PlayedLine& line : outcome.lines)
        worst = std::max(worst, line.status);
    if (worst >= ExitCannotPlay)
        return worst;
    {
        std::lock_guard lock(m_stateLock);
        m_transcript = std::move(played);
    }
    changed("start");
    return ExitSuccess;
}

void LiveSession::onProgress(const WorkerMessage& message)
{
    const auto& header = message.header;
    nlohmann::json progress { { "line", header.value("command", "") }, { "time", header.value("time", "") }, { "fraction", header.value("fraction", nlohmann::json()) } };
    {
        std::lock_guard lock(m_stateLock);
        m_lastProgress = progress;
    }
    m_events.publish("progress", progress);
    if (message.payload.empty())
        return;
    // A picture taken during the line: the screen as it is now.
    uint64_t generation;
    {
        std::lock_guard lock(m_stateLock);
        generation = ++m_generation;
        m_shot = Cached { message.payload, generation };
        if (header.contains("dump"))
            m_dump = Cached { header["dump"].dump(2, ' ', false, nlohmann::json::error_handler_t::replace), generation };
    }
    m_events.publish("screen", { { "generation", generation }, { "cause", "progress" }, { "time", progress["time"] } });
}

void LiveSession::changed(const char* cause)
{
    uint64_t generation;
    size_t lines;
    {
        std::lock_guard lock(m_stateLock);
        generation = ++m_generation;
        lines = m_transcript.lineCount();
    }
    m_events.publish("screen", { { "generation", generation }, { "cause", cause }, { "transcriptLines", lines } });
}

void LiveSession::phoneStopped(const std::string& message, Report& report)
{
    report.phoneProblem = message;
    {
        std::lock_guard lock(m_stateLock);
        m_phoneProblem = message;
    }
    m_events.publish("phone", { { "state", "stopped" }, { "message", message } });
}

LiveSession::Answer LiveSession::play(std::string_view text)
{
    LiveBatch batch = LiveBatch::read(text, m_confinement);
    if (!batch.ok())
        return { 400, { { "ok", false }, { "errors", batch.errors } } };

    std::unique_lock phone(m_phoneLock, std::defer_lock);
    if (!phone.try_lock_for(waitForPhone) || m_shuttingDown) {
        std::lock_guard lock(m_stateLock);
        std::string what = m_busyWith.empty() ? std::string("another request") : "'" + m_busyWith + "'";
        return { 409, { { "ok", false }, { "busy", true }, { "errors", { "the phone is busy playing " + what + "; wait, or cancel it" } } } };
    }
    {
        std::lock_guard lock(m_stateLock);
        if (!m_phoneProblem.empty())
            return { 503, { { "ok", false }, { "phone", "stopped" }, { "errors", { m_phoneProblem + "; a fresh phone starts with POST /restart" } } } };
    }
    Report report;
    std::vector<const char*> changes;
    {
        BusyScope busy(*this, batch.acts.empty() ? std::string("a fresh host") : batch.acts.front().text);
        playBatch(batch, report, changes);
    }
    // Told once the session is no longer busy, so that a picture asked for
    // on the news is taken afresh rather than answered from before the play.
    for (const char* cause : changes)
        changed(cause);
    return answerFor(report);
}

void LiveSession::playBatch(const LiveBatch& batch, Report& report, std::vector<const char*>& changes)
{
    if (batch.freshHost) {
        LiveTranscript previous;
        {
            std::lock_guard lock(m_stateLock);
            previous = m_transcript;
        }
        LiveTranscript candidate = previous;
        for (const Command& command : batch.shape)
            candidate.applyShape(command);
        if (!replay(candidate, report) && report.phoneProblem.empty()) {
            // The new shape does not boot (an unknown locale): back to the old one.
            Report restored;
            replay(previous, restored);
            report.mistake = true;
        } else if (report.phoneProblem.empty()) {
            report.played += static_cast<int>(batch.shape.size());
        }
        changes.push_back("restart");
    }
    if (!batch.acts.empty() && report.phoneProblem.empty() && !report.mistake) {
        playActs(batch, report);
        changes.push_back("play");
    }
}

void LiveSession::playActs(const LiveBatch& batch, Report& report)
{
    PlayOutcome outcome = m_phone.play({ LiveBatch::fileName, batch.actsText, true }, [this](const WorkerMessage& message) { onProgress(message); });
    for (std::string_view rest = outcome.warnings; !rest.empty();) {
        std::string_view warning = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), warning.size() + 1));
        if (!warning.empty())
            report.warnings.emplace_back(warning);
    }
    for (const PlayedLine& line : outcome.lines) {
        report.output += line.output;
        const Command* command = batch.actAtLine(line.line);
        std::string message = trimmedMessage(line.messages);
        if (line.status == ExitSuccess && command) {
            std::lock_guard lock(m_stateLock);
            m_transcript.append(*command, line.playedAs.value_or(command->text));
            ++report.played;
            report.cancelled = report.cancelled || line.playedAs;
            if (!message.empty())
                report.warnings.push_back(message);
        } else if (line.status == ExitExpectationFailed) {
            report.failed.push_back(message);
        } else if (line.status == ExitHostFailed) {
            report.errors.push_back(message);
            phoneStopped("the host failed: " + message, report);
        } else {
            report.errors.push_back(message);
            report.mistake = true;
        }
    }
    report.cancelled = report.cancelled || outcome.stoppedBetweenLines;
    if (!outcome.phoneStopped)
        return;
    if (m_shuttingDown) {
        report.phoneProblem = "the server is stopping";
    } else if (m_killedForCancel) {
        // A line that did not stop when asked: a fresh phone replays what had played.
        report.cancelled = true;
        LiveTranscript played;
        {
            std::lock_guard lock(m_stateLock);
            played = m_transcript;
        }
        replay(played, report);
    } else {
        phoneStopped(outcome.stopMessage, report);
    }
}

bool LiveSession::replay(const LiveTranscript& transcript, Report& report)
{
    m_killedForCancel = false;
    if (std::string error = m_phone.start(); !error.empty()) {
        phoneStopped(error, report);
        return false;
    }
    {
        std::lock_guard lock(m_stateLock);
        m_phoneProblem.clear();
    }
    m_events.publish("phone", { { "state", "started" } });
    std::string text = transcript.text();
    ScenarioParseResult parsed = ScenarioParser::parseText(text, transcriptName);
    if (!parsed.ok()) {
        report.errors.push_back(trimmedMessage(parsed.diagnosticText()));
        return false;
    }
    PlayOutcome outcome = m_phone.play({ transcriptName, text, false }, [this](const WorkerMessage& message) { onProgress(message); });
    LiveTranscript::Problems problems;
    LiveTranscript played = LiveTranscript::fromPlayed(parsed.commands, outcome, problems);
    for (const PlayedLine& line : outcome.lines)
        report.output += line.output;
    report.failed.insert(report.failed.end(), problems.failed.begin(), problems.failed.end());
    report.errors.insert(report.errors.end(), problems.errors.begin(), problems.errors.end());
    report.dropped.insert(report.dropped.end(), problems.dropped.begin(), problems.dropped.end());
    if (outcome.phoneStopped && !m_shuttingDown) {
        if (m_killedForCancel && played.isBooted()) {
            report.cancelled = true;
            return replay(played, report);
        }
        phoneStopped(outcome.stopMessage, report);
        return false;
    }
    if (!played.isBooted())
        return false;
    std::lock_guard lock(m_stateLock);
    m_transcript = std::move(played);
    return true;
}

LiveSession::Answer LiveSession::answerFor(const Report& report) const
{
    bool ok = report.failed.empty() && report.errors.empty() && report.phoneProblem.empty();
    nlohmann::json body { { "ok", ok }, { "played", report.played } };
    if (!report.failed.empty())
        body["failed"] = report.failed;
    if (!report.errors.empty() || !report.phoneProblem.empty()) {
        auto errors = nlohmann::json(report.errors);
        if (!report.phoneProblem.empty() && std::find(report.errors.begin(), report.errors.end(), report.phoneProblem) == report.errors.end())
            errors.push_back(report.phoneProblem);
        body["errors"] = errors;
    }
    if (!report.warnings.empty())
        body["warnings"] = report.warnings;
    if (!report.dropped.empty())
        body["dropped"] = report.dropped;
    if (!report.output.empty())
        body["output"] = report.output;
    if (report.cancelled)
        body["cancelled"] = true;
    if (!report.phoneProblem.empty()) {
        body["phone"] = "stopped";
        return { 500, body };
    }
    return { report.mistake ? 400 : 200, body };
}

LiveSession::Answer LiveSession::cancel()
{
    if (!m_busy)
        return { 200, { { "ok", true }, { "cancelled", false } } };
    m_phone.requestStop();
    std::unique_lock lock(m_stateLock);
    if (m_idle.wait_for(lock, waitForStop, [&] { return !m_busy; }))
        return { 200, { { "ok", true }, { "cancelled", true } } };
    // The line does not look at the stop request (a soak): the phone is
    // ended, and a fresh one replays what had played before it.
    m_killedForCancel = true;
    m_phone.kill();
    return { 200, { { "ok", true }, { "cancelled", true }, { "restarting", true } } };
}

LiveSession::Answer LiveSession::restart()
{
    std::unique_lock phone(m_phoneLock, std::defer_lock);
    if (!phone.try_lock_for(waitForPhone) || m_shuttingDown)
        return { 409, { { "ok", false }, { "busy", true }, { "errors", { "the phone is busy; wait, or cancel what it plays" } } } };
    Report report;
    {
        BusyScope busy(*this, "a fresh host");
        LiveTranscript transcript;
        {
            std::lock_guard lock(m_stateLock);
            transcript = m_transcript;
        }
        replay(transcript, report);
    }
    changed("restart");
    return answerFor(report);
}

template<typename Fetch>
std::optional<LiveSession::Snapshot> LiveSession::snapshot(std::optional<Cached> LiveSession::*cache, Fetch fetch)
{
    auto cached = [&](bool busy) -> std::optional<Snapshot> {
        std::lock_guard lock(m_stateLock);
        const auto& kept = this->*cache;
        if (!kept)
            return std::nullopt;
        return Snapshot { kept->bytes, kept->generation, busy || kept->generation != m_generation };
    };
    // The one taken since the last change, if any (m_stateLock held).
    auto current = [&]() -> std::optional<Snapshot> {
        const auto& kept = this->*cache;
        if (kept && kept->generation == m_generation)
            return Snapshot { kept->bytes, kept->generation, false };
        return std::nullopt;
    };
    {
        std::lock_guard lock(m_stateLock);
        if (auto snapshot = current())
            return snapshot;
    }
    std::unique_lock phone(m_phoneLock, std::defer_lock);
    if (m_busy || !phone.try_lock_for(waitForPhone))
        return cached(true);
    uint64_t generation;
    {
        std::lock_guard lock(m_stateLock);
        // Another request may have taken it while this one waited.
        if (auto snapshot = current())
            return snapshot;
        if (!m_phoneProblem.empty())
            return cached(false);
        generation = m_generation;
    }
    std::optional<std::string> bytes = fetch();
    if (!bytes)
        return cached(false);
    std::lock_guard lock(m_stateLock);
    this->*cache = Cached { *bytes, generation };
    return Snapshot { std::move(*bytes), generation, false };
}

std::optional<LiveSession::Snapshot> LiveSession::shot()
{
    return snapshot(&LiveSession::m_shot, [this] { return m_phone.shot(); });
}

std::optional<LiveSession::Snapshot> LiveSession::dump()
{
    return snapshot(&LiveSession::m_dump, [this] { return m_phone.dump(); });
}

std::optional<std::string> LiveSession::settings()
{
    std::unique_lock phone(m_phoneLock, std::defer_lock);
    if (m_busy || !phone.try_lock_for(waitForPhone))
        return std::nullopt;
    return m_phone.settings();
}

std::string LiveSession::transcript() const
{
    std::lock_guard lock(m_stateLock);
    return m_transcript.text();
}

nlohmann::json LiveSession::state() const
{
    std::lock_guard lock(m_stateLock);
    nlohmann::json state { { "busy", m_busy.load() }, { "generation", m_generation }, { "transcriptLines", m_transcript.lineCount() },
        { "phone", m_phoneProblem.empty() ? "running" : "stopped" } };
    if (m_busy)
        state["line"] = m_busyWith, state["progress"] = m_lastProgress;
    if (!m_phoneProblem.empty())
        state["problem"] = m_phoneProblem;
    return state;
}

void LiveSession::shutDown()
{
    m_shuttingDown = true;
    m_phone.kill();
}

}
