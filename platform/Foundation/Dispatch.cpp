#include "Dispatch.h"

#include "NSRunLoop.h"
#include "VirtualClock.h"

OBJC_IMPLEMENT_CLASS(DispatchQueue, NSObject) { }

static dispatch_queue_t s_currentQueue = nullptr;

dispatch_queue_t dispatch_get_main_queue()
{
    static auto* queue = new DispatchQueue("com.apple.main-thread", true);
    return queue;
}

dispatch_queue_t dispatch_get_global_queue(long identifier, unsigned long)
{
    static auto* high = new DispatchQueue("com.apple.root.user-initiated-qos", false);
    static auto* normal = new DispatchQueue("com.apple.root.default-qos", false);
    static auto* low = new DispatchQueue("com.apple.root.utility-qos", false);
    static auto* background = new DispatchQueue("com.apple.root.background-qos", false);
    switch (identifier) {
    case 2:
        return high;
    case -2:
        return low;
    case INT16_MIN:
        return background;
    default:
        return normal;
    }
}

RefPtr<DispatchQueue> dispatch_queue_create(const char* label, const void*)
{
    return make<DispatchQueue>(label ? label : "", false);
}

dispatch_queue_t dispatch_current_queue() { return s_currentQueue ? s_currentQueue : dispatch_get_main_queue(); }

static void runOn(RefPtr<DispatchQueue> queue, const dispatch_block_t& block)
{
    dispatch_queue_t previous = s_currentQueue;
    s_currentQueue = queue.get();
    block();
    s_currentQueue = previous;
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block)
{
    if (!queue || !block)
        return;
    RefPtr<DispatchQueue> protect(queue);
    NSRunLoop::mainRunLoop()->scheduleAfter(0, [protect, block = std::move(block)] { runOn(protect, block); });
}

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta)
{
    double base = when == DISPATCH_TIME_NOW ? VirtualClock::shared().monotonic() * NSEC_PER_SEC : static_cast<double>(when);
    double result = base + static_cast<double>(delta);
    return result <= 0 ? 1 : static_cast<dispatch_time_t>(result);
}

void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block)
{
    if (!queue || !block)
        return;
    RefPtr<DispatchQueue> protect(queue);
    double at = when == DISPATCH_TIME_NOW ? VirtualClock::shared().monotonic() : static_cast<double>(when) / NSEC_PER_SEC;
    NSRunLoop::mainRunLoop()->scheduleAt(at, [protect, block = std::move(block)] { runOn(protect, block); });
}
