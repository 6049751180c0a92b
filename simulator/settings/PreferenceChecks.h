#pragma once

#include "settings/SettingsPane.h"
#include "scenario/ScenarioParser.h"
#include "scenario/Warnings.h"

#include <vector>

namespace sim {

// The scenario's `prefs` lines checked, before anything plays, against the
// settings pane the extension ships: a key it does not have, or a value its
// cell could not have written, is a warning at that line.
class PreferenceChecks {
public:
    static std::vector<Diagnostic> run(const std::vector<Command>&, const SettingsPane&);
    // Reads the pane beside the build (or KAVELIN_SETTINGS_PANE) and gives
    // each finding to `warnings`; answers how many there were.
    static size_t warn(const std::vector<Command>&, Warnings&);
};

}
