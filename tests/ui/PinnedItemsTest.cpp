#include "platform/appkit/Image.h"
#include "ui/PinnedTest.h"

namespace {

using appkit::EventMask;
using perchly::Bookmark;
using perchly::PinnedBookmarkManager;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// Which bookmarks have a status item, and what an item is told of its bookmark.
class PinnedItemsTest : public PinnedTest { };

TEST_F(PinnedItemsTest, ThoseOfTheMenuBarHaveAnItemFromTheStart)
{
    const auto first = bookmarkNamed("First");
    auto other = bookmarkNamed("Other");
    other.isAddedToMenuBar = false;
    const auto last = bookmarkNamed("Last");
    for (const auto& bookmark : { first, other, last })
        store().addBookmark(bookmark);

    manager = PinnedBookmarkManager::create();

    EXPECT_THAT(idsOfItems(), UnorderedElementsAre(first.id, last.id));
    EXPECT_EQ(buttonOf(first)->toolTip(), "First");
    EXPECT_EQ(buttonOf(last)->toolTip(), "Last");
    EXPECT_EQ(buttonOf(other), nullptr);
}

TEST_F(PinnedItemsTest, AChangeIsSeenWhenItIsAnnounced)
{
    const auto bookmark = bookmarkNamed("New");
    store().addBookmark(bookmark);
    EXPECT_THAT(idsOfItems(), IsEmpty());

    announce();

    EXPECT_THAT(idsOfItems(), UnorderedElementsAre(bookmark.id));
    store().removeBookmark(bookmark.id);
    EXPECT_THAT(idsOfItems(), UnorderedElementsAre(bookmark.id));
    announce();
    EXPECT_THAT(idsOfItems(), IsEmpty());
}

TEST_F(PinnedItemsTest, ANewItemKnowsItsBookmark)
{
    const auto bookmark = added(bookmarkNamed("Title"));

    const auto button = buttonOf(bookmark);
    EXPECT_EQ(button->toolTip(), "Title");
    EXPECT_EQ(button->tag(), std::hash<std::string>()(bookmark.id));
    EXPECT_EQ(button->action().name(), "statusItemClicked:");
    EXPECT_TRUE(button->action().hasTarget());
    EXPECT_EQ(button->actionMask(), EventMask::LeftMouseUp | EventMask::RightMouseUp);
    EXPECT_EQ(static_cast<unsigned>(button->actionMask()), 20U);
    EXPECT_EQ(itemOf(bookmark)->menu(), nullptr);
}

TEST_F(PinnedItemsTest, ARenamedBookmarkKeepsItsItem)
{
    auto bookmark = added(bookmarkNamed("Before"));
    const auto item = itemOf(bookmark);
    const auto button = buttonOf(bookmark);

    bookmark.title = "After";
    change(bookmark);

    EXPECT_EQ(itemOf(bookmark), item);
    EXPECT_EQ(buttonOf(bookmark), button);
    EXPECT_EQ(button->toolTip(), "After");
}

TEST_F(PinnedItemsTest, ANewLookIsPutOnTheItemThatIsThere)
{
    auto bookmark = added(bookmarkNamed("Same"));
    const auto button = buttonOf(bookmark);
    EXPECT_EQ(button->title(), "Ab");

    bookmark.sfSymbolName = "safari";
    change(bookmark);

    EXPECT_EQ(buttonOf(bookmark), button);
    EXPECT_EQ(button->title(), "");
    ASSERT_NE(button->image(), nullptr);
    EXPECT_EQ(button->image()->name(), "safari");
    bookmark.sfSymbolName = "Cd";
    change(bookmark);
    EXPECT_EQ(button->title(), "Cd");
    EXPECT_EQ(button->image(), nullptr);
}

TEST_F(PinnedItemsTest, ARefreshRenewsTagAndToolTipButNeitherActionNorMask)
{
    const auto bookmark = added(bookmarkNamed("Title"));
    const auto button = buttonOf(bookmark);
    button->setTag(7);
    button->setToolTip("another");
    button->sendActionOn(EventMask::LeftMouseUp);
    button->setAction(appkit::Action("another:"));

    announce();

    EXPECT_EQ(button->tag(), std::hash<std::string>()(bookmark.id));
    EXPECT_EQ(button->toolTip(), "Title");
    EXPECT_EQ(button->actionMask(), EventMask::LeftMouseUp);
    EXPECT_EQ(button->action().name(), "another:");
}

TEST_F(PinnedItemsTest, ABookmarkThatLeavesTheMenuBarLosesItsItemAndTheOthersKeepTheirs)
{
    const auto first = added(bookmarkNamed("First"));
    auto middle = added(bookmarkNamed("Middle"));
    const auto last = added(bookmarkNamed("Last"));
    const auto firstItem = itemOf(first);
    const auto lastItem = itemOf(last);

    middle.isAddedToMenuBar = false;
    change(middle);

    EXPECT_EQ(itemOf(middle), nullptr);
    EXPECT_EQ(itemOf(first), firstItem);
    EXPECT_EQ(itemOf(last), lastItem);
    EXPECT_EQ(manager->statusItems().size(), 2U);
}

TEST_F(PinnedItemsTest, ADeletedBookmarkLosesItsItem)
{
    const auto stays = added(bookmarkNamed("Stays"));
    const auto goes = added(bookmarkNamed("Goes"));

    remove(goes);

    EXPECT_THAT(idsOfItems(), UnorderedElementsAre(stays.id));
}

TEST_F(PinnedItemsTest, AllBookmarksMayGoAtOnceAndComeBackWithNewItems)
{
    std::vector<Bookmark> bookmarks;
    bookmarks.reserve(30);
    for (auto number = 0; number < 30; ++number)
        bookmarks.push_back(added(bookmarkNamed("Bookmark " + std::to_string(number))));
    const auto former = itemOf(bookmarks.front());
    for (const auto& bookmark : bookmarks)
        store().toggleMenuBar(bookmark.id);
    announce();
    EXPECT_THAT(idsOfItems(), IsEmpty());

    for (const auto& bookmark : bookmarks)
        store().toggleMenuBar(bookmark.id);
    announce();

    EXPECT_EQ(manager->statusItems().size(), 30U);
    EXPECT_NE(itemOf(bookmarks.front()), former);
    buttonOf(bookmarks.front())->performClick();
    EXPECT_EQ(delegate->opened.size(), 1U);
}

TEST_F(PinnedItemsTest, AnotherOrderOfTheBookmarksMovesNoItem)
{
    const auto first = added(bookmarkNamed("First"));
    const auto second = added(bookmarkNamed("Second"));
    const auto firstItem = itemOf(first);
    const auto secondItem = itemOf(second);

    store().removeBookmark(first.id);
    store().addBookmark(first);
    announce();

    EXPECT_EQ(itemOf(first), firstItem);
    EXPECT_EQ(itemOf(second), secondItem);
}

TEST_F(PinnedItemsTest, TwoBookmarksOfOneIdShareAnItemThatLooksAsTheLater)
{
    auto bookmark = added(bookmarkNamed("Earlier"));
    bookmark.title = "Later";

    added(bookmark);

    EXPECT_EQ(manager->statusItems().size(), 1U);
    EXPECT_EQ(buttonOf(bookmark)->toolTip(), "Later");
}

TEST_F(PinnedItemsTest, AManagerThatIsGoneHearsNothingMore)
{
    const std::weak_ptr<PinnedBookmarkManager> former = manager;

    manager.reset();

    EXPECT_TRUE(former.expired());
    added(bookmarkNamed("New"));
    EXPECT_EQ(announcements, 1);
}

TEST_F(PinnedItemsTest, TheSharedManagerIsOneAndHasItsItemsAtOnce)
{
    const auto bookmark = bookmarkNamed("First");
    store().addBookmark(bookmark);

    const auto& shared = PinnedBookmarkManager::shared();

    EXPECT_EQ(PinnedBookmarkManager::shared(), shared);
    EXPECT_NE(shared->buttonFor(bookmark.id), nullptr);
}

} // namespace
