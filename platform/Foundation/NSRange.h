#pragma once

#include <cstddef>
#include <cstdint>

// A range of characters, counted in UTF-16 code units as NSString counts them.
struct NSRange {
    size_t location { 0 };
    size_t length { 0 };
    friend bool operator==(const NSRange&, const NSRange&) = default;
};

inline constexpr size_t NSNotFound = static_cast<size_t>(INTPTR_MAX);

inline NSRange NSMakeRange(size_t location, size_t length) { return { location, length }; }
inline size_t NSMaxRange(NSRange range) { return range.location + range.length; }
