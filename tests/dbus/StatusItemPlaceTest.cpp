#include "Monitor.h"
#include "StatusItemTest.h"

#include <optional>
#include <vector>

namespace {

using appkit::StatusBar;
using appkit::StatusItem;
using testbus::waitUntil;
using testing::EndsWith;
using testing::SizeIs;

using StatusItemPlaceTest = StatusItemTest;

TEST_F(StatusItemPlaceTest, AppearsAsSoonAsThereIsAStatusArea)
{
    const auto item = makeItem(true);
    testbus::settle(host_);

    const FakeWatcher watcher;

    EXPECT_TRUE(appears(watcher));
}

TEST_F(StatusItemPlaceTest, ListensForTheStatusAreaOnceForAllItems)
{
    const FakeWatcher watcher;
    const testbus::Monitor monitor;
    const auto first = makeItem(false);
    const auto second = makeItem(false);
    ASSERT_TRUE(appears(watcher, 2));

    // What a connection has sent before it answers a host, the monitor has seen before.
    const std::string host = g_dbus_connection_get_unique_name(host_.get());
    for (const auto& item : watcher.items()) {
        const auto connection = target(item, "").service;
        EXPECT_TRUE(testbus::call(host_, target(item, "org.freedesktop.DBus.Peer"), "Ping", nullptr));
        EXPECT_TRUE(waitUntil([&] { return monitor.hasSeen(host, "Ping"); }));
        EXPECT_FALSE(monitor.hasSeen(connection, "AddMatch"));
    }
}

TEST_F(StatusItemPlaceTest, ComesBackWithTheStatusArea)
{
    std::optional<FakeWatcher> watcher(std::in_place);
    const auto item = makeItem(true);
    const auto other = makeItem(false);
    ASSERT_TRUE(appears(*watcher, 2));

    watcher.reset();
    testbus::settle(host_);
    watcher.emplace();

    EXPECT_TRUE(appears(*watcher, 2));
}

TEST_F(StatusItemPlaceTest, ManyComeAndComeBackInTheOrderOfTheirMaking)
{
    constexpr auto count = 30;
    std::vector<std::shared_ptr<StatusItem>> items;
    std::vector<std::string> expected;
    for (auto number = 0; number < count; ++number) {
        items.push_back(makeItem(false));
        items.back()->setAutosaveName(std::to_string(number));
        expected.push_back("(<'perchly-" + std::to_string(number) + "'>,)");
    }
    // The first time they meet an area that is there, then ones that come.
    for (auto time = 0; time < 3; ++time) {
        const FakeWatcher watcher;
        ASSERT_TRUE(appears(watcher, count));
        std::vector<std::string> ids;
        for (const auto& item : watcher.items())
            ids.push_back(property(item, "Id"));
        EXPECT_EQ(ids, expected);
        testbus::settle(host_);
        EXPECT_EQ(watcher.registrations(), count);
    }
}

TEST_F(StatusItemPlaceTest, OnXfceEachItemComesWhenTheOneBeforeWasTakenUp)
{
    g_setenv("XDG_CURRENT_DESKTOP", "XFCE", TRUE);
    const FakeWatcher watcher;
    const std::shared_ptr<StatusItem> items[] = { makeItem(true), makeItem(false), makeItem(false) };
    ASSERT_TRUE(appears(watcher));
    testbus::settle(host_);
    EXPECT_THAT(watcher.items(), SizeIs(1));

    const auto before = g_get_monotonic_time();
    readAll(watcher.items().front());
    ASSERT_TRUE(appears(watcher, 2));
    EXPECT_LT(g_get_monotonic_time() - before, 500'000);
    testbus::settle(host_);
    EXPECT_THAT(watcher.items(), SizeIs(2));

    // Nobody reads the second one, which is not waited for long.
    EXPECT_TRUE(appears(watcher, 3));
}

TEST_F(StatusItemPlaceTest, OnXfceItemsMayGoBeforeTheirTurn)
{
    g_setenv("XDG_CURRENT_DESKTOP", "XFCE", TRUE);
    const FakeWatcher watcher;
    std::shared_ptr<StatusItem> items[] = { makeItem(true), makeItem(false) };
    ASSERT_TRUE(appears(watcher));
    testbus::settle(host_);
    const auto first = watcher.items().front();

    items[first.ends_with("/perchly") ? 1 : 0].reset();
    readAll(first);
    const auto later = makeItem(false);

    ASSERT_TRUE(appears(watcher, 2));
    EXPECT_EQ(watcher.registrations(), 2);
}

TEST_F(StatusItemPlaceTest, RegistersAgainWhenItWasForgotten)
{
    FakeWatcher watcher;
    const auto item = makeItem(true);
    ASSERT_TRUE(appears(watcher));

    watcher.forget(watcher.items().front());

    EXPECT_TRUE(waitUntil([&] { return watcher.registrations() == 2; }));
    EXPECT_THAT(watcher.items(), SizeIs(1));
}

TEST_F(StatusItemPlaceTest, TakesNoNoticeWhenAnotherItemWasForgotten)
{
    FakeWatcher watcher;
    const auto item = makeItem(true);
    ASSERT_TRUE(appears(watcher));

    // Another connection's name that begins as this item's does.
    auto other = watcher.items().front();
    other.insert(other.find('/'), "7");
    watcher.forget(other);
    watcher.forget(watcher.items().front());

    EXPECT_TRUE(waitUntil([&] { return watcher.registrations() == 2; }));
    testbus::settle(host_);
    EXPECT_EQ(watcher.registrations(), 2);
}

TEST_F(StatusItemPlaceTest, LeavesTheStatusAreaWithItsLastOwner)
{
    const FakeWatcher watcher;
    const auto stays = makeItem(true);
    auto goes = makeItem(false);
    ASSERT_TRUE(appears(watcher, 2));

    goes.reset();

    ASSERT_TRUE(appears(watcher));
    EXPECT_THAT(watcher.items().front(), EndsWith("/perchly"));
}

TEST_F(StatusItemPlaceTest, MayGoOrBeTakenOutBeforeItWasConnected)
{
    const FakeWatcher watcher;
    makeItem(true).reset();
    const auto goes = makeItem(true);
    StatusBar::systemStatusBar().removeStatusItem(*goes);

    const auto later = makeItem(false);

    ASSERT_TRUE(appears(watcher));
    EXPECT_EQ(watcher.registrations(), 1);
}

} // namespace
