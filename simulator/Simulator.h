#pragma once

#include "BuildPaths.h"
#include "DeviceRoot.h"
#include "scenario/Command.h"

#include <UIKit/RecordPolicy.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class SimulatedHost;

namespace sim {

// Exit statuses of kavelin-sim.
enum ExitStatus : int {
    ExitSuccess = 0,
    ExitExpectationFailed = 1,
    ExitCannotPlay = 2,
    ExitHostFailed = 3,
};

// One run of the simulated phone: the device's file system, the host, the
// extension loaded into it, and the commands of a scenario played against
// them in order. Messages go to standard error; what `shot` and `dump`
// write lands in the output folder.
class Simulator {
public:
    Simulator(std::filesystem::path outputDirectory, std::filesystem::path requestedRoot);
    ~Simulator();

    // Prepares the device root and the output folder. Empty on success.
    std::string prepare();
    // Plays the commands; answers the exit status.
    int play(const std::vector<Command>&);

    const std::vector<std::filesystem::path>& writtenFiles() const { return m_writtenFiles; }
    // What expect-shot does with reference pictures (default: record missing ones).
    void setRecordPolicy(RecordPolicy policy) { m_recordPolicy = policy; }

    // For a session that plays one line at a time (the live preview): the
    // status of that line alone (ExitExpectationFailed when it was an
    // `expect` that did not hold).
    int playLine(const Command&);
    // Asked between run-loop events while `advance` runs: answering true
    // stops the clock there (at the next whole millisecond).
    void setStopRequest(std::function<bool()> shouldStop) { m_shouldStop = std::move(shouldStop); }
    // After a line that was stopped short: the line that replays what it
    // did (`advance 12345ms`).
    const std::optional<std::string>& replacementLine() const { return m_replacementLine; }
    // The dump of the screen and the host as they are now.
    nlohmann::json currentDump() const { return dump(); }

private:
    // Each answers false when the scenario cannot go on; m_status says why.
    bool execute(const Command&);
    bool executeShape(const Command&);
    bool executeWorld(const Command&);
    bool executeActing(const Command&);
    bool executeLooking(const Command&);
    bool boot(const Command&);
    void advanceWatched(double seconds);

    bool fail(const Command&, int status, const std::string& message);
    bool warn(const Command&, const std::string& message);
    // A path a scenario wrote, relative to the scenario's folder unless absolute.
    static std::filesystem::path hostPathFor(const Command&, const std::string& written);
    bool importCalendar(const Command&);
    // The absolute path of a picture that decodes, or nothing (having failed).
    std::optional<std::string> artworkFile(const Command&, const std::string& written);
    bool notSupportedYet(const Command&);
    void settle();
    double resolveTime(const TimeSpec&) const;
    std::filesystem::path outputPath(const std::string& fileName) const;
    nlohmann::json dump() const;

    std::filesystem::path m_outputDirectory;
    std::filesystem::path m_requestedRoot;
    BuildPaths m_paths;
    DeviceRoot m_root;
    std::unique_ptr<SimulatedHost> m_host;
    bool m_booted { false };
    int m_status { ExitSuccess };
    int m_failedExpectations { 0 };
    std::vector<std::filesystem::path> m_writtenFiles;
    RecordPolicy m_recordPolicy;
    std::function<bool()> m_shouldStop;
    std::optional<std::string> m_replacementLine;
};

}
