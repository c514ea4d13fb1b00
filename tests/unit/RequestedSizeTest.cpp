#include "platform/linux/desktop/RequestedSize.h"
#include "support/MainLoop.h"

#include <gtest/gtest.h>

namespace {

using desktop::RequestedSize;
using foundation::Size;

bool isRefused(const RequestedSize& requested, Size wanted, Size actual)
{
    return requested.orElse(actual) == actual && actual != wanted;
}

TEST(RequestedSizeTest, WithoutARequestCountsWhatIsThere)
{
    EXPECT_EQ(RequestedSize().orElse({ 600, 700 }), (Size { 600, 700 }));
}

TEST(RequestedSizeTest, ARequestCountsAtOnce)
{
    RequestedSize requested;
    requested.request({ 400, 500 });
    EXPECT_EQ(requested.orElse({ 600, 700 }), (Size { 400, 500 }));
}

TEST(RequestedSizeTest, ARequestThatIsRefusedCountsForAMomentOnly)
{
    RequestedSize requested;
    requested.request({ 400, 500 });
    EXPECT_TRUE(perchly::test::waitUntil([&] { return isRefused(requested, { 400, 500 }, { 600, 700 }); }));
}

TEST(RequestedSizeTest, HalfAPointOutlastsThatMoment)
{
    RequestedSize requested;
    RequestedSize refused;
    requested.request({ 400.5, 500 });
    refused.request({ 400.5, 500 });
    ASSERT_TRUE(perchly::test::waitUntil([&] { return isRefused(refused, { 400.5, 500 }, { 600, 700 }); }));
    EXPECT_EQ(requested.orElse({ 400, 500 }), (Size { 400.5, 500 }));
}

} // namespace
