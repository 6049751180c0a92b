#pragma once

#include "BuildPaths.h"
#include "DeviceRoot.h"
#include "scenario/Command.h"
#include "scenario/Warnings.h"

#include <CoreGraphics/CGGeometry.h>

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

// What a run did, for the summary line.
struct RunCounts {
    size_t played { 0 };
    size_t expectsHeld { 0 };
    size_t expectsFailed { 0 };
    size_t filesWritten { 0 };
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
    // Plays one command and lets what it started settle. False when the
    // scenario cannot go on; status() says why.
    bool playCommand(const Command&);
    // The exit status so far: ExitExpectationFailed once an expect failed.
    int status() const;

    // Where warnings met while playing go (by default, standard error).
    void setWarnings(Warnings& warnings) { m_warnings = &warnings; }
    // Each acting command says on standard error what it reached.
    void setTrace(bool trace) { m_trace = trace; }

    const RunCounts& counts() const { return m_counts; }
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

    bool advanceUntil(const Command&);
    // Stops a run of the clock that began at `start` at the next whole
    // millisecond, and keeps the line that replays it (replacementLine()).
    void stopClockShort(double start);
    bool tree(const Command&);
    // Runs the virtual clock for `seconds`, showing progress when that takes long.
    void runClock(const Command&, double seconds);
    // Where a finger command lands: warns of an ambiguous target, checks the
    // kind of view (`requiredClass` for slide, pick and scroll) and of a
    // touch nothing takes, and traces. Nothing when the command cannot go on.
    std::optional<CGPoint> aimFinger(const Command&, const Target&, const char* requiredClass = nullptr);
    void trace(const Command&, const std::string& what);
    nlohmann::json hostDump() const;

    bool fail(const Command&, int status, const std::string& message);
    // A path a scenario wrote, relative to the scenario's folder unless absolute.
    static std::filesystem::path hostPathFor(const Command&, const std::string& written);
    bool importCalendar(const Command&);
    // The absolute path of a picture that decodes, or nothing (having failed).
    std::optional<std::string> artworkFile(const Command&, const std::string& written);
    // Counts an expectation; a failed one prints its message.
    void expectation(const Command&, bool held, const std::string& failure = {});
    // A warning; false (and the run stops with exit 2) under --strict.
    bool warn(const Command&, const std::string& message);
    void wrote(const std::filesystem::path&);
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
    RunCounts m_counts;
    std::vector<std::filesystem::path> m_writtenFiles;
    RecordPolicy m_recordPolicy;
    std::function<bool()> m_shouldStop;
    std::optional<std::string> m_replacementLine;
    Warnings m_ownWarnings;
    Warnings* m_warnings { &m_ownWarnings };
    bool m_trace { false };
};

}
