#pragma once

#include "EventHub.h"
#include "LiveBatch.h"
#include "LiveTranscript.h"
#include "Phone.h"

#include <nlohmann/json.hpp>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim::live {

// A live preview's state between requests: the phone, the transcript of
// what it played, the last picture and dump, and the events that tell the
// page what changed. Every change is scenario lines played on the phone;
// a line only a fresh host can take restarts the phone and replays the
// transcript with it. Requests come from many server threads: one of them
// talks to the phone at a time, and while a long line plays the others
// answer from the last picture and dump.
class LiveSession {
public:
    // An HTTP status and a JSON body.
    struct Answer {
        int status { 200 };
        nlohmann::json body;
    };
    struct Snapshot {
        std::string bytes;
        uint64_t generation { 0 };
        bool busy { false }; // a line is playing: this is the last one taken
    };

    LiveSession(Phone&, EventHub&, Confinement);

    // Starts the phone and plays the starting scenario (`-` reads standard
    // input), or `withoutScenario` when there is none. Mistakes go to
    // standard error; answers an ExitStatus.
    int open(const std::optional<std::string>& scenarioPath, const std::string& withoutScenario = "boot\n");

    Answer play(std::string_view text);
    Answer cancel();
    Answer restart();
    // Nothing when there is no picture to give (the phone is busy or stopped).
    std::optional<Snapshot> shot();
    std::optional<Snapshot> dump();
    std::optional<std::string> settings();
    std::string transcript() const;
    nlohmann::json state() const;

    // Ends a play in progress for good, and every later one: the server is stopping.
    void shutDown();

private:
    struct Report;
    class BusyScope;
    struct Cached {
        std::string bytes;
        uint64_t generation { 0 };
    };

    bool replay(const LiveTranscript&, Report&);
    // Causes of the screen events to send once the batch is over.
    void playBatch(const LiveBatch&, Report&, std::vector<const char*>& changes);
    void playActs(const LiveBatch&, Report&);
    Answer answerFor(const Report&) const;
    void phoneStopped(const std::string& message, Report&);
    void changed(const char* cause);
    void onProgress(const WorkerMessage&);
    template<typename Fetch>
    std::optional<Snapshot> snapshot(std::optional<Cached> LiveSession::*cache, Fetch);

    Phone& m_phone;
    EventHub& m_events;
    Confinement m_confinement;

    // Held while a request talks to the phone.
    std::timed_mutex m_phoneLock;

    // The rest is guarded by m_stateLock.
    mutable std::mutex m_stateLock;
    std::condition_variable m_idle;
    LiveTranscript m_transcript;
    uint64_t m_generation { 0 };
    std::optional<Cached> m_shot;
    std::optional<Cached> m_dump;
    std::string m_busyWith;
    nlohmann::json m_lastProgress;
    std::string m_phoneProblem; // why the phone stopped; empty while it runs

    std::atomic<bool> m_busy { false };
    std::atomic<bool> m_killedForCancel { false };
    std::atomic<bool> m_shuttingDown { false };
};

}
