#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "support/MainLoop.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <memory>
#include <thread>
#include <vector>

namespace perchly::tests {

using foundation::dispatchMainAsync;
using test::waitUntil;

TEST(DispatchQueueTest, WorkRunsLaterInTheOrderOfTheCalls)
{
    std::vector<int> ran;
    for (int i = 0; i < 100; ++i)
        dispatchMainAsync([&ran, i] { ran.push_back(i); });
    EXPECT_TRUE(ran.empty());

    ASSERT_TRUE(waitUntil([&] { return ran.size() == 100; }));

    EXPECT_TRUE(std::is_sorted(ran.begin(), ran.end()));
}

TEST(DispatchQueueTest, WorkFromAnotherThreadRunsOnTheMainThread)
{
    bool ran = false;
    std::thread([&] {
        dispatchMainAsync([&] {
            foundation::assertMainThread();
            ran = true;
        });
    }).join();

    EXPECT_FALSE(ran);
    EXPECT_TRUE(waitUntil([&] { return ran; }));
}

TEST(DispatchQueueTest, WorkThatWorkEnqueuesRunsAfterIt)
{
    std::vector<int> ran;
    dispatchMainAsync([&] {
        dispatchMainAsync([&] { ran.push_back(3); });
        ran.push_back(1);
    });
    dispatchMainAsync([&] { ran.push_back(2); });

    ASSERT_TRUE(waitUntil([&] { return ran.size() == 3; }));

    EXPECT_THAT(ran, testing::ElementsAre(1, 2, 3));
}

TEST(DispatchQueueTest, WorkIsLetGoOnceItRan)
{
    auto held = std::make_shared<int>(0);
    dispatchMainAsync([held] { ++*held; });

    EXPECT_TRUE(waitUntil([&] { return *held == 1 && held.use_count() == 1; }));
}

} // namespace perchly::tests
