#include "support/live/FakePhone.h"

#include <live/EventHub.h>
#include <live/LiveRouter.h>
#include <live/LiveSession.h>
#include <live/PageFiles.h>
#include <live/ScreenPicture.h>
#include <live/WorkerChannel.h>

#include <gtest/gtest.h>

#include <cairo.h>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <thread>
#include <unistd.h>

using namespace sim::live;

namespace {

std::filesystem::path freshFolder(const std::string& name)
{
    auto folder = std::filesystem::temp_directory_path() / ("kavelin-" + name + "-" + std::to_string(::getpid()));
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

void writeFile(const std::filesystem::path& path, const std::string& text)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

}

TEST(PageFiles, ServesFilesOfItsFolderOnlyWithTheirTypes)
{
    auto folder = freshFolder("page");
    writeFile(folder / "page" / "index.html", "<html>");
    writeFile(folder / "page" / "js" / "main.js", "export {}");
    writeFile(folder / "page" / ".secret", "no");
    writeFile(folder / "outside.txt", "no");
    std::filesystem::create_symlink(folder / "outside.txt", folder / "page" / "link.txt");
    PageFiles page(folder / "page");

    ASSERT_TRUE(page.find("/"));
    EXPECT_EQ(page.find("/")->bytes, "<html>");
    EXPECT_EQ(page.find("/")->contentType, "text/html; charset=utf-8");
    ASSERT_TRUE(page.find("/js/main.js"));
    EXPECT_EQ(page.find("/js/main.js")->contentType, "text/javascript; charset=utf-8");
    for (const char* refused : { "/.secret", "/../outside.txt", "/js/../index.html", "/link.txt", "/js", "//etc/passwd", "/js//main.js", "index.html", "/nothing.css" })
        EXPECT_FALSE(page.find(refused)) << refused;
    EXPECT_FALSE(PageFiles("").find("/"));
    std::filesystem::remove_all(folder);
}

TEST(EventHub, ReadersGetWhatCameAfterTheirLastEventAndCloseWakesThem)
{
    EventHub hub;
    hub.publish("screen", { { "generation", 1 } });
    uint64_t seen = hub.lastId();
    hub.publish("busy", { { "busy", true } });
    hub.publish("busy", { { "busy", false } });
    auto events = hub.waitAfter(seen, std::chrono::milliseconds(0));
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(serverSentEvent(events[0]), "id: 2\nevent: busy\ndata: {\"busy\":true}\n\n");
    EXPECT_TRUE(hub.waitAfter(hub.lastId(), std::chrono::milliseconds(10)).empty());

    for (int i = 0; i < EventHub::mostReaders; ++i)
        EXPECT_TRUE(hub.enterReader());
    EXPECT_FALSE(hub.enterReader());
    hub.leaveReader();
    EXPECT_TRUE(hub.enterReader());

    std::thread closer([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        hub.close();
    });
    auto started = std::chrono::steady_clock::now();
    EXPECT_TRUE(hub.waitAfter(hub.lastId(), std::chrono::seconds(30)).empty());
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(10));
    closer.join();
    EXPECT_FALSE(hub.enterReader());
}

TEST(WorkerChannel, CarriesHeadersAndBinaryPayloadsAndEndsOnABrokenStream)
{
    int pipe[2];
    ASSERT_EQ(::pipe2(pipe, O_CLOEXEC), 0);
    int other = ::dup(pipe[1]);
    WorkerChannel writer(-1, pipe[1]);
    WorkerChannel reader(pipe[0], -1);
    std::string picture("\x89PNG\0\r\n\x1a", 8);
    ASSERT_TRUE(writer.send({ { "op", "shot" }, { "text", "caf\xc3\xa9" } }, picture));
    ASSERT_TRUE(writer.send({ { "op", "bad" }, { "text", "\xff" } }));
    auto message = reader.receive();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->header["text"], "caf\xc3\xa9");
    EXPECT_EQ(message->payload, picture);
    ASSERT_TRUE(reader.receive()); // text that is not UTF-8 arrives replaced, not lost

    // A frame cut short, then the end of the stream.
    const char cut[] = { 10, 0, 0, 0, 0, 0, 0, 0, '{', '"' };
    ASSERT_EQ(::write(other, cut, sizeof cut), static_cast<ssize_t>(sizeof cut));
    writer.close();
    ::close(other);
    EXPECT_FALSE(reader.receive());
}

