#include "PropertyListChecks.h"

#include <cstring>
#include <string_view>
#include <vector>

namespace PropertyListChecks {

namespace {

using Failure = std::optional<std::string>;

uint64_t readBigEndian(const uint8_t* bytes, size_t size)
{
    uint64_t value = 0;
    for (size_t i = 0; i < size; ++i)
        value = value << 8 | bytes[i];
    return value;
}

bool containsNul(const uint8_t* bytes, size_t length, size_t unitSize)
{
    for (size_t i = 0; i + unitSize <= length; i += unitSize) {
        if (bytes[i] == 0 && bytes[i + unitSize - 1] == 0)
            return true;
    }
    return false;
}

// A binary property list ("bplist00"): objects, then a table of their
// offsets, then a 32-byte trailer saying where the table is and how wide
// its entries and the objects' references are.
class BinaryList {
public:
    BinaryList(const uint8_t* bytes, size_t length)
        : m_bytes(bytes)
        , m_length(length)
    {
    }

    Failure readTrailer();
    Failure check(Limits);

private:
    struct Object {
        bool isContainer { false };
        bool isString { false };
        // For a dictionary: the keys' references, then the values'.
        std::vector<uint64_t> children;
        size_t keyCount { 0 };
    };

    Failure readObject(uint64_t index, Object&) const;
    Failure readLength(size_t& at, uint8_t info, uint64_t& count) const;

