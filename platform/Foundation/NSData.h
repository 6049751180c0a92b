#pragma once

#include <objc/objc.h>

#include <cstdint>
#include <string>
#include <vector>

class NSData final : public NSObject {
    OBJC_CLASS(NSData)
public:
    NSData() = default;
    explicit NSData(std::vector<uint8_t> bytes)
        : m_bytes(std::move(bytes))
    {
    }
    static RefPtr<NSData> dataWithBytes(const void* bytes, size_t length)
    {
        auto* begin = static_cast<const uint8_t*>(bytes);
        return make<NSData>(std::vector<uint8_t>(begin, begin + length));
    }
    // The bytes of a file at a device path; null when it cannot be read.
    static RefPtr<NSData> dataWithContentsOfFile(const std::string& path);

    size_t length() const { return m_bytes.size(); }
    const std::vector<uint8_t>& bytes() const { return m_bytes; }

private:
    std::vector<uint8_t> m_bytes;
};
