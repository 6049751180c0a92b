#pragma once

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace sim {

// The rules a soak run checks the live objects against, kept apart from the
// run so that they can be tested on their own.
class SoakInvariants {
public:
    // What decides whether the panel may show.
    struct PanelSituation {
        bool enabled { true };
        int location { 1 }; // 1 lock screen, 2 notification centre, 3 search from the right, 4 from the top
        // Set by a full-screen alert and cleared only by the alert's own
        // dismiss action, even when the alert went away another way.
        bool fullscreenAlertFlag { false };
        bool callOrFaceTime { false }; // a call or a FaceTime call, incoming or under way
        std::optional<long long> lastSearchEdge; // the edge the search page last presented from
    };
    // Whether the panel's hidden flag must be set a second after the world
    // last changed; absent when nothing in the extension decides it.
    static std::optional<bool> expectedPanelHidden(const PanelSituation&);

    // A count (live objects, pending run-loop events) at the end of a run
    // stays within a quarter of what it was after the first day, and within
    // `slack` of it for small counts: anything more is a leak.
    static bool staysFlat(long baseline, long now, long slack);

    // Each notification a soak run delivers carries a token with its serial
    // number in its title, "[17]".
    static std::string token(int serial);
    // The texts among `shown` that hold the token of a removed notification.
    static std::vector<std::string> staleTexts(const std::vector<std::string>& shown, const std::unordered_set<int>& removedSerials);
};

}
