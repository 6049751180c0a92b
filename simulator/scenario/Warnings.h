#pragma once

#include "Diagnostic.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace sim {

struct Command;

// Where warnings go: things a scenario may do but most likely did not mean
// (a tap nothing took, a preference key the extension does not know). Each
// is printed at once as `FILE:LINE: warning: message` and kept. Under
// --strict every warning is a mistake: checks made before playing stop the
// run when any was found, and a warning met while playing stops it at
// that line (warn() answers false).
class Warnings {
public:
    explicit Warnings(std::ostream& out);
    Warnings();

    bool isStrict() const { return m_strict; }
    void setStrict(bool strict) { m_strict = strict; }

    // Answers whether the scenario may go on: false under --strict.
    bool warn(const std::string& file, int line, const std::string& message);
    bool warn(const Command&, const std::string& message);

    const std::vector<Diagnostic>& list() const { return m_list; }
    size_t count() const { return m_list.size(); }

private:
    std::ostream* m_out;
    bool m_strict { false };
    std::vector<Diagnostic> m_list;
};

}