TEST(LiveRouter, RefusesOtherHostsForeignOriginsAndWrongMethods)
{
    FakePhone phone;
    EventHub events;
    LiveSession session(phone, events, { "/tmp", { "/tmp" } });
    ASSERT_EQ(session.open(std::nullopt), 0);
    LiveRouter router(session, events, PageFiles(""), freshFolder("router"));
    router.setPort(8470);

    auto status = [&](const std::string& method, const std::string& path, httplib::Headers headers, const std::string& body = "") {
        httplib::Request request;
        request.method = method;
        request.path = path;
        request.headers = std::move(headers);
        request.body = body;
        httplib::Response response;
        router.handle(request, response);
        return response.status;
    };
    httplib::Headers own { { "Host", "127.0.0.1:8470" } };
    EXPECT_EQ(status("GET", "/state.json", own), 200);
    EXPECT_EQ(status("GET", "/state.json", { { "Host", "LOCALHOST:8470" } }), 200);
    EXPECT_EQ(status("GET", "/state.json", { { "Host", "127.0.0.1:8471" } }), 403);
    EXPECT_EQ(status("GET", "/state.json", { { "Host", "127.0.0.1.example.com:8470" } }), 403);
    EXPECT_EQ(status("GET", "/state.json", {}), 403);
    EXPECT_EQ(status("GET", "/state.json", { { "Host", "127.0.0.1:8470" }, { "Host", "evil:8470" } }), 403);

    EXPECT_EQ(status("POST", "/play", { { "Host", "127.0.0.1:8470" }, { "Origin", "http://localhost:8470" } }, "advance 1s"), 200);
    EXPECT_EQ(status("POST", "/play", { { "Host", "127.0.0.1:8470" }, { "Origin", "http://127.0.0.1:8471" } }, "advance 1s"), 403);
    EXPECT_EQ(status("POST", "/play", { { "Host", "127.0.0.1:8470" }, { "Origin", "https://127.0.0.1:8470" } }, "advance 1s"), 403);
    // A page elsewhere may show the picture (a plain GET), not change the phone.
    EXPECT_EQ(status("GET", "/shot.png", { { "Host", "127.0.0.1:8470" }, { "Origin", "http://evil" } }), 200);

    EXPECT_EQ(status("GET", "/play", own), 405);
    EXPECT_EQ(status("POST", "/shot.png", own), 405);
    EXPECT_EQ(status("DELETE", "/", own), 405);
    EXPECT_EQ(status("GET", "/", own), 200); // the stand-in page
    EXPECT_EQ(status("GET", "/missing.js", own), 404);
    EXPECT_EQ(status("POST", "/play", own, std::string(LiveRouter::largestBody + 1, '#')), 413);
    EXPECT_EQ(status("POST", "/upload", own), 400); // no file name
}

// The fast encoder's picture decodes to the pixels cairo's own encoder keeps,
// for an opaque screen (three channels) and a translucent picture.
TEST(ScreenPicture, DecodesToTheSamePixelsAsCairosOwnPNG)
{
    for (double alpha : { 1.0, 0.5 }) {
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 37, 23);
        cairo_t* cr = cairo_create(surface);
        cairo_set_source_rgba(cr, 0.1, 0.6, 0.9, alpha);
        cairo_paint(cr);
        cairo_set_source_rgba(cr, 0.9, 0.2, 0.3, alpha);
        cairo_arc(cr, 18, 11, 9, 0, 6.3);
        cairo_fill(cr);
        cairo_destroy(cr);

        std::string ours = ScreenPicture::png(surface);
        std::string theirs;
        cairo_surface_write_to_png_stream(surface, [](void* closure, const unsigned char* data, unsigned length) {
            static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
            return CAIRO_STATUS_SUCCESS;
        }, &theirs);
        auto decode = [](const std::string& bytes) {
            struct Reader {
                const std::string* bytes;
                size_t offset;
            } reader { &bytes, 0 };
            cairo_surface_t* decoded = cairo_image_surface_create_from_png_stream([](void* closure, unsigned char* data, unsigned length) {
                auto* reader = static_cast<Reader*>(closure);
                if (reader->offset + length > reader->bytes->size())
                    return CAIRO_STATUS_READ_ERROR;
                std::copy_n(reader->bytes->data() + reader->offset, length, data);
                reader->offset += length;
                return CAIRO_STATUS_SUCCESS;
            }, &reader);
            cairo_surface_flush(decoded);
            std::string pixels(reinterpret_cast<const char*>(cairo_image_surface_get_data(decoded)),
                static_cast<size_t>(cairo_image_surface_get_stride(decoded)) * cairo_image_surface_get_height(decoded));
            cairo_surface_destroy(decoded);
            return pixels;
        };
        ASSERT_TRUE(ours.starts_with("\x89PNG"));
        EXPECT_EQ(static_cast<unsigned char>(ours[25]), alpha == 1.0 ? 2 : 6) << "colour type"; // RGB when opaque, else RGBA
        EXPECT_EQ(decode(ours), decode(theirs)) << alpha;
        cairo_surface_destroy(surface);
    }
}