    const uint8_t* m_bytes;
    size_t m_length;
    size_t m_offsetSize { 0 };
    size_t m_referenceSize { 0 };
    uint64_t m_objectCount { 0 };
    uint64_t m_topObject { 0 };
    uint64_t m_tableOffset { 0 };
};

constexpr size_t headerLength = 8;
constexpr size_t trailerLength = 32;

Failure BinaryList::readTrailer()
{
    if (m_length < headerLength + 1 + trailerLength || std::memcmp(m_bytes, "bplist00", headerLength) != 0)
        return "not a binary property list";
    const uint8_t* trailer = m_bytes + m_length - trailerLength;
    m_offsetSize = trailer[6];
    m_referenceSize = trailer[7];
    m_objectCount = readBigEndian(trailer + 8, 8);
    m_topObject = readBigEndian(trailer + 16, 8);
    m_tableOffset = readBigEndian(trailer + 24, 8);
    if (m_offsetSize < 1 || m_offsetSize > 8 || m_referenceSize < 1 || m_referenceSize > 8)
        return "bad offset or reference size";
    size_t tableEnd = m_length - trailerLength;
    if (m_tableOffset < headerLength || m_tableOffset > tableEnd)
        return "offset table outside the data";
    if (m_objectCount == 0 || m_objectCount > (tableEnd - m_tableOffset) / m_offsetSize)
        return "offset table does not fit";
    if (m_topObject >= m_objectCount)
        return "top object out of range";
    return {};
}

Failure BinaryList::readLength(size_t& at, uint8_t info, uint64_t& count) const
{
    if (info != 0xF) {
        count = info;
        return {};
    }
    // A longer count follows as an integer object of 1, 2, 4 or 8 bytes.
    if (at >= m_tableOffset || (m_bytes[at] >> 4) != 0x1 || (m_bytes[at] & 0xF) > 3)
        return "bad length";
    size_t size = size_t(1) << (m_bytes[at] & 0xF);
    if (at + 1 + size > m_tableOffset)
        return "length runs past the objects";
    count = readBigEndian(m_bytes + at + 1, size);
    at += 1 + size;
    return {};
}

Failure BinaryList::readObject(uint64_t index, Object& object) const
{
    uint64_t offset = readBigEndian(m_bytes + m_tableOffset + index * m_offsetSize, m_offsetSize);
    if (offset < headerLength || offset >= m_tableOffset)
        return "object offset out of range";
    size_t at = static_cast<size_t>(offset);
    uint8_t marker = m_bytes[at++];
    uint8_t info = marker & 0xF;
    size_t available = m_tableOffset - at;
    uint64_t payload = 0;
    switch (marker >> 4) {
    case 0x0:
        if (info != 0x8 && info != 0x9)
            return "null and fill objects are not supported";
        return {};
    case 0x1:
        if (info > 4)
            return "integer too wide";
        payload = uint64_t(1) << info;
        break;
    case 0x2:
        if (info != 2 && info != 3)
            return "bad real size";
        payload = uint64_t(1) << info;
        break;
    case 0x3:
        if (info != 3)
            return "bad date size";
        payload = 8;
        break;
    case 0x8:
        if (info > 7)
            return "UID too wide";
        payload = info + 1;
        break;
    case 0x4:
    case 0x5:
    case 0x6: {
        uint64_t count = 0;
        if (auto failure = readLength(at, info, count))
            return failure;
        available = m_tableOffset - at;
        if ((marker >> 4) == 0x6 && count > available / 2)
            return "string runs past the objects";
        payload = (marker >> 4) == 0x6 ? count * 2 : count;
        object.isString = (marker >> 4) != 0x4;
        if (payload > available)
            return "object runs past the objects";
        // libplist asserts that keys have no NUL character in them; no
        // preference needs one anywhere.
        if (object.isString && containsNul(m_bytes + at, payload, (marker >> 4) == 0x6 ? 2 : 1))
            return "string with a NUL character";
        return {};
    }
    case 0xA:
    case 0xD: {
        uint64_t count = 0;
        if (auto failure = readLength(at, info, count))
            return failure;
        available = m_tableOffset - at;
        uint64_t references = (marker >> 4) == 0xD ? 2 : 1;
        if (count > available / m_referenceSize / references)
            return "references run past the objects";
        object.isContainer = true;
        object.keyCount = (marker >> 4) == 0xD ? count : 0;
        object.children.reserve(count * references);
        for (uint64_t i = 0; i < count * references; ++i) {
            uint64_t reference = readBigEndian(m_bytes + at + i * m_referenceSize, m_referenceSize);
            if (reference >= m_objectCount)
                return "reference out of range";
            object.children.push_back(reference);
        }
        return {};
    }
    default:
        return "unsupported object type";
    }
    if (payload > available)
        return "object runs past the objects";
    return {};
}

Failure BinaryList::check(Limits limits)
{
    enum class State : uint8_t { Unvisited, Open, Done };
    std::vector<State> states(m_objectCount, State::Unvisited);
    // Objects each one expands to when libplist copies shared references.
    std::vector<size_t> expanded(m_objectCount, 0);

    struct Frame {
        uint64_t index;
        Object object;
        size_t next { 0 };
        size_t total { 1 };
    };
    std::vector<Frame> stack;

    // Visits one object: a scalar is finished at once, a container opened.
    auto enter = [&](uint64_t index, size_t& total) -> Failure {
        if (states[index] == State::Open)
            return "reference cycle";
        if (states[index] == State::Done) {
            total += expanded[index];
            return {};
        }
        Object object;
        if (auto failure = readObject(index, object))
            return failure;
        if (!object.isContainer) {
            states[index] = State::Done;
            expanded[index] = 1;
            total += 1;
            return {};
        }
        if (stack.size() >= limits.maximumDepth)
            return "nested too deeply";
        states[index] = State::Open;
        stack.push_back(Frame { index, std::move(object) });
        return {};
    };

    size_t rootTotal = 0;
    if (auto failure = enter(m_topObject, rootTotal))
        return failure;
    while (!stack.empty()) {
        Frame& frame = stack.back();
        if (frame.next == frame.object.children.size()) {
            states[frame.index] = State::Done;
            expanded[frame.index] = frame.total;
            size_t total = frame.total;
            stack.pop_back();
            if (stack.empty())
                rootTotal = total;
            else
                stack.back().total += total;
            if (total > limits.maximumObjects)
                return "too many objects";
            continue;
        }
        size_t position = frame.next++;
        uint64_t child = frame.object.children[position];
        if (position < frame.object.keyCount) {
            Object key;
            if (auto failure = readObject(child, key))
                return failure;
            if (!key.isString)
                return "dictionary key is not a string";
        }
        // enter() may grow the stack, so the frame is found again by index.
        size_t depth = stack.size();
        size_t total = 0;
        if (auto failure = enter(child, total))
            return failure;
        stack[depth - 1].total += total;
        if (stack[depth - 1].total > limits.maximumObjects)
            return "too many objects";
    }
    if (rootTotal > limits.maximumObjects)
        return "too many objects";
    return {};
}

} // namespace

std::optional<std::string> checkBinary(const uint8_t* bytes, size_t length, Limits limits)
{
    BinaryList list(bytes, length);
    if (auto failure = list.readTrailer())
        return failure;
    return list.check(limits);
}

std::optional<std::string> checkXML(const uint8_t* bytes, size_t length, Limits limits)
{
    // The <plist> element and a scalar's own element add two levels to the
    // containers' nesting.
    std::string_view text(reinterpret_cast<const char*>(bytes), length);
    auto skipPast = [&](size_t& at, std::string_view end) {
        size_t found = text.find(end, at);
        at = found == std::string_view::npos ? text.size() + 1 : found + end.size();
        return found != std::string_view::npos;
    };
    size_t depth = 0;
    size_t at = 0;
    while ((at = text.find('<', at)) != std::string_view::npos) {
        std::string_view rest = text.substr(at);
        bool closed = true;
        if (rest.starts_with("<?"))
            closed = skipPast(at, "?>");
        else if (rest.starts_with("<!--"))
            closed = skipPast(at, "-->");
        else if (rest.starts_with("<![CDATA["))
            closed = skipPast(at, "]]>");
        else if (rest.starts_with("<!"))
            closed = skipPast(at, ">");
        else {
            bool closing = rest.starts_with("</");
            // Find the end of the tag, stepping over quoted attribute values.
            size_t end = at + 1;
            char quote = 0;
            for (; end < text.size(); ++end) {
                char c = text[end];
                if (quote) {
                    if (c == quote)
                        quote = 0;
                } else if (c == '"' || c == '\'') {
                    quote = c;
                } else if (c == '>') {
                    break;
                }
            }
            if (end >= text.size())
                return "unterminated tag";
            bool selfClosing = text[end - 1] == '/';
            if (closing) {
                if (depth == 0)
                    return "unbalanced closing tag";
                --depth;
            } else if (!selfClosing && ++depth > limits.maximumDepth + 2) {
                return "nested too deeply";
            }
            at = end + 1;
        }
        if (!closed)
            return "unterminated markup";
    }
    return {};
}

} // namespace PropertyListChecks
