#include "platform/foundation/Timer.h"
#include "support/MainLoop.h"

#include <gmock/gmock.h>

#include <vector>

namespace perchly::tests {

using foundation::Timer;
using std::chrono::milliseconds;
using std::chrono::steady_clock;
using test::waitUntil;

/// Waits for a timer that is started now, and so for all started before it with no longer an interval.
void letPass(milliseconds interval)
{
    auto passed = false;
    const auto timer = Timer::scheduledTimer(interval, [&] { passed = true; });
    ASSERT_TRUE(waitUntil([&] { return passed; }));
    test::handlePendingEvents();
}

TEST(TimerTest, RunsItsBlockNoSoonerThanTheIntervalHasPassed)
{
    auto ran = false;
    const auto start = steady_clock::now();
    const auto timer = Timer::scheduledTimer(milliseconds(50), [&] { ran = true; });

    ASSERT_TRUE(waitUntil([&] { return ran; }));

    // The loop counts in whole milliseconds.
    EXPECT_GE(steady_clock::now() - start, milliseconds(49));
}

TEST(TimerTest, NeverRunsItsBlockAtOnce)
{
    auto ran = false;
    const auto timer = Timer::scheduledTimer(milliseconds(0), [&] { ran = true; });

    EXPECT_FALSE(ran);
    EXPECT_TRUE(waitUntil([&] { return ran; }));
}

TEST(TimerTest, RunsItsBlockOnce)
{
    auto count = 0;
    const auto timer = Timer::scheduledTimer(milliseconds(1), [&] { ++count; });

    letPass(milliseconds(30));

    EXPECT_EQ(count, 1);
}

TEST(TimerTest, InvalidatedItDoesNotRun)
{
    auto ran = false;
    const auto timer = Timer::scheduledTimer(milliseconds(5), [&] { ran = true; });

    timer->invalidate();
    timer->invalidate();
    letPass(milliseconds(20));

    EXPECT_FALSE(ran);
}

TEST(TimerTest, EndsWithItsOwner)
{
    auto ran = false;
    auto timer = Timer::scheduledTimer(milliseconds(5), [&] { ran = true; });

    timer.reset();
    letPass(milliseconds(20));

    EXPECT_FALSE(ran);
}

TEST(TimerTest, AnotherTimerInItsPlaceEndsIt)
{
    std::vector<int> ran;
    auto timer = Timer::scheduledTimer(milliseconds(5), [&] { ran.push_back(1); });

    timer = Timer::scheduledTimer(milliseconds(5), [&] { ran.push_back(2); });
    letPass(milliseconds(20));

    EXPECT_THAT(ran, testing::ElementsAre(2));
}

TEST(TimerTest, ItsBlockMayEndItAndStartAnother)
{
    auto ran = false;
    std::unique_ptr<Timer> timer;
    const auto kept = std::make_shared<int>(7);
    timer = Timer::scheduledTimer(milliseconds(1), [&, kept] {
        timer = Timer::scheduledTimer(milliseconds(1), [&] { ran = true; });
        EXPECT_EQ(*kept, 7);
    });

    EXPECT_TRUE(waitUntil([&] { return ran; }));
}

TEST(TimerTest, InvalidatedByItsOwnBlockItIsDone)
{
    auto count = 0;
    std::unique_ptr<Timer> timer;
    timer = Timer::scheduledTimer(milliseconds(1), [&] {
        ++count;
        timer->invalidate();
    });

    letPass(milliseconds(20));

    EXPECT_EQ(count, 1);
}

TEST(TimerTest, LetsGoOfItsBlockWhenItIsInvalidated)
{
    auto kept = std::make_shared<int>(0);
    const std::weak_ptr<int> weak = kept;
    const auto timer = Timer::scheduledTimer(milliseconds(1000), [kept = std::move(kept)] { ++*kept; });
    ASSERT_FALSE(weak.expired());

    timer->invalidate();

    EXPECT_TRUE(weak.expired());
}

} // namespace perchly::tests
