#include "bookmarks/Notifications.h"
#include "ui/AnsweredAlert.h"
#include "ui/BrowserTest.h"

namespace {

/// The toolbar's three ways to make the page a bookmark.
class BookmarkActionsTest : public BrowserTest {
protected:
    [[nodiscard]] const perchly::Bookmark& lastBookmark() const { return store().bookmarks().back(); }

    int announcements = 0;
    foundation::ObservationToken observation = foundation::NotificationCenter::defaultCenter().addObserver(
        perchly::notifications::bookmarksDidChange, [this] { ++announcements; });
    const std::size_t countBefore = store().bookmarks().size();
};

TEST_F(BookmarkActionsTest, DoNothingWithoutAPage)
{
    toolbar().pinButton->performClick();
    toolbar().menuButton->performClick();
    toolbar().addBookmarkButton->performClick();

    EXPECT_EQ(store().bookmarks().size(), countBefore);
    EXPECT_EQ(announcements, 0);
    EXPECT_EQ(appkit::Alert::running(), nullptr);
}

TEST_F(BookmarkActionsTest, PinningAPageMakesAPinnedBookmarkAndPinningAgainUnpinsIt)
{
    open("/");
    ASSERT_TRUE(hasTitle("First"));

    toolbar().pinButton->performClick();

    ASSERT_EQ(store().bookmarks().size(), countBefore + 1);
    const perchly::Bookmark expected { .id = lastBookmark().id,
        .title = "First",
        .url = server.url("/"),
        .isPinned = true,
        .createdAt = lastBookmark().createdAt,
        .isAlwaysOnTop = true };
    EXPECT_EQ(lastBookmark(), expected);
    EXPECT_EQ(toolbar().pinButton->image()->name(), "pin.fill");
    EXPECT_FALSE(toolbar().addBookmarkButton->isEnabled());
    EXPECT_EQ(announcements, 1);

    toolbar().pinButton->performClick();

    EXPECT_EQ(store().bookmarks().size(), countBefore + 1);
    EXPECT_FALSE(lastBookmark().isPinned);
    EXPECT_EQ(toolbar().pinButton->image()->name(), "pin");
    EXPECT_EQ(announcements, 2);
}

TEST_F(BookmarkActionsTest, AddingAPageToTheMenuBarMakesABookmarkThatIsNotPinned)
{
    open("/");

    toolbar().menuButton->performClick();

    EXPECT_TRUE(lastBookmark().isAddedToMenuBar);
    EXPECT_FALSE(lastBookmark().isPinned);
    EXPECT_EQ(toolbar().menuButton->image()->name(), "minus.circle");
    toolbar().menuButton->performClick();
    EXPECT_FALSE(lastBookmark().isAddedToMenuBar);
    EXPECT_EQ(store().bookmarks().size(), countBefore + 1);
}

TEST_F(BookmarkActionsTest, APageWithoutATitleIsNamedByItsAddress)
{
    server.servePage("/untitled", "<body>no title</body>");
    open("/untitled");

    toolbar().pinButton->performClick();

    EXPECT_EQ(lastBookmark().title, server.url("/untitled"));
}

TEST_F(BookmarkActionsTest, AddingAPageSaysSoWhenTheButtonIsGreyAlready)
{
    open("/");
    ASSERT_TRUE(hasTitle("First"));
    std::string message;
    std::string details;
    auto wasEnabled = true;

    openAndAnswer([&] { toolbar().addBookmarkButton->performClick(); }, 0,
        [&](const appkit::Alert& alert) {
            message = alert.messageText;
            details = alert.informativeText;
            wasEnabled = toolbar().addBookmarkButton->isEnabled();
        });

    EXPECT_EQ(message, "Bookmark Added");
    EXPECT_EQ(details, "Saved: First");
    EXPECT_FALSE(wasEnabled);
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(lastBookmark().url, server.url("/"));
    EXPECT_FALSE(lastBookmark().isPinned);
    EXPECT_FALSE(lastBookmark().isAddedToMenuBar);
}

} // namespace
