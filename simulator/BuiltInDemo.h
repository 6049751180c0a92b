#pragma once

#include <string_view>

namespace sim {

// The scenario kavelin-sim plays without arguments: a representative
// morning on the lock screen, written to screenshots and a dump.
std::string_view builtInDemoScenario();

}
