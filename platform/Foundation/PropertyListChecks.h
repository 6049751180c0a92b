#pragma once

// Private to Foundation: the checks that stand between untrusted bytes and
// libplist, whose parsers recurse without limit and follow references
// without checking them.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace PropertyListChecks {

struct Limits {
    unsigned maximumDepth;
    size_t maximumObjects;
};

// Each answers nullopt when the data is safe to parse, or why it is not.
std::optional<std::string> checkBinary(const uint8_t* bytes, size_t length, Limits);
std::optional<std::string> checkXML(const uint8_t* bytes, size_t length, Limits);

} // namespace PropertyListChecks
