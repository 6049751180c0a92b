#include "LiveRouter.h"

#include "EventHub.h"
#include "LiveSession.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <fstream>
#include <memory>

namespace sim::live {

using namespace std::chrono_literals;

// A comment line on an idle event stream, so that nothing between the
// page and the server takes it for dead.
static constexpr auto keepAliveInterval = 15s;

LiveRouter::LiveRouter(LiveSession& session, EventHub& events, PageFiles page, std::filesystem::path outputDirectory)
    : m_session(session)
    , m_events(events)
    , m_page(std::move(page))
    , m_outputDirectory(std::move(outputDirectory))
{
}

static void answerJson(httplib::Response& response, int status, const nlohmann::json& body)
{
    response.status = status;
    response.set_header("Cache-Control", "no-store");
    response.set_content(body.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n", "application/json");
}

static void refuse(httplib::Response& response, int status, const std::string& why)
{
    answerJson(response, status, { { "ok", false }, { "errors", { why } } });
}

static std::string lowercase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool LiveRouter::hostIsAllowed(const httplib::Request& request) const
{
    if (request.get_header_value_count("Host") != 1)
        return false;
    std::string host = lowercase(request.get_header_value("Host"));
    std::string port = ":" + std::to_string(m_port.load());
    return host == "127.0.0.1" + port || host == "localhost" + port;
}

bool LiveRouter::originIsAllowed(const httplib::Request& request) const
{
    if (!request.has_header("Origin"))
        return true;
    if (request.get_header_value_count("Origin") != 1)
        return false;
    std::string origin = lowercase(request.get_header_value("Origin"));
    std::string port = ":" + std::to_string(m_port.load());
    return origin == "http://127.0.0.1" + port || origin == "http://localhost" + port;
}

void LiveRouter::handle(const httplib::Request& request, httplib::Response& response)
{
    response.set_header("X-Content-Type-Options", "nosniff");
    if (!hostIsAllowed(request))
        return refuse(response, 403, "this server answers only to 127.0.0.1:" + std::to_string(m_port.load()) + " and localhost:" + std::to_string(m_port.load()));
    bool reading = request.method == "GET" || request.method == "HEAD";
    if (!reading && !originIsAllowed(request))
        return refuse(response, 403, "requests that change the phone are taken only from the live page itself");
    if (request.body.size() > largestBody)
        return refuse(response, 413, "the body is larger than 1 MiB");

    struct Route {
        const char* method;
        const char* path;
    };
    static constexpr Route routes[] = {
        { "POST", "/play" }, { "POST", "/cancel" }, { "POST", "/restart" }, { "POST", "/upload" },
        { "GET", "/shot.png" }, { "GET", "/dump.json" }, { "GET", "/transcript.scenario" }, { "GET", "/events" },
        { "GET", "/settings.json" }, { "GET", "/state.json" },
    };
    const std::string& path = request.path;
    std::string method = request.method == "HEAD" ? "GET" : request.method;
    auto known = std::find_if(std::begin(routes), std::end(routes), [&](const Route& route) { return path == route.path; });
    if (known != std::end(routes) && method != known->method) {
        response.set_header("Allow", known->method);
        return refuse(response, 405, path + " takes " + known->method);
    }

    if (path == "/play")
        return play(request, response);
    if (path == "/cancel") {
        auto answer = m_session.cancel();
        return answerJson(response, answer.status, answer.body);
    }
    if (path == "/restart") {
        auto answer = m_session.restart();
        return answerJson(response, answer.status, answer.body);
    }
    if (path == "/upload")
        return upload(request, response);
    if (path == "/shot.png")
        return shot(response);
    if (path == "/dump.json")
        return dump(response);
    if (path == "/transcript.scenario") {
        response.status = 200;
        response.set_header("Cache-Control", "no-store");
        return response.set_content(m_session.transcript(), "text/plain; charset=utf-8");
    }
    if (path == "/events")
        return events(response);
    if (path == "/settings.json")
        return settings(response);
    if (path == "/state.json")
        return answerJson(response, 200, m_session.state());
    if (method != "GET") {
        response.set_header("Allow", "GET");
        return refuse(response, 405, path + " takes GET");
    }
    page(request, response);
}

void LiveRouter::page(const httplib::Request& request, httplib::Response& response)
{
    auto file = m_page.find(request.path);
    if (!file && request.path == "/")
        file = PageFiles::placeholder();
    if (!file)
        return refuse(response, 404, "no such page: " + request.path);
    response.status = 200;
    response.set_header("Cache-Control", "no-cache");
    response.set_content(file->bytes, file->contentType);
}

void LiveRouter::play(const httplib::Request& request, httplib::Response& response)
{
    auto answer = m_session.play(request.body);
    answerJson(response, answer.status, answer.body);
}

static void sendSnapshot(httplib::Response& response, const std::optional<LiveSession::Snapshot>& snapshot, const char* contentType, const nlohmann::json& state)
{
    if (!snapshot) {
        bool busy = state.value("busy", false);
        return answerJson(response, 503,
            { { "ok", false }, { "busy", busy }, { "errors", { busy ? "the phone is busy and has shown nothing yet; try again" : "the phone is not running" } } });
    }
    response.status = 200;
    response.set_header("Cache-Control", "no-store");
    response.set_header("X-Kavelin-Generation", std::to_string(snapshot->generation));
    if (snapshot->busy)
        response.set_header("X-Kavelin-Busy", "1");
    response.set_content(snapshot->bytes, contentType);
}

void LiveRouter::shot(httplib::Response& response)
{
    auto snapshot = m_session.shot();
    sendSnapshot(response, snapshot, "image/png", snapshot ? nlohmann::json() : m_session.state());
}

void LiveRouter::dump(httplib::Response& response)
{
    auto snapshot = m_session.dump();
    sendSnapshot(response, snapshot, "application/json", snapshot ? nlohmann::json() : m_session.state());
}

void LiveRouter::settings(httplib::Response& response)
{
    auto settings = m_session.settings();
    if (!settings)
        return refuse(response, 503, "the phone is busy or not running; try again");
    response.status = 200;
    response.set_header("Cache-Control", "no-store");
    response.set_content(*settings, "application/json");
}

void LiveRouter::events(httplib::Response& response)
{
    if (!m_events.enterReader())
        return refuse(response, 503, "too many event streams are open");
    response.status = 200;
    response.set_header("Cache-Control", "no-store");
    EventHub* hub = &m_events;
    auto lastId = std::make_shared<uint64_t>(hub->lastId());
    auto greeting = std::make_shared<std::string>("retry: 1000\nevent: hello\ndata: " + m_session.state().dump() + "\n\n");
    response.set_chunked_content_provider(
        "text/event-stream",
        [hub, lastId, greeting](size_t, httplib::DataSink& sink) {
            if (!greeting->empty()) {
                std::string text = std::move(*greeting);
                greeting->clear();
                return sink.write(text.data(), text.size());
            }
            auto events = hub->waitAfter(*lastId, keepAliveInterval);
            if (hub->isClosed())
                return false;
            std::string text = events.empty() ? std::string(": keep-alive\n\n") : std::string();
            for (const auto& event : events) {
                text += serverSentEvent(event);
                *lastId = event.id;
            }
            return sink.write(text.data(), text.size());
        },
        [hub](bool) { hub->leaveReader(); });
}

// A plain file name: letters, digits, dots, dashes and underscores, not
// starting with a dot.
static bool isPlainFileName(const std::string& name)
{
    if (name.empty() || name.size() > 100 || name.front() == '.')
        return false;
    return std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) || c == '.' || c == '-' || c == '_'; });
}

