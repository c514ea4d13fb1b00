#include "platform/appkit/Window.h"

#include <gtest/gtest.h>

namespace {

using appkit::contains;
using appkit::WindowStyleMask;

TEST(WindowStyleMaskTest, HoldsEachOfItsParts)
{
    constexpr auto all = WindowStyleMask::Titled | WindowStyleMask::Closable | WindowStyleMask::Miniaturizable
        | WindowStyleMask::Resizable;

    EXPECT_EQ(static_cast<unsigned>(all), 15U);
    for (const auto part : { WindowStyleMask::Titled, WindowStyleMask::Closable, WindowStyleMask::Miniaturizable,
             WindowStyleMask::Resizable })
        EXPECT_TRUE(contains(all, part));
}

TEST(WindowStyleMaskTest, HoldsNothingElse)
{
    constexpr auto some = WindowStyleMask::Titled | WindowStyleMask::Miniaturizable;

    EXPECT_FALSE(contains(some, WindowStyleMask::Closable));
    EXPECT_FALSE(contains(some, WindowStyleMask::Resizable));
    EXPECT_FALSE(contains(WindowStyleMask::Borderless, WindowStyleMask::Titled));
}

} // namespace
