#pragma once

#include "scenario/Command.h"
#include "scenario/Warnings.h"

#include <vector>

namespace sim {

// Checks made on a whole parsed scenario before anything plays, for what the
// text alone cannot tell the parser but the host and the extension can: a
// weather icon the host has no picture for, a preference the extension does
// not know. Each finding is a warning, so that --strict stops the run before
// it starts.
class ScenarioChecks {
public:
    static void run(const std::vector<Command>&, Warnings&);

private:
    static void checkWeatherIcon(const Command&, const std::optional<std::string>& icon, Warnings&);
};

}
