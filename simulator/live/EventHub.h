#pragma once

#include <nlohmann/json.hpp>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace sim::live {

// The live session's news for the event stream: each event has a type and
// JSON data, numbered in order. Readers wait for the events after the last
// one they saw; a reader that fell far behind gets the most recent ones.
class EventHub {
public:
    struct Event {
        uint64_t id { 0 };
        std::string type;
        std::string data; // JSON text, one line
    };
    static constexpr size_t kept = 256;
    static constexpr int mostReaders = 16;

    void publish(const std::string& type, const nlohmann::json& data);
    uint64_t lastId() const;
    // The events after `lastId`, as soon as there is one; empty after the
    // timeout or once the hub is closed.
    std::vector<Event> waitAfter(uint64_t lastId, std::chrono::milliseconds timeout);

    // Readers hold a server thread each, so there are at most `mostReaders`.
    bool enterReader();
    void leaveReader();

    // Wakes every reader for good: the server is stopping.
    void close();
    bool isClosed() const;

private:
    mutable std::mutex m_lock;
    std::condition_variable m_changed;
    std::deque<Event> m_events;
    uint64_t m_lastId { 0 };
    int m_readers { 0 };
    bool m_closed { false };
};

// An event in the stream's wire form: "id:", "event:" and "data:" lines.
std::string serverSentEvent(const EventHub::Event&);

}
