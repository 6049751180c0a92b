#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace sim::live {

// One message between the live server and its phone worker: a JSON header
// and, for pictures, bytes.
struct WorkerMessage {
    nlohmann::json header;
    std::string payload;
};

// Messages over a pair of pipes, each framed by the lengths of its header
// and its payload, so that a PNG travels as it is. A broken or closed pipe
// ends the channel; nothing here throws.
class WorkerChannel {
public:
    WorkerChannel(int readDescriptor, int writeDescriptor);
    WorkerChannel(const WorkerChannel&) = delete;
    WorkerChannel& operator=(const WorkerChannel&) = delete;
    ~WorkerChannel();

    // False when the other side is gone.
    bool send(const nlohmann::json& header, std::string_view payload = {});
    // Nothing at the end of the stream or when it is not a message.
    std::optional<WorkerMessage> receive();
    // Closes both ends; the other side reads the end of its stream.
    void close();

private:
    bool writeAll(std::string_view);
    bool readAll(char*, size_t);

    int m_read { -1 };
    int m_write { -1 };
};

}
