#pragma once

namespace sim::live {

// The phone side of the live preview: `kavelin-sim --live-worker`, started
// by the server with a channel on descriptors 3 (requests) and 4 (answers).
// It runs one host for as long as it lives, since the extension's load-time
// state lasts as long as the process; a fresh host is a fresh worker.
class LiveWorker {
public:
    static constexpr int requestDescriptor = 3;
    static constexpr int answerDescriptor = 4;
    static constexpr const char* option = "--live-worker";

    // Serves requests until the server closes the channel; answers the exit status.
    static int run();
};

}
