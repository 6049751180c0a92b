#include "EventHub.h"

namespace sim::live {

void EventHub::publish(const std::string& type, const nlohmann::json& data)
{
    std::lock_guard lock(m_lock);
    m_events.push_back({ ++m_lastId, type, data.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) });
    if (m_events.size() > kept)
        m_events.pop_front();
    m_changed.notify_all();
}

uint64_t EventHub::lastId() const
{
    std::lock_guard lock(m_lock);
    return m_lastId;
}

std::vector<EventHub::Event> EventHub::waitAfter(uint64_t lastId, std::chrono::milliseconds timeout)
{
    std::unique_lock lock(m_lock);
    m_changed.wait_for(lock, timeout, [&] { return m_closed || m_lastId > lastId; });
    std::vector<Event> events;
    if (m_closed)
        return events;
    for (const Event& event : m_events) {
        if (event.id > lastId)
            events.push_back(event);
    }
    return events;
}

bool EventHub::enterReader()
{
    std::lock_guard lock(m_lock);
    if (m_closed || m_readers >= mostReaders)
        return false;
    ++m_readers;
    return true;
}

void EventHub::leaveReader()
{
    std::lock_guard lock(m_lock);
    --m_readers;
}

void EventHub::close()
{
    std::lock_guard lock(m_lock);
    m_closed = true;
    m_changed.notify_all();
}

bool EventHub::isClosed() const
{
    std::lock_guard lock(m_lock);
    return m_closed;
}

std::string serverSentEvent(const EventHub::Event& event)
{
    // The data is one line of JSON, so one "data:" line carries it.
    return "id: " + std::to_string(event.id) + "\nevent: " + event.type + "\ndata: " + event.data + "\n\n";
}

}
