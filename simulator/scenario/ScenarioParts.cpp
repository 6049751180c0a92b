#include "ScenarioParts.h"

namespace sim {

static bool actsOnTheHost(const Command& command)
{
    auto phase = commandPhase(command.kind);
    return command.kind != CommandKind::Boot && (phase == CommandPhase::Acting || phase == CommandPhase::Looking);
}

std::vector<ScenarioPart> splitIntoParts(const std::vector<Command>& commands)
{
    std::vector<size_t> boots;
    for (size_t i = 0; i < commands.size(); ++i) {
        if (commands[i].kind == CommandKind::Boot)
            boots.push_back(i);
    }
    if (boots.size() <= 1)
        return { ScenarioPart { commands, 0 } };

    // Each later part starts after the last acting or looking command before its boot.
    std::vector<size_t> starts { 0 };
    for (size_t k = 1; k < boots.size(); ++k) {
        size_t start = boots[k];
        while (start > boots[k - 1] + 1 && !actsOnTheHost(commands[start - 1]))
            --start;
        starts.push_back(start);
    }
    starts.push_back(commands.size());

    std::vector<ScenarioPart> parts;
    auto setupEnd = commands.begin() + static_cast<std::ptrdiff_t>(boots[0]);
    for (size_t k = 0; k < boots.size(); ++k) {
        ScenarioPart part;
        if (k > 0) {
            part.commands.assign(commands.begin(), setupEnd);
            part.replayedSetup = part.commands.size();
        }
        part.commands.insert(part.commands.end(), commands.begin() + static_cast<std::ptrdiff_t>(starts[k]), commands.begin() + static_cast<std::ptrdiff_t>(starts[k + 1]));
        parts.push_back(std::move(part));
    }
    return parts;
}

}
