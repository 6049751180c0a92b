#pragma once

#include "WorkerChannel.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace sim::live {

// Scenario text for the phone to play. `afterBoot` text continues a running
// host; other text is a whole scenario from its first line (a replay).
struct PlayRequest {
    std::string fileName;
    std::string text;
    bool afterBoot { true };
};

// What one played line came to.
struct PlayedLine {
    int line { 0 }; // in the text that was played
    int status { 0 }; // an ExitStatus, for this line alone
    std::string messages; // what it wrote on standard error: a failed expect, a mistake, warnings
    std::string output; // what it wrote on standard output: `tree`, a soak's summary
    std::optional<std::string> playedAs; // the line that replays it, when it was stopped short
};

struct PlayOutcome {
    // In order. A line with status 2 or 3 is the last: it ended the play.
    std::vector<PlayedLine> lines;
    // What the checks made before playing found, one warning a line.
    std::string warnings;
    // A stop request ended the play between two lines.
    bool stoppedBetweenLines { false };
    // The phone itself stopped (crashed, or ended because it did not stop).
    bool phoneStopped { false };
    std::string stopMessage;
};

// The simulated phone as the live session drives it: a worker process in
// kavelin-sim, a stand-in in tests. One caller at a time, except for
// requestStop() and kill(), which any thread may call while a play runs.
class Phone {
public:
    using ProgressHandler = std::function<void(const WorkerMessage&)>;

    virtual ~Phone() = default;

    // Ends the host it runs, if any, and starts a fresh one. Empty on
    // success, else why it could not start.
    virtual std::string start() = 0;
    virtual PlayOutcome play(const PlayRequest&, const ProgressHandler&) = 0;
    // The screen as a PNG, the dump as JSON text, the settings pane as JSON
    // text; nothing when the phone is gone.
    virtual std::optional<std::string> shot() = 0;
    virtual std::optional<std::string> dump() = 0;
    virtual std::optional<std::string> settings() = 0;

    // Asks a play to stop between two run-loop events, where it can.
    virtual void requestStop() = 0;
    // Ends the phone at once (a play that does not stop).
    virtual void kill() = 0;
};

}
