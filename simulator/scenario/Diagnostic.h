#pragma once

#include <string>

namespace sim {

// A message about one line of a scenario: a mistake the parser found, or a
// warning.
struct Diagnostic {
    std::string file;
    int line { 0 }; // 0 when the problem is the file as a whole
    std::string message;

    // "FILE:LINE: message", or "FILE: message" without a line.
    std::string toString() const;
};

}
