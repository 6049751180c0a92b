#pragma once

#include "Command.h"

#include <vector>

namespace sim {

// One boot of a scenario, to be played by a fresh host in a process of its own.
struct ScenarioPart {
    // The scenario's setup (its lines before the first boot), then the part's own lines.
    std::vector<Command> commands;
    // How many of the first commands are the setup played again (0 for the
    // first part, which owns them): they are not counted twice.
    size_t replayedSetup { 0 };
};

// Splits a scenario at its boots. The extension's load-time state (its hooks,
// its single instances) lasts as long as the process, as on the phone, so a
// boot after an earlier one starts a fresh host. Each part plays as a
// scenario of its own would: the lines before the first boot (the setup),
// then the host-shape and world lines that follow the previous part's last
// acting or looking command, its boot, and what follows up to the next part.
// A scenario with at most one boot is one part.
std::vector<ScenarioPart> splitIntoParts(const std::vector<Command>&);

}