void LiveRouter::upload(const httplib::Request& request, httplib::Response& response)
{
    std::string name = request.get_param_value("name");
    if (!isPlainFileName(name))
        return refuse(response, 400, "upload?name= takes a plain file name (letters, digits, '.', '-', '_')");
    std::error_code error;
    auto folder = std::filesystem::absolute(m_outputDirectory / "uploads", error);
    std::filesystem::create_directories(folder, error);
    auto path = folder / name;
    // Written beside it under a name of its own, then renamed into place:
    // requests run on many threads, and a line playing on the phone (a
    // calendar import) or another upload of the same name must find the
    // whole old file or the whole new one, never one half written.
    static std::atomic<uint64_t> lastPart { 0 };
    auto part = folder / ("." + name + "." + std::to_string(++lastPart) + ".part");
    std::ofstream out(part, std::ios::binary | std::ios::trunc);
    out << request.body;
    out.close();
    std::error_code renameError;
    if (out)
        std::filesystem::rename(part, path, renameError);
    if (!out || renameError) {
        std::filesystem::remove(part, renameError);
        return refuse(response, 500, "cannot write " + path.string());
    }
    answerJson(response, 200, { { "ok", true }, { "file", path.string() }, { "path", path.string() }, { "bytes", request.body.size() } });
}

}
