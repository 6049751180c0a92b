#include "LiveServer.h"

#include "EventHub.h"
#include "LiveRouter.h"
#include "LiveSession.h"
#include "WorkerProcess.h"

#include "BuildPaths.h"
#include "CommandLine.h"
#include "Simulator.h"

#include <UIKit/RecordPolicy.h>

#include <csignal>
#include <iostream>
#include <pthread.h>
#include <thread>
#include <unistd.h>

namespace sim::live {

// Connections each hold a thread while they are open (an event stream for
// as long as the page is), so the pool is larger than the library's default.
static constexpr size_t serverThreads = 32;

int LiveServer::run(const CommandLineOptions& options, const RecordPolicy& recordPolicy)
{
    // SIGINT and SIGTERM are taken by one thread of their own, which stops
    // the server; every other thread (the server's pool) blocks them.
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);

    std::error_code error;
    WorkerProcess::Folders folders;
    folders.output = std::filesystem::absolute(options.outputDirectory, error);
    std::filesystem::create_directories(folders.output, error);
    if (error || !std::filesystem::is_directory(folders.output)) {
        std::cerr << "kavelin-sim: cannot use " << options.outputDirectory << " as the output folder\n";
        return ExitCannotPlay;
    }
    if (options.rootDirectory) {
        // Made if missing, as a batch run makes it; each phone starts from a copy.
        folders.root = std::filesystem::absolute(*options.rootDirectory, error);
        std::filesystem::create_directories(folders.root, error);
        if (error || !std::filesystem::is_directory(folders.root)) {
            std::cerr << "kavelin-sim: cannot use " << *options.rootDirectory << " as the device root\n";
            return ExitCannotPlay;
        }
    }
    folders.scenario = folders.output;
    folders.recordMode = std::string(RecordPolicy::nameOf(recordPolicy.mode()));
    if (options.scenario && *options.scenario != "-")
        folders.scenario = std::filesystem::absolute(*options.scenario, error).parent_path();

    Confinement confinement { folders.scenario, { folders.output } };
    if (!folders.root.empty())
        confinement.allowed.push_back(folders.root);

    httplib::Server server;
    server.new_task_queue = [] { return new httplib::ThreadPool(serverThreads); };
    server.set_payload_max_length(LiveRouter::largestBody);
    // Answers go out as they are written: with Nagle's algorithm a head and a body
    // written apart wait for the client's delayed acknowledgement (40 ms).
    server.set_tcp_nodelay(true);
    // Answers go over the loopback, where compressing them only costs time: offered Brotli (as
    // every browser offers it), the library compresses text at Brotli's slowest quality, about
    // 95 ms for a dump. The request is the library's own object, handed to us as const.
    server.set_pre_routing_handler([](const httplib::Request& request, httplib::Response&) {
        const_cast<httplib::Request&>(request).headers.erase("Accept-Encoding");
        return httplib::Server::HandlerResponse::Unhandled;
    });
    server.set_keep_alive_timeout(2);
    server.set_read_timeout(5);
    server.set_write_timeout(5);
    int port = options.port.value_or(defaultPort);
    if (port == 0)
        port = server.bind_to_any_port("127.0.0.1");
    else if (!server.bind_to_port("127.0.0.1", port))
        port = -1;
    if (port <= 0) {
        std::cerr << "kavelin-sim: cannot listen on 127.0.0.1:" << options.port.value_or(defaultPort) << " (is another live preview running there?)\n";
        return ExitCannotPlay;
    }

    WorkerProcess phone(folders);
    EventHub events;
    LiveSession session(phone, events, confinement);
    // Started before the scenario plays, so that ^C also ends a long start.
    std::thread stopper([&] {
        int signal = 0;
        sigwait(&stopSignals, &signal);
        events.close();
        session.shutDown();
        server.stop();
    });
    // Wakes the stopper when the server ends for another reason.
    auto stop = [&](int status) {
        bool interrupted = events.isClosed();
        if (!interrupted)
            kill(getpid(), SIGTERM);
        stopper.join();
        return interrupted ? ExitSuccess : status;
    };

    // Without a scenario the clock runs a second, so that the panel has
    // drawn (on its first tick) when the page first shows the screen.
    if (int status = session.open(options.scenario, "boot\nadvance 1s\n"); status != ExitSuccess || events.isClosed())
        return stop(status);

    LiveRouter router(session, events, PageFiles(BuildPaths::locate().livePage), folders.output);
    router.setPort(port);
    auto handler = [&router](const httplib::Request& request, httplib::Response& response) { router.handle(request, response); };
    server.Get(".*", handler).Post(".*", handler).Put(".*", handler).Patch(".*", handler).Delete(".*", handler).Options(".*", handler);

    std::cout << "live preview at http://127.0.0.1:" << port << "/" << std::endl;
    // Answers once the server stops: after a signal, or when listening failed.
    bool listened = server.listen_after_bind();
    return stop(listened ? ExitSuccess : ExitHostFailed);
}

}
