#include "LiveBatch.h"

#include "scenario/ScenarioLexer.h"
#include "scenario/ScenarioParser.h"

#include <algorithm>

namespace sim::live {

enum class LineKind { Act, Shape, Boot };

static LineKind kindOfLine(std::string_view line)
{
    LexedLine lexed = ScenarioLexer::splitWords(line);
    if (lexed.error || lexed.words.empty() || lexed.words[0].quoted || lexed.words[0].isOption())
        return LineKind::Act;
    if (lexed.words[0].text == "boot")
        return LineKind::Boot;
    static constexpr std::string_view shapeWords[] = { "system", "device", "locale", "timezone", "missing" };
    bool shape = std::find(std::begin(shapeWords), std::end(shapeWords), lexed.words[0].text) != std::end(shapeWords);
    return shape ? LineKind::Shape : LineKind::Act;
}

std::vector<std::string> hostPathsOf(const Command& command)
{
    switch (command.kind) {
    case CommandKind::CopyFile:
        return { command.as<CopyFileCommand>().hostPath };
    case CommandKind::ExpectShot:
        return { command.as<ExpectShotCommand>().reference };
    case CommandKind::CalendarImport:
        return { command.as<CalendarImportCommand>().hostPath };
    case CommandKind::Music:
        if (const auto& file = command.as<MusicCommand>().artworkFile)
            return { *file };
        return {};
    default:
        return {};
    }
}

static bool isInside(const std::filesystem::path& path, const std::filesystem::path& folder)
{
    auto [end, ignored] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
    return end == folder.end();
}

std::string Confinement::check(const std::string& written) const
{
    std::error_code error;
    std::filesystem::path path = std::filesystem::path(written).is_relative() ? folder / written : std::filesystem::path(written);
    path = std::filesystem::weakly_canonical(path, error);
    if (!error) {
        for (const auto& inside : allowed) {
            auto canonical = std::filesystem::weakly_canonical(inside, error);
            if (!error && isInside(path, canonical))
                return {};
        }
    }
    return "'" + written + "' is outside the output folder and the device root; a live session reads files only there";
}

const Command* LiveBatch::actAtLine(int line) const
{
    // Acts are in line order.
    auto found = std::lower_bound(acts.begin(), acts.end(), line, [](const Command& command, int number) { return command.line < number; });
    return found == acts.end() || found->line != line ? nullptr : &*found;
}

LiveBatch LiveBatch::read(std::string_view text, const Confinement& confinement)
{
    LiveBatch batch;
    // A copy of the text for each kind of line, with the other lines
    // blanked, so that every line keeps its number.
    std::string shapeText, bootText, actsText;
    for (std::string_view line : ScenarioLexer::splitLines(text)) {
        LineKind kind = kindOfLine(line);
        (kind == LineKind::Shape ? shapeText : kind == LineKind::Boot ? bootText : actsText) += line;
        shapeText += "\n";
        bootText += "\n";
        actsText += "\n";
    }

    struct Located {
        int line;
        std::string message;
    };
    std::vector<Located> errors;
    for (const std::string* fresh : { &shapeText, &bootText }) {
        ScenarioParseResult shape = ScenarioParser::parseText(*fresh, fileName);
        for (const Diagnostic& diagnostic : shape.diagnostics)
            errors.push_back({ diagnostic.line, diagnostic.message });
        for (const Command& command : shape.commands) {
            batch.freshHost = true;
            if (command.kind != CommandKind::Boot)
                batch.shape.push_back(command);
        }
    }

    // Read after a `boot` line of its own, which is taken off again.
    ScenarioParseResult acts = ScenarioParser::parseText("boot\n" + actsText, fileName);
    for (const Diagnostic& diagnostic : acts.diagnostics)
        errors.push_back({ diagnostic.line - 1, diagnostic.message });
    for (Command command : acts.commands) {
        if (command.line == 1)
            continue;
        command.line -= 1;
        for (const std::string& path : hostPathsOf(command)) {
            if (std::string problem = confinement.check(path); !problem.empty())
                errors.push_back({ command.line, problem });
        }
        batch.acts.push_back(std::move(command));
    }

    std::stable_sort(errors.begin(), errors.end(), [](const Located& a, const Located& b) { return a.line < b.line; });
    for (const Located& error : errors)
        batch.errors.push_back(Diagnostic { fileName, error.line, error.message }.toString());
    if (!batch.ok()) {
        batch.shape.clear();
        batch.acts.clear();
        batch.freshHost = false;
    }
    batch.actsText = std::move(actsText);
    return batch;
}

}
