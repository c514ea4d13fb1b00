#include "FakeWatcher.h"
#include "platform/appkit/StatusBar.h"
#include "platform/appkit/StatusItem.h"
#include "platform/foundation/URL.h"
#include "platform/foundation/URLSession.h"
#include "support/TestServer.h"
#include "support/linux/ChildProcesses.h"

#include <gmock/gmock.h>

#include <atomic>

namespace {

using appkit::StatusBar;
using perchly::test::childProcesses;
using perchly::test::TestServer;
using testbus::waitUntil;
using testing::IsEmpty;
using testing::SizeIs;

/// In microseconds: well before the patience with a status area that is silent.
constexpr gint64 deadline = 800'000;

/// The first status item has the bus and the processors to itself.
class FirstItemTest : public testing::Test {
protected:
    void SetUp() override
    {
        g_unsetenv("DISPLAY");
        g_unsetenv("XDG_CURRENT_DESKTOP");
    }

    [[nodiscard]] std::size_t connections() const
    {
        const auto reply = testbus::call(
            bus_, { "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus" }, "ListNames", nullptr);
        return g_variant_n_children(desktop::adoptVariant(g_variant_get_child_value(reply.get(), 0)).get());
    }

    void startDownload()
    {
        const auto address = foundation::URL::parse(server_.url("/icon"));
        foundation::URLSession::sharedSession().dataTask({ .url = *address }, [this](auto) { isDownloaded_ = true; });
    }

    testbus::Connection bus_ = testbus::connect();
    TestServer server_;
    std::atomic<bool> isDownloaded_ = false;
};

TEST_F(FirstItemTest, OthersAndDownloadsWaitUntilItIsThere)
{
    FakeWatcher watcher;
    watcher.holdAnswers();
    const auto first = StatusBar::systemStatusBar().statusItem();
    const auto second = StatusBar::systemStatusBar().statusItem();
    startDownload();
    ASSERT_TRUE(waitUntil([&] { return watcher.items().size() == 1; }));
    const auto before = connections();
    testbus::settle(bus_);
    EXPECT_EQ(connections(), before);
    EXPECT_THAT(childProcesses("perchly-fetch"), IsEmpty());
    EXPECT_THAT(watcher.items(), SizeIs(1));

    watcher.answer();
    EXPECT_TRUE(waitUntil([&] { return watcher.items().size() == 2; }));
    EXPECT_EQ(connections(), before + 1);
    EXPECT_TRUE(waitUntil([&] { return isDownloaded_.load(); }));
    EXPECT_EQ(server_.requestCount("/icon"), 1U);
}

TEST_F(FirstItemTest, AStatusAreaThatDoesNotAnswerHoldsUpNothingForLong)
{
    FakeWatcher watcher;
    watcher.holdAnswers();
    const auto first = StatusBar::systemStatusBar().statusItem();
    startDownload();
    EXPECT_TRUE(waitUntil([&] { return isDownloaded_.load(); }));
    watcher.answer();
}

TEST_F(FirstItemTest, NothingWaitsWithoutAStatusArea)
{
    const auto start = g_get_monotonic_time();
    const auto first = StatusBar::systemStatusBar().statusItem();
    const auto second = StatusBar::systemStatusBar().statusItem();
    startDownload();
    EXPECT_TRUE(waitUntil([&] { return isDownloaded_.load(); }));
    EXPECT_LT(g_get_monotonic_time() - start, deadline);
    const FakeWatcher watcher;
    EXPECT_TRUE(waitUntil([&] { return watcher.items().size() == 2; }));
}

TEST_F(FirstItemTest, WhenItGoesBeforeItCameNothingWaitsForIt)
{
    const FakeWatcher watcher;
    const auto start = g_get_monotonic_time();
    auto first = StatusBar::systemStatusBar().statusItem();
    const auto second = StatusBar::systemStatusBar().statusItem();

    first.reset();

    EXPECT_TRUE(waitUntil([&] { return watcher.items().size() == 1; }));
    EXPECT_LT(g_get_monotonic_time() - start, deadline);
}

TEST_F(FirstItemTest, AnItemThatGoesWhileItWaitsNeverComes)
{
    FakeWatcher watcher;
    watcher.holdAnswers();
    const auto first = StatusBar::systemStatusBar().statusItem();
    auto second = StatusBar::systemStatusBar().statusItem();
    const auto third = StatusBar::systemStatusBar().statusItem();
    ASSERT_TRUE(waitUntil([&] { return watcher.items().size() == 1; }));
    StatusBar::systemStatusBar().removeStatusItem(*second);
    second.reset();
    watcher.answer();
    EXPECT_TRUE(waitUntil([&] { return watcher.items().size() == 2; }));
    testbus::settle(bus_);
    EXPECT_THAT(watcher.items(), SizeIs(2));
}

} // namespace
