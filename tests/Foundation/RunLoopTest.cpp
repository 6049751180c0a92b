#include <Foundation/Dispatch.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/NSTimer.h>
#include <Foundation/VirtualClock.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

double now() { return VirtualClock::shared().monotonic(); }
NSRunLoop& loop() { return *NSRunLoop::mainRunLoop(); }

} // namespace

TEST(NSRunLoop, RunsWorkInTimeOrderAndSameTimeWorkInSubmissionOrder)
{
    std::string order;
    double start = now();
    loop().scheduleAt(start + 3, [&] { order += "c"; });
    loop().scheduleAt(start + 1, [&] { order += "a"; });
    loop().scheduleAt(start + 2, [&] { order += "b1"; });
    loop().scheduleAt(start + 2, [&] { order += "b2"; });
    loop().scheduleAt(start + 2, [&] { order += "b3"; });
    loop().advance(2.5);
    EXPECT_EQ(order, "ab1b2b3");
    EXPECT_DOUBLE_EQ(now(), start + 2.5);
    loop().advance(1);
    EXPECT_EQ(order, "ab1b2b3c");
}

TEST(NSRunLoop, CancelledWorkDoesNotRunAndWorkInThePastRunsNow)
{
    bool cancelledRan = false;
    bool lateRan = false;
    auto token = loop().scheduleAfter(1, [&] { cancelledRan = true; });
    loop().cancel(token);
    loop().scheduleAt(now() - 10, [&] { lateRan = true; });
    loop().runPending();
    EXPECT_TRUE(lateRan);
    loop().advance(2);
    EXPECT_FALSE(cancelledRan);
}

TEST(NSTimer, RepeatingTimerFiresOnWholeMultiplesWithoutDrift)
{
    double start = now();
    std::vector<double> firings;
    auto timer = NSTimer::scheduledTimerWithTimeInterval(0.1, true, [&](NSTimer*) { firings.push_back(now() - start); });
    // Jumps that are not multiples of the interval must not shift later firings.
    loop().advance(0.25);
    loop().advance(0.37);
    loop().advance(0.38);
    timer->invalidate();
    ASSERT_EQ(firings.size(), 10u);
    for (size_t i = 0; i < firings.size(); ++i)
        EXPECT_NEAR(firings[i], 0.1 * (i + 1), 1e-9) << "firing " << i;
    loop().advance(1);
    EXPECT_EQ(firings.size(), 10u);
}

TEST(NSTimer, IntervalOfZeroOrLessBecomesATenthOfAMillisecond)
{
    int fired = 0;
    auto zero = NSTimer::scheduledTimerWithTimeInterval(0, true, [&](NSTimer*) { ++fired; });
    auto negative = NSTimer::scheduledTimerWithTimeInterval(-5, false, [](NSTimer*) { });
    EXPECT_DOUBLE_EQ(zero->timeInterval(), 0.0001);
    EXPECT_DOUBLE_EQ(negative->timeInterval(), 0.0001);
    loop().advance(0.00105);
    zero->invalidate();
    EXPECT_EQ(fired, 10);
    EXPECT_FALSE(negative->isValid());
}

TEST(NSTimer, IntervalThatIsNotANumberOrInfiniteNeverFiresAndKeepsOthersInOrder)
{
    // A preference real can be NaN or infinite; such a timer must neither
    // spin nor disturb the order in which the other timers fire.
    int odd = 0;
    std::string order;
    auto notANumber = NSTimer::scheduledTimerWithTimeInterval(std::nan(""), true, [&](NSTimer*) { ++odd; });
    auto infinite = NSTimer::scheduledTimerWithTimeInterval(INFINITY, true, [&](NSTimer*) { ++odd; });
    auto second = NSTimer::scheduledTimerWithTimeInterval(2, false, [&](NSTimer*) { order += "2"; });
    auto first = NSTimer::scheduledTimerWithTimeInterval(1, false, [&](NSTimer*) { order += "1"; });
    loop().advance(4);
    EXPECT_EQ(odd, 0);
    EXPECT_EQ(order, "12");
    EXPECT_TRUE(notANumber->isValid());
    notANumber->invalidate();
    infinite->invalidate();
}

TEST(NSTimer, ChangingTheWallClockDoesNotMoveTimers)
{
    auto& clock = VirtualClock::shared();
    bool fired = false;
    auto timer = NSTimer::scheduledTimerWithTimeInterval(10, false, [&](NSTimer*) { fired = true; });
    clock.setWallNow(clock.wallNow() + 3600);
    loop().advance(9.9);
    EXPECT_FALSE(fired);
    clock.setWallNow(clock.wallNow() - 7200);
    loop().advance(0.2);
    EXPECT_TRUE(fired);
}

TEST(Dispatch, QueuedBlocksRunInSubmissionOrderOnTheirQueue)
{
    std::vector<std::string> seen;
    auto* global = dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0);
    dispatch_async(dispatch_get_main_queue(), [&] { seen.push_back("main1"); });
    dispatch_async(global, [&] {
        seen.push_back(dispatch_current_queue() == global ? "global" : "wrong queue");
        dispatch_async(dispatch_get_main_queue(), [&] { seen.push_back("nested"); });
    });
    dispatch_async(dispatch_get_main_queue(), [&] { seen.push_back("main2"); });
    EXPECT_TRUE(seen.empty()) << "dispatch_async must return before the block runs";
    loop().runPending();
    EXPECT_EQ(seen, (std::vector<std::string> { "main1", "global", "main2", "nested" }));
    EXPECT_EQ(dispatch_current_queue(), dispatch_get_main_queue());
}

TEST(Dispatch, AfterRunsAtItsTimeAndOnceRunsOnce)
{
    bool ran = false;
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, 2 * NSEC_PER_SEC), dispatch_get_main_queue(), [&] { ran = true; });
    loop().advance(1.999);
    EXPECT_FALSE(ran);
    loop().advance(0.001);
    EXPECT_TRUE(ran);

    static dispatch_once_t token;
    int count = 0;
    for (int i = 0; i < 3; ++i)
        dispatch_once(&token, [&] { ++count; });
    EXPECT_EQ(count, 1);
}
