#include "WorkerChannel.h"

#include <cerrno>
#include <cstdint>
#include <unistd.h>

namespace sim::live {

// A dump is a few hundred kilobytes and a picture of an iPad's screen a few
// megabytes; anything far larger means the stream is out of step.
static constexpr uint32_t largestHeader = 64 << 20;
static constexpr uint32_t largestPayload = 256 << 20;

WorkerChannel::WorkerChannel(int readDescriptor, int writeDescriptor)
    : m_read(readDescriptor)
    , m_write(writeDescriptor)
{
}

WorkerChannel::~WorkerChannel() { close(); }

void WorkerChannel::close()
{
    if (m_read >= 0)
        ::close(m_read);
    if (m_write >= 0 && m_write != m_read)
        ::close(m_write);
    m_read = m_write = -1;
}

static void appendLength(std::string& out, uint32_t length)
{
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(static_cast<char>((length >> shift) & 0xff));
}

static uint32_t readLength(const unsigned char* bytes)
{
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | static_cast<uint32_t>(bytes[3]) << 24;
}

bool WorkerChannel::send(const nlohmann::json& header, std::string_view payload)
{
    // Replacing bad UTF-8 keeps a message of the phone's own text sendable.
    std::string text = header.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    if (text.size() > largestHeader || payload.size() > largestPayload)
        return false;
    std::string frame;
    frame.reserve(8 + text.size() + payload.size());
    appendLength(frame, static_cast<uint32_t>(text.size()));
    appendLength(frame, static_cast<uint32_t>(payload.size()));
    frame += text;
    frame += payload;
    return writeAll(frame);
}

std::optional<WorkerMessage> WorkerChannel::receive()
{
    unsigned char lengths[8];
    if (!readAll(reinterpret_cast<char*>(lengths), sizeof lengths))
        return std::nullopt;
    uint32_t headerLength = readLength(lengths);
    uint32_t payloadLength = readLength(lengths + 4);
    if (headerLength > largestHeader || payloadLength > largestPayload)
        return std::nullopt;
    std::string text(headerLength, '\0');
    WorkerMessage message;
    message.payload.resize(payloadLength);
    if (!readAll(text.data(), text.size()) || !readAll(message.payload.data(), message.payload.size()))
        return std::nullopt;
    message.header = nlohmann::json::parse(text, nullptr, false);
    if (!message.header.is_object())
        return std::nullopt;
    return message;
}

bool WorkerChannel::writeAll(std::string_view bytes)
{
    while (!bytes.empty()) {
        ssize_t written = ::write(m_write, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

bool WorkerChannel::readAll(char* buffer, size_t size)
{
    while (size) {
        ssize_t count = ::read(m_read, buffer, size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        buffer += count;
        size -= static_cast<size_t>(count);
    }
    return true;
}

}
