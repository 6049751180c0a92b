#pragma once

#include "PageFiles.h"

#include <httplib.h>

#include <atomic>
#include <filesystem>
#include <string>

namespace sim::live {

class EventHub;
class LiveSession;

// Every request of the live preview, from checks to answer, with no sockets
// of its own (the server hands requests in; the fuzzer does too):
//   - `Host` must name this server on the loopback address (else 403), so
//     that a page elsewhere cannot reach it by a name it controls;
//   - a request that changes something (any method but GET and HEAD) with
//     an `Origin` other than the page's own is refused (403);
//   - then one of the routes in docs/live-preview.md, or 404 / 405.
class LiveRouter {
public:
    static constexpr size_t largestBody = 1 << 20;

    LiveRouter(LiveSession&, EventHub&, PageFiles, std::filesystem::path outputDirectory);

    // The port the server listens on, for the `Host` and `Origin` checks.
    void setPort(int port) { m_port = port; }
    void handle(const httplib::Request&, httplib::Response&);

private:
    bool hostIsAllowed(const httplib::Request&) const;
    bool originIsAllowed(const httplib::Request&) const;

    void page(const httplib::Request&, httplib::Response&);
    void play(const httplib::Request&, httplib::Response&);
    void shot(httplib::Response&);
    void dump(httplib::Response&);
    void settings(httplib::Response&);
    void events(httplib::Response&);
    void upload(const httplib::Request&, httplib::Response&);

    LiveSession& m_session;
    EventHub& m_events;
    PageFiles m_page;
    std::filesystem::path m_outputDirectory;
    std::atomic<int> m_port { 0 };
};

}
