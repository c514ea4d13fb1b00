#include "ui/PinnedTest.h"

namespace {

using perchly::Bookmark;
using testing::ElementsAre;
using testing::IsEmpty;

/// What a left click on a bookmark's status item does.
class PinnedClickTest : public PinnedTest {
protected:
    void click(const Bookmark& bookmark) const { buttonOf(bookmark)->performClick(); }
};

TEST_F(PinnedClickTest, OpensTheBookmarkAtItsButton)
{
    added(bookmarkNamed("Another"));
    const auto bookmark = added(bookmarkNamed("This"));

    click(bookmark);

    EXPECT_THAT(delegate->opened, ElementsAre(bookmark));
    EXPECT_EQ(delegate->anchor, buttonOf(bookmark).get());
    EXPECT_THAT(delegate->detached, IsEmpty());
    EXPECT_THAT(delegate->levelled, IsEmpty());
    EXPECT_EQ(announcements, 2);
}

TEST_F(PinnedClickTest, OpensTheBookmarkAsTheStoreHasItNow)
{
    auto bookmark = added(bookmarkNamed("This"));
    bookmark.url = "https://elsewhere.example/";
    store().updateBookmark(bookmark);

    click(bookmark);

    EXPECT_THAT(delegate->opened, ElementsAre(bookmark));
}

TEST_F(PinnedClickTest, OpensTheFirstBookmarkOfThatIdThoughItLeftTheMenuBar)
{
    auto bookmark = added(bookmarkNamed("This"));
    bookmark.isAddedToMenuBar = false;
    store().updateBookmark(bookmark);
    auto later = bookmark;
    later.title = "Later";
    store().addBookmark(later);

    click(bookmark);

    EXPECT_THAT(delegate->opened, ElementsAre(bookmark));
}

TEST_F(PinnedClickTest, DoesNothingWithATagOfNobody)
{
    const auto bookmark = added(bookmarkNamed("This"));
    buttonOf(bookmark)->setTag(buttonOf(bookmark)->tag() + 1);

    click(bookmark);

    EXPECT_THAT(delegate->opened, IsEmpty());
}

TEST_F(PinnedClickTest, DoesNothingOnAnItemThatWasTakenAway)
{
    const auto bookmark = added(bookmarkNamed("This"));
    const auto button = buttonOf(bookmark);
    store().toggleMenuBar(bookmark.id);
    announce();

    button->performClick();

    EXPECT_THAT(delegate->opened, IsEmpty());
}

TEST_F(PinnedClickTest, DoesNothingForABookmarkDeletedMeanwhile)
{
    const auto bookmark = added(bookmarkNamed("This"));
    store().removeBookmark(bookmark.id);

    click(bookmark);

    EXPECT_THAT(delegate->opened, IsEmpty());
}

TEST_F(PinnedClickTest, DoesNothingWithoutADelegate)
{
    const auto bookmark = added(bookmarkNamed("This"));
    manager->setDelegate({});

    click(bookmark);

    EXPECT_THAT(delegate->opened, IsEmpty());
}

TEST_F(PinnedClickTest, DoesNothingOnceTheDelegateIsGone)
{
    const auto bookmark = added(bookmarkNamed("This"));
    const std::weak_ptr<RecordingDelegate> former = delegate;
    delegate.reset();

    click(bookmark);

    EXPECT_TRUE(former.expired());
    EXPECT_NE(buttonOf(bookmark), nullptr);
}

TEST_F(PinnedClickTest, MayChangeTheBookmarksWhileItOpensOne)
{
    class Deleting : public RecordingDelegate {
    public:
        void openPinnedBookmark(const Bookmark& bookmark, appkit::StatusBarButton& button) override
        {
            perchly::BookmarkManager::shared().removeBookmark(std::string(bookmark.id));
            perchly::notifications::postBookmarksDidChange();
            RecordingDelegate::openPinnedBookmark(bookmark, button);
        }
    };
    const auto bookmark = added(bookmarkNamed("This"));
    const auto deleting = std::make_shared<Deleting>();
    manager->setDelegate(deleting);

    buttonOf(bookmark)->performClick();

    EXPECT_THAT(deleting->opened, ElementsAre(bookmark));
    EXPECT_EQ(buttonOf(bookmark), nullptr);
}

TEST_F(PinnedClickTest, IsLeftToTheDefaultBrowserWhereTheAddressDoesNotParse)
{
    auto bookmark = bookmarkNamed("This");
    bookmark.url = "a host with blanks";
    bookmark.openInSystemBrowser = true;
    added(bookmark);

    click(bookmark);

    EXPECT_THAT(delegate->opened, IsEmpty());
}

} // namespace
