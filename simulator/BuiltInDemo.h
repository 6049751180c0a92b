#pragma once

#include <string>
#include <vector>

namespace sim {

// One boot of the host in the built-in demo.
struct DemoPart {
    std::string name;
    std::string scenario;
};

// What kavelin-sim plays without arguments: a representative morning on the
// lock screen with every overlay opened, then the panel placed in the
// notification centre and on the search page, written to screenshots and a dump.
const std::vector<DemoPart>& builtInDemo();

}
