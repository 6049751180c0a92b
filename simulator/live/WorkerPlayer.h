#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace sim {
class Simulator;
struct Command;
}

namespace sim::live {

class WorkerChannel;

// The worker's side of a request: plays scenario text a line at a time on
// the simulator, reporting each line as it ends and, during a long line,
// its progress with a picture now and then; answers pictures, dumps and the
// settings pane. Each method answers false when the channel is gone.
class WorkerPlayer {
public:
    // `shouldStop` is asked between lines: true ends the play there.
    WorkerPlayer(Simulator&, WorkerChannel&, std::function<bool()> shouldStop);

    bool play(const std::string& fileName, const std::string& text, bool afterBoot);
    bool sendShot();
    bool sendDump();
    bool sendSettings();

private:
    void afterRunLoopEvent();
    std::string screenPNG() const;

    Simulator& m_simulator;
    WorkerChannel& m_channel;
    std::function<bool()> m_shouldStop;

    // The line playing now, for progress reports.
    const Command* m_current { nullptr };
    double m_lineStart { 0 };
    std::optional<double> m_lineLength;
    std::chrono::steady_clock::time_point m_nextProgress;
    std::chrono::steady_clock::time_point m_nextPicture;
};

}
