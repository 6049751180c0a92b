#include "LiveTranscript.h"

#include <algorithm>
#include <optional>

namespace sim::live {

std::string trimmedMessage(const std::string& text)
{
    size_t end = text.find_last_not_of(" \n\r\t");
    return end == std::string::npos ? std::string() : text.substr(0, end + 1);
}

std::string LiveTranscript::shapeKey(const Command& command)
{
    switch (command.kind) {
    case CommandKind::System:
    case CommandKind::Device:
    case CommandKind::Locale:
    case CommandKind::TimeZone:
        return std::string(commandName(command.kind));
    case CommandKind::MissingClass:
        return "missing class " + command.as<MissingClassCommand>().className;
    case CommandKind::MissingIvar:
        return "missing ivar " + command.as<MissingIvarCommand>().className + " " + command.as<MissingIvarCommand>().ivarName;
    default:
        return {};
    }
}

std::string LiveTranscript::text() const
{
    std::string text;
    for (const Line& line : m_beforeBoot)
        text += line.text + "\n";
    text += "boot\n";
    for (const Line& line : m_afterBoot)
        text += line.text + "\n";
    return text;
}

void LiveTranscript::append(const Command& command, const std::string& text)
{
    if (command.kind == CommandKind::Boot)
        return appendBoot();
    (m_booted ? m_afterBoot : m_beforeBoot).push_back({ text, command.kind, shapeKey(command) });
}

void LiveTranscript::applyShape(const Command& command)
{
    std::string key = shapeKey(command);
    auto same = std::find_if(m_beforeBoot.begin(), m_beforeBoot.end(), [&](const Line& line) { return !key.empty() && line.shapeKey == key; });
    if (same != m_beforeBoot.end())
        *same = { command.text, command.kind, key };
    else
        m_beforeBoot.push_back({ command.text, command.kind, key });
}

LiveTranscript LiveTranscript::fromPlayed(const std::vector<Command>& commands, const PlayOutcome& outcome, Problems& problems)
{
    LiveTranscript transcript;
    // Commands are in line order.
    auto byLine = [&](int number) {
        auto found = std::lower_bound(commands.begin(), commands.end(), number, [](const Command& command, int line) { return command.line < line; });
        return found != commands.end() && found->line == number ? found : commands.end();
    };
    // The first line not kept because the play ended: the line that could
    // not play, the one after a line stopped short, or the one after the
    // last reported when the phone itself stopped.
    std::optional<int> firstDropped;
    for (const PlayedLine& played : outcome.lines) {
        auto command = byLine(played.line);
        if (played.status >= 2 || command == commands.end()) {
            problems.errors.push_back(trimmedMessage(played.messages));
            firstDropped = played.line;
            break;
        }
        if (played.status == 1) {
            problems.failed.push_back(trimmedMessage(played.messages));
            continue;
        }
        transcript.append(*command, played.playedAs.value_or(command->text));
        if (played.playedAs) {
            firstDropped = played.line + 1;
            break;
        }
    }
    if (!firstDropped && outcome.phoneStopped)
        firstDropped = outcome.lines.empty() ? 0 : outcome.lines.back().line + 1;
    if (firstDropped) {
        for (const Command& command : commands) {
            if (command.line >= *firstDropped)
                problems.dropped.push_back(command.text);
        }
    }
    return transcript;
}

}
