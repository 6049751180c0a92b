#include "AllocationCounter.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

static std::atomic<uint64_t> s_allocations;
static std::atomic<int64_t> s_liveBytes;

uint64_t AllocationCounter::allocations() { return s_allocations.load(std::memory_order_relaxed); }
int64_t AllocationCounter::liveBytes() { return s_liveBytes.load(std::memory_order_relaxed); }

static void* allocate(size_t size)
{
    void* pointer = std::malloc(size ? size : 1);
    if (!pointer)
        throw std::bad_alloc();
    s_allocations.fetch_add(1, std::memory_order_relaxed);
    s_liveBytes.fetch_add(static_cast<int64_t>(malloc_usable_size(pointer)), std::memory_order_relaxed);
    return pointer;
}

static void release(void* pointer)
{
    if (!pointer)
        return;
    s_liveBytes.fetch_sub(static_cast<int64_t>(malloc_usable_size(pointer)), std::memory_order_relaxed);
    std::free(pointer);
}

void* operator new(size_t size) { return allocate(size); }
void* operator new[](size_t size) { return allocate(size); }
void* operator new(size_t size, const std::nothrow_t&) noexcept
{
    try {
        return allocate(size);
    } catch (...) {
        return nullptr;
    }
}
void operator delete(void* pointer) noexcept { release(pointer); }
void operator delete[](void* pointer) noexcept { release(pointer); }
void operator delete(void* pointer, size_t) noexcept { release(pointer); }
void operator delete[](void* pointer, size_t) noexcept { release(pointer); }
