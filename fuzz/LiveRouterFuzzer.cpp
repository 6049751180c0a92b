// Feeds arbitrary requests to the live preview's router, as the server
// would hand them in, with a stand-in phone behind the session. The input
// is: a method byte, the target up to a newline, header lines up to an
// empty line, and the body. Besides not crashing, it checks what the page
// relies on: every answer has a status; JSON answers parse; and whatever
// was played, the transcript is still a scenario the parser reads.

#include "support/live/FakePhone.h"

#include <live/EventHub.h>
#include <live/LiveRouter.h>
#include <live/LiveSession.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string_view>
#include <unistd.h>

namespace {

struct Fixture {
    std::filesystem::path folder { std::filesystem::temp_directory_path() / ("kavelin-fuzz-live-" + std::to_string(::getpid())) };
    FakePhone phone;
    sim::live::EventHub events;
    sim::live::LiveSession session { phone, events, { folder, { folder } } };
    sim::live::LiveRouter router { session, events, sim::live::PageFiles(folder / "page"), folder };

    Fixture()
    {
        std::filesystem::create_directories(folder / "page");
        session.open(std::nullopt);
        router.setPort(8470);
        // Lines the stand-in answers as the phone would answer their kind.
        phone.answers["expect host.locked false"] = { 1, "live:1: expected host.locked to be false, found true\n", std::nullopt };
        phone.answers["tap #gone"] = { 2, "live:1: nothing on screen matches #gone\n", std::nullopt };
        phone.answers["advance 300d"] = { 0, "", "advance 1h2ms" };
        phone.answers["locale xx_YY"] = { 2, "transcript:1: unknown locale 'xx_YY'\n", std::nullopt };
    }
};

std::string_view takeLine(std::string_view& text)
{
    size_t newline = text.find('\n');
    std::string_view line = text.substr(0, newline);
    text.remove_prefix(newline == std::string_view::npos ? text.size() : newline + 1);
    return line;
}

}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // A fresh session now and then, so that the transcript (which every
    // request may lengthen) stays short enough to read after each input.
    static std::unique_ptr<Fixture> fixtureHolder;
    static int inputs = 0;
    if (!fixtureHolder || ++inputs % 256 == 0)
        fixtureHolder = std::make_unique<Fixture>();
    Fixture& fixture = *fixtureHolder;
    fixture.phone.played.clear();
    if (size == 0)
        return 0;
    static constexpr const char* methods[] = { "GET", "POST", "HEAD", "PUT", "DELETE", "OPTIONS", "PATCH", "get" };
    std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);

    httplib::Request request;
    request.method = methods[data[0] & 7];
    std::string_view target = takeLine(text);
    size_t question = target.find('?');
    request.path = std::string(target.substr(0, question));
    if (question != std::string_view::npos) {
        std::string_view query = target.substr(question + 1);
        while (!query.empty()) {
            std::string_view pair = query.substr(0, query.find('&'));
            query.remove_prefix(std::min(query.size(), pair.size() + 1));
            size_t equals = pair.find('=');
            request.params.emplace(std::string(pair.substr(0, equals)), equals == std::string_view::npos ? "" : std::string(pair.substr(equals + 1)));
        }
    }
    // Most inputs name this server, so that they reach past the first check.
    if (!(data[0] & 8))
        request.headers.emplace("Host", "127.0.0.1:8470");
    for (std::string_view line = takeLine(text); !line.empty(); line = takeLine(text)) {
        size_t colon = line.find(':');
        request.headers.emplace(std::string(line.substr(0, colon)), colon == std::string_view::npos ? "" : std::string(line.substr(colon + 1)));
    }
    request.body = std::string(text);

    httplib::Response response;
    fixture.router.handle(request, response);
    if (response.status < 100 || response.status > 599)
        std::abort();
    if (response.get_header_value("Content-Type") == "application/json" && !response.body.empty()
        && nlohmann::json::parse(response.body, nullptr, false).is_discarded())
        std::abort();
    if (!sim::ScenarioParser::parseText(fixture.session.transcript(), "transcript").ok())
        std::abort();
    return 0;
}
