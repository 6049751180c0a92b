#pragma once

#include <objc/objc.h>

#include <cstdint>
#include <functional>
#include <string>

// Dispatch queues on the one run loop. Work submitted to any queue runs on
// the main thread, in submission order, when the run loop reaches it; the
// global and private queues are therefore as asynchronous as on the phone
// (the submitter returns first) and fully deterministic.
class DispatchQueue final : public NSObject {
    OBJC_CLASS(DispatchQueue)
public:
    DispatchQueue() = default;
    DispatchQueue(std::string label, bool isMain)
        : m_label(std::move(label))
        , m_isMain(isMain)
    {
    }
    const std::string& label() const { return m_label; }
    bool isMain() const { return m_isMain; }

private:
    std::string m_label;
    bool m_isMain { false };
};

using dispatch_queue_t = DispatchQueue*;
using dispatch_block_t = std::function<void()>;
// Nanoseconds on the monotonic clock, as dispatch_time gives them.
using dispatch_time_t = uint64_t;
using dispatch_once_t = long;

inline constexpr dispatch_time_t DISPATCH_TIME_NOW = 0;
inline constexpr int64_t NSEC_PER_SEC = 1000000000;
inline constexpr long DISPATCH_QUEUE_PRIORITY_DEFAULT = 0;

dispatch_queue_t dispatch_get_main_queue();
dispatch_queue_t dispatch_get_global_queue(long identifier, unsigned long flags);
RefPtr<DispatchQueue> dispatch_queue_create(const char* label, const void* attributes);
// The queue whose work is running now (the main queue outside any work).
dispatch_queue_t dispatch_current_queue();

void dispatch_async(dispatch_queue_t, dispatch_block_t);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t deltaNanoseconds);
void dispatch_after(dispatch_time_t when, dispatch_queue_t, dispatch_block_t);

// Runs the block the first time only. Tokens start at zero.
template<typename F>
void dispatch_once(dispatch_once_t* token, F&& block)
{
    if (*token)
        return;
    *token = -1;
    block();
}
