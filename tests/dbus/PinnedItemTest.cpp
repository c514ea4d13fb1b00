#include "PinnedItemTest.h"
#include "Monitor.h"

namespace {

using perchly::Bookmark;
using testbus::waitUntil;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(PinnedItemTest, IsKnownByTheBookmarksId)
{
    const auto bookmark = shown(bookmarkNamed("This"));

    EXPECT_EQ(property(bookmark, "Id"), "(<'perchly-" + bookmark.id + "'>,)");
    EXPECT_THAT(nameOf(bookmark), EndsWith("/StatusNotifierItem"));
    EXPECT_EQ(property(bookmark, "ItemIsMenu"), "(<false>,)");
}

TEST_F(PinnedItemTest, KeepsItsIdOverItsReturn)
{
    const auto bookmark = shown(bookmarkNamed("This"));
    const auto id = property(bookmark, "Id");
    remove(bookmark);
    ASSERT_TRUE(waitUntil([&] { return watcher_.items().empty(); }));
    shown(bookmarkNamed("Another"));

    shown(bookmark);

    EXPECT_EQ(property(bookmark, "Id"), id);
}

TEST_F(PinnedItemTest, AnIdOfAnyCharactersIsEscaped)
{
    auto bookmark = bookmarkNamed("This");
    bookmark.id = "a b/ü\n";

    shown(bookmark);

    EXPECT_EQ(property(bookmark, "Id"), "(<'perchly-a%20b%2F%C3%BC%0A'>,)");
}

TEST_F(PinnedItemTest, TellsTheTitleAndAToolTipWithoutMarkup)
{
    const auto bookmark = shown(bookmarkNamed("A & B <c>"));

    EXPECT_EQ(property(bookmark, "Title"), "(<'A & B <c>'>,)");
    EXPECT_EQ(property(bookmark, "ToolTip"), "(<('', @a(iiay) [], 'A ＆ B ‹c›', '')>,)");
}

TEST_F(PinnedItemTest, TellsANewTitleAndKeepsItsPlace)
{
    auto bookmark = shown(bookmarkNamed("Before"));
    const auto name = nameOf(bookmark);

    bookmark.title = "After";
    change(bookmark);

    EXPECT_TRUE(waitUntil([&] { return property(bookmark, "Title") == "(<'After'>,)"; }));
    EXPECT_THAT(watcher_.items(), ElementsAre(name));
    EXPECT_EQ(watcher_.registrations(), 1);
}

TEST_F(PinnedItemTest, TakesTheTwoMouseButtonsForALeftClick)
{
    shown(bookmarkNamed("Another"));
    const auto bookmark = shown(bookmarkNamed("This"));
    EXPECT_THAT(delegate->opened, IsEmpty());

    click(bookmark, "Activate");
    EXPECT_TRUE(waitUntil([&] { return delegate->opened.size() == 1; }));
    click(bookmark, "SecondaryActivate");
    EXPECT_TRUE(waitUntil([&] { return delegate->opened.size() == 2; }));

    EXPECT_THAT(delegate->opened, Each(bookmark));
    EXPECT_EQ(delegate->anchor, buttonOf(bookmark).get());
}

TEST_F(PinnedItemTest, ARequestForItsMenuDoesNotOpenTheBookmark)
{
    const auto bookmark = shown(bookmarkNamed("This"));

    click(bookmark, "ContextMenu");
    click(bookmark, "Activate");

    EXPECT_TRUE(waitUntil([&] { return !delegate->opened.empty(); }));
    testbus::settle(host_);
    EXPECT_THAT(delegate->opened, SizeIs(1));
}

TEST_F(PinnedItemTest, LeavesTheStatusAreaAtOnceWhoeverHasIt)
{
    const auto stays = shown(bookmarkNamed("Stays"));
    const auto goes = shown(bookmarkNamed("Goes"));
    const auto item = itemOf(goes);

    remove(goes);

    EXPECT_TRUE(waitUntil([&] { return watcher_.items().size() == 1; }));
    EXPECT_THAT(watcher_.items(), ElementsAre(nameOf(stays)));
    EXPECT_NE(item->button(), nullptr);
    item->button()->setToolTip("Still here");
    testbus::settle(host_);
    EXPECT_EQ(watcher_.registrations(), 2);
}

TEST_F(PinnedItemTest, ManyAtOnceComeInTheOrderOfTheBookmarks)
{
    constexpr auto count = 40;
    std::vector<std::string> expected;
    for (auto number = 0; number < count; ++number) {
        store().addBookmark(bookmarkNamed("Bookmark " + std::to_string(number)));
        expected.push_back("(<'Bookmark " + std::to_string(number) + "'>,)");
    }

    announce();

    ASSERT_TRUE(waitUntil([&] { return watcher_.items().size() == count; }));
    std::vector<std::string> titles;
    for (const auto& item : watcher_.items()) {
        const auto reply = testbus::call(host_,
            { item.substr(0, item.find('/')), "/StatusNotifierItem", "org.freedesktop.DBus.Properties" }, "Get",
            g_variant_new("(ss)", itemInterface, "Title"));
        ASSERT_TRUE(reply);
        titles.emplace_back(desktop::GLibPointer<>(g_variant_print(reply.get(), TRUE)).get());
    }
    EXPECT_EQ(titles, expected);
}

TEST_F(PinnedItemTest, AChangeOfOneAmongManyIsToldOfThatOneAlone)
{
    std::vector<Bookmark> bookmarks;
    bookmarks.reserve(20);
    for (auto number = 0; number < 20; ++number)
        bookmarks.push_back(shown(bookmarkNamed("Bookmark " + std::to_string(number))));
    testbus::settle(host_);
    const testbus::Monitor monitor;

    auto& changed = bookmarks[7];
    changed.title = "Renamed";
    changed.sfSymbolName = "Cd";
    changed.isPinned = true;
    change(changed);

    ASSERT_TRUE(waitUntil([&] { return monitor.hasSeen(connectionOf(changed), "NewToolTip"); }));
    testbus::settle(host_);
    for (const auto& bookmark : bookmarks) {
        if (bookmark.id == changed.id)
            continue;
        EXPECT_THAT(monitor.messagesFrom(connectionOf(bookmark)), IsEmpty()) << bookmark.title;
    }
    EXPECT_THAT(monitor.messagesFrom(connectionOf(changed)), Contains("NewIcon"));
    EXPECT_THAT(monitor.messagesFrom(connectionOf(changed)), SizeIs(testing::Le(6)));
}

TEST_F(PinnedItemTest, IdsThatDifferSomewhereAreDifferent)
{
    using namespace std::string_literals;
    auto first = bookmarkNamed("First");
    auto second = bookmarkNamed("Second");
    first.id = "same\0one"s;
    second.id = "same\0two"s;

    EXPECT_EQ(property(shown(first), "Id"), "(<'perchly-same%00one'>,)");
    EXPECT_EQ(property(shown(second), "Id"), "(<'perchly-same%00two'>,)");
}

} // namespace
