#pragma once

class RecordPolicy;

namespace sim {
struct CommandLineOptions;
}

namespace sim::live {

// kavelin-sim --live [SCENARIO] [--port N]: plays SCENARIO on a phone in a
// worker process, then serves the live page and its interface on the
// loopback address until SIGINT or SIGTERM. Answers the exit status.
class LiveServer {
public:
    static constexpr int defaultPort = 8470;
    // `recordPolicy`: what expect-shot lines do with reference pictures.
    static int run(const CommandLineOptions&, const RecordPolicy& recordPolicy);
};

}
