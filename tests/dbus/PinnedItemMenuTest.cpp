#include "PinnedItemTest.h"

namespace {

using testbus::waitUntil;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

using PinnedItemMenuTest = PinnedItemTest;

TEST_F(PinnedItemMenuTest, EveryHostIsShownTheMenu)
{
    const auto bookmark = shown(bookmarkNamed("This"));

    withEachHost(bookmark, [](FakeHost& host) {
        host.openMenu();
        auto labels = host.labels();
        std::erase_if(labels, [](const auto& label) { return label.empty(); });
        EXPECT_EQ(labels.front(), "Detach Window");
        EXPECT_EQ(labels.back(), "Remove from Menubar");
        EXPECT_THAT(labels, Contains("Browser Agent"));
        EXPECT_THAT(labels, Not(Contains("Open")));
    });
    EXPECT_THAT(delegate->opened, IsEmpty());
}

TEST_F(PinnedItemMenuTest, ItsMenuIsFreshAtEveryOpening)
{
    auto bookmark = shown(bookmarkNamed("This"));

    withEachHost(bookmark, [&](FakeHost& host) {
        host.openMenu();
        const auto id = host.idOf("Pin to Quick Access");
        EXPECT_EQ(rowProperty(bookmark, id, "toggle-type"), "(<'checkmark'>,)");
        EXPECT_EQ(rowProperty(bookmark, id, "toggle-state"), bookmark.isPinned ? "(<1>,)" : "(<0>,)");
        // The store announces nothing of itself.
        bookmark.isPinned = !bookmark.isPinned;
        store().updateBookmark(bookmark);

        host.openMenu();

        EXPECT_EQ(host.idOf("Pin to Quick Access"), id);
        EXPECT_EQ(rowProperty(bookmark, id, "toggle-state"), bookmark.isPinned ? "(<1>,)" : "(<0>,)");
        EXPECT_THAT(host.traffic(), Contains("ItemsPropertiesUpdated"));
    });
}

TEST_F(PinnedItemMenuTest, ItsMenuFollowsAChangeThatWasAnnouncedBeforeItIsOpened)
{
    auto bookmark = shown(bookmarkNamed("This"));
    GtkHost host(connectionOf(bookmark), "/MenuBar");
    const auto id = host.idOf("Reload on Every Open");
    bookmark.shouldReloadOnOpen = true;

    change(bookmark);

    EXPECT_TRUE(waitUntil([&] { return rowProperty(bookmark, id, "toggle-state") == "(<1>,)"; }));
}

TEST_F(PinnedItemMenuTest, EveryHostsChoiceActs)
{
    const auto bookmark = shown(bookmarkNamed("This"));

    withEachHost(bookmark, [&](FakeHost& host) {
        const auto before = storedLike(bookmark).prefersDetached;
        host.openMenu();

        choose(host, "Always Open in Window");
        choose(host, "Detach Window");

        EXPECT_EQ(storedLike(bookmark).prefersDetached, !before);
    });
    EXPECT_THAT(delegate->detached, SizeIs(3));
}

TEST_F(PinnedItemMenuTest, ChoosingToRemoveItTakesItFromTheStatusArea)
{
    const auto bookmark = shown(bookmarkNamed("This"));
    {
        GnomeHost host(connectionOf(bookmark), "/MenuBar");
        host.openMenu();
        host.call(
            "Event", g_variant_new("(isvu)", host.idOf("Remove from Menubar"), "clicked", g_variant_new_int32(0), 0U));
    }

    EXPECT_TRUE(waitUntil([&] { return watcher_.items().empty(); }));
    EXPECT_FALSE(storedLike(bookmark).isAddedToMenuBar);
}

TEST_F(PinnedItemMenuTest, OnADesktopOfGnomesPartsTheMenuHasNoOpen)
{
    g_setenv("XDG_CURRENT_DESKTOP", "Budgie:GNOME", TRUE);
    const auto bookmark = shown(bookmarkNamed("This"));
    GtkHost host(connectionOf(bookmark), "/MenuBar");

    host.openMenu();

    EXPECT_THAT(host.labels(), Not(Contains("Open")));
}

TEST_F(PinnedItemMenuTest, OnlyWhereAClickOpensTheMenuAloneItBeginsWithOpen)
{
    g_setenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME", TRUE);
    const auto bookmark = shown(bookmarkNamed("This"));
    GnomeHost host(connectionOf(bookmark), "/MenuBar");

    host.openMenu();

    const auto labels = host.labels();
    ASSERT_GT(labels.size(), 3U);
    EXPECT_EQ(labels[0], "Open");
    EXPECT_EQ(labels[1], "");
    EXPECT_EQ(labels[2], "Detach Window");
    choose(host, "Open");
    EXPECT_TRUE(waitUntil([&] { return delegate->opened.size() == 1; }));
}

TEST_F(PinnedItemMenuTest, AChoiceFromAMenuThatWasNeverToldToOpenSavesOverNothing)
{
    auto bookmark = shown(bookmarkNamed("This"));
    const GtkHost host(connectionOf(bookmark), "/MenuBar");
    // As a browser's size is, which nobody announces.
    bookmark.preferredWidth = 512;
    bookmark.preferredHeight = 640;
    store().updateBookmark(bookmark);

    choose(host, "Pin to Quick Access");

    bookmark.isPinned = true;
    EXPECT_EQ(storedLike(bookmark), bookmark);
}

TEST_F(PinnedItemMenuTest, AChoiceFromAMenuThatIsOpenSavesItAsItWasWhenItOpened)
{
    auto bookmark = shown(bookmarkNamed("This"));
    GtkHost host(connectionOf(bookmark), "/MenuBar");
    host.openMenu();
    auto changed = bookmark;
    changed.preferredWidth = 512;
    store().updateBookmark(changed);

    choose(host, "Pin to Quick Access");

    bookmark.isPinned = true;
    EXPECT_EQ(storedLike(bookmark), bookmark);
}

TEST_F(PinnedItemMenuTest, ARowThatTakesItsItemAwayIsAnsweredAllTheSame)
{
    const auto bookmark = bookmarkNamed("This");
    for (auto time = 0; time < 100; ++time) {
        store().removeBookmark(bookmark.id);
        shown(bookmark);
        const GnomeHost host(connectionOf(bookmark), "/MenuBar");

        EXPECT_TRUE(host.call(
            "Event", g_variant_new("(isvu)", host.idOf("Remove from Menubar"), "clicked", g_variant_new_int32(0), 0U)));

        ASSERT_TRUE(waitUntil([&] { return watcher_.items().empty(); }));
    }
}

} // namespace
