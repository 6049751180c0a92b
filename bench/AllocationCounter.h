#pragma once

#include <cstddef>
#include <cstdint>

// Counts every operator new and delete in the process (the benchmark program
// replaces the global operators, and the shared libraries bind to them).
struct AllocationCounter {
    static uint64_t allocations();
    static int64_t liveBytes();
};
