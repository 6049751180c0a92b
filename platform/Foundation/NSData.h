#pragma once

#include <objc/objc.h>

#include <cstdint>
#include <vector>

class NSData final : public NSObject {
    OBJC_CLASS(NSData)
public:
    NSData() = default;
    explicit NSData(std::vector<uint8_t> bytes)
        : m_bytes(std::move(bytes))
    {
    }
    size_t length() const { return m_bytes.size(); }
    const std::vector<uint8_t>& bytes() const { return m_bytes; }

private:
    std::vector<uint8_t> m_bytes;
};
