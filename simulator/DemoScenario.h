#pragma once

#include <string_view>

namespace sim {

// The built-in demo: simulator/demo.scenario, built into the program so that
// it plays from any folder and from an installed copy.
std::string_view demoScenario();
// The name its messages give it.
inline constexpr const char* demoScenarioName = "demo.scenario";

}
