#include "WorkerPlayer.h"

#include "ScreenPicture.h"
#include "SettingsPane.h"
#include "WorkerChannel.h"

#include "ScenarioChecks.h"
#include "Simulator.h"
#include "ViewTree.h"
#include "scenario/ScenarioParser.h"

#include <Foundation/NSDate.h>
#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/VirtualClock.h>
#include <UIKit/UIRenderer.h>
#include <UIKit/UIScreen.h>

#include <iostream>
#include <sstream>

namespace sim::live {

using namespace std::chrono_literals;

// How often a long line reports how far it got, and sends a picture.
static constexpr auto progressInterval = 250ms;
static constexpr auto pictureInterval = 1s;

WorkerPlayer::WorkerPlayer(Simulator& simulator, WorkerChannel& channel, std::function<bool()> shouldStop)
    : m_simulator(simulator)
    , m_channel(channel)
    , m_shouldStop(std::move(shouldStop))
{
    NSRunLoop::mainRunLoop()->addAfterEventObserver([this] { afterRunLoopEvent(); });
}

// What a line writes on the standard streams, kept for its answer.
class CapturedOutput {
public:
    CapturedOutput()
        : m_savedOut(std::cout.rdbuf(m_out.rdbuf()))
        , m_savedErr(std::cerr.rdbuf(m_err.rdbuf()))
    {
    }
    ~CapturedOutput() { restore(); }
    void restore()
    {
        if (m_savedOut)
            std::cout.rdbuf(m_savedOut), std::cerr.rdbuf(m_savedErr);
        m_savedOut = m_savedErr = nullptr;
    }
    std::string out() const { return m_out.str(); }
    std::string err() const { return m_err.str(); }

private:
    std::ostringstream m_out;
    std::ostringstream m_err;
    std::streambuf* m_savedOut;
    std::streambuf* m_savedErr;
};

static std::optional<double> lengthOf(const Command& command)
{
    if (command.kind == CommandKind::Advance)
        return command.as<AdvanceCommand>().seconds;
    if (command.kind == CommandKind::Soak)
        return command.as<SoakCommand>().seconds;
    return std::nullopt;
}

bool WorkerPlayer::play(const std::string& fileName, const std::string& text, bool afterBoot)
{
    // Text that continues a running host is read as if after a `boot` line,
    // so that the parser's ordering rules hold; its line numbers are kept.
    ScenarioParseResult parsed = ScenarioParser::parseText(afterBoot ? "boot\n" + text : text, fileName);
    if (!parsed.ok()) {
        auto errors = nlohmann::json::array();
        for (Diagnostic diagnostic : parsed.diagnostics) {
            diagnostic.line -= afterBoot && diagnostic.line > 0 ? 1 : 0;
            errors.push_back(diagnostic.toString());
        }
        return m_channel.send({ { "op", "done" }, { "errors", errors } });
    }
    std::vector<Command> commands;
    for (Command& command : parsed.commands) {
        if (afterBoot && command.line == 1)
            continue;
        command.line -= afterBoot ? 1 : 0;
        commands.push_back(std::move(command));
    }
    // What the checks made before playing find (a preference the extension
    // does not know, a weather icon the host has no picture for).
    std::ostringstream checked;
    Warnings warnings(checked);
    ScenarioChecks::run(commands, warnings);
    if (!checked.str().empty() && !m_channel.send({ { "op", "warnings" }, { "text", checked.str() } }))
        return false;

    // A batch of many short lines reports and stops between lines as a long
    // line does between run-loop events.
    m_nextProgress = std::chrono::steady_clock::now() + progressInterval;
    m_nextPicture = m_nextProgress;
    for (Command& command : commands) {
        if (m_shouldStop())
            return m_channel.send({ { "op", "done" }, { "stopped", true } });

        m_current = &command;
        m_lineStart = VirtualClock::shared().monotonic();
        m_lineLength = lengthOf(command);
        afterRunLoopEvent();
        CapturedOutput captured;
        int status = m_simulator.playLine(command);
        captured.restore();
        m_current = nullptr;

        nlohmann::json line { { "op", "line" }, { "line", command.line }, { "status", status }, { "messages", captured.err() }, { "output", captured.out() } };
        if (auto replacement = m_simulator.replacementLine())
            line["playedAs"] = *replacement;
        if (!m_channel.send(line))
            return false;
        if (status >= ExitCannotPlay || m_simulator.replacementLine())
            break;
    }
    return m_channel.send({ { "op", "done" } });
}

void WorkerPlayer::afterRunLoopEvent()
{
    if (!m_current)
        return;
    auto now = std::chrono::steady_clock::now();
    if (now < m_nextProgress)
        return;
    auto date = NSDate::date();
    nlohmann::json progress { { "op", "progress" }, { "line", m_current->line }, { "command", m_current->text },
        { "time", NSDateFormatter::ISO8601StringFromDate(date.get()) }, { "fraction", nullptr } };
    if (m_lineLength && *m_lineLength > 0)
        progress["fraction"] = std::clamp((VirtualClock::shared().monotonic() - m_lineStart) / *m_lineLength, 0.0, 1.0);
    std::string picture;
    if (now >= m_nextPicture) {
        m_nextPicture = now + pictureInterval;
        picture = screenPNG();
        progress["dump"] = m_simulator.currentDump();
    }
    // A server that went away ends the worker at the next request.
    m_channel.send(progress, picture);
    m_nextProgress = std::chrono::steady_clock::now() + progressInterval;
}

std::string WorkerPlayer::screenPNG() const
{
    CGRect screen = UIScreen::mainScreen()->bounds();
    auto image = UIRenderer::renderWindows(ViewTree::windows(), screen.size, UIScreen::mainScreen()->scale());
    return image ? ScreenPicture::png(image->cairoSurface()) : std::string();
}

bool WorkerPlayer::sendShot()
{
    std::string png = screenPNG();
    if (png.empty())
        return m_channel.send({ { "op", "shot" }, { "error", "the screen could not be drawn" } });
    return m_channel.send({ { "op", "shot" } }, png);
}

bool WorkerPlayer::sendDump()
{
    return m_channel.send({ { "op", "dump" } }, m_simulator.currentDump().dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
}

bool WorkerPlayer::sendSettings()
{
    return m_channel.send({ { "op", "settings" } }, SettingsPane::read().dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
}

}
