#include "ui/BrowserTest.h"

namespace {

class BrowserToolbarTest : public BrowserTest { };

std::string imageName(const std::shared_ptr<appkit::Button>& button)
{
    return button->image() ? button->image()->name() : "";
}

TEST_F(BrowserToolbarTest, IsNeutralBeforeAnyNavigation)
{
    EXPECT_FALSE(toolbar().backButton->isEnabled());
    EXPECT_FALSE(toolbar().forwardButton->isEnabled());
    EXPECT_EQ(imageName(toolbar().pinButton), "pin");
    EXPECT_EQ(imageName(toolbar().menuButton), "plus.circle");
    EXPECT_TRUE(toolbar().addBookmarkButton->isEnabled());
    EXPECT_TRUE(toolbar().progressIndicator->isHidden());
    EXPECT_EQ(addressInField(), "");
    EXPECT_EQ(toolbar().urlTextField->placeholderString(), "Enter URL or select a bookmark");
}

TEST_F(BrowserToolbarTest, EveryButtonHasItsSymbolItsNameAndItsToolTip)
{
    EXPECT_EQ(imageName(toolbar().backButton), "chevron.left");
    EXPECT_EQ(imageName(toolbar().forwardButton), "chevron.right");
    EXPECT_EQ(imageName(toolbar().homeButton), "house");
    EXPECT_EQ(imageName(toolbar().reloadButton), "arrow.clockwise");
    EXPECT_EQ(imageName(toolbar().addBookmarkButton), "star");
    EXPECT_EQ(toolbar().backButton->image()->accessibilityDescription(), "Back");
    EXPECT_EQ(toolbar().backButton->toolTip(), "");
    EXPECT_EQ(toolbar().forwardButton->toolTip(), "");
    EXPECT_EQ(toolbar().homeButton->toolTip(), "Go to Bookmark Home");
    EXPECT_EQ(toolbar().reloadButton->toolTip(), "");
    EXPECT_EQ(toolbar().pinButton->toolTip(), "Pin to Quick Access");
    EXPECT_EQ(toolbar().menuButton->toolTip(), "Add to Menubar");
    EXPECT_EQ(toolbar().addBookmarkButton->toolTip(), "Bookmark current page");
}

TEST_F(BrowserToolbarTest, ShowsTheStateOfTheBookmarkOfThePage)
{
    auto bookmark = bookmarkFor("/");
    bookmark.isPinned = true;
    bookmark.isAddedToMenuBar = true;
    store().addBookmark(bookmark);

    open("/");

    EXPECT_EQ(imageName(toolbar().pinButton), "pin.fill");
    EXPECT_EQ(imageName(toolbar().menuButton), "minus.circle");
    EXPECT_FALSE(toolbar().addBookmarkButton->isEnabled());
    EXPECT_EQ(toolbar().pinButton->toolTip(), "Pin to Quick Access");
}

TEST_F(BrowserToolbarTest, DoesNotMatchABookmarkThatDiffersByASlashOrByCase)
{
    server.servePage("/Page", "<title>Page</title>");
    auto slash = bookmarkFor("/Page/");
    slash.isPinned = true;
    auto lowerCase = bookmarkFor("/page");
    lowerCase.isPinned = true;
    store().addBookmark(slash);
    store().addBookmark(lowerCase);

    open("/Page");

    EXPECT_EQ(imageName(toolbar().pinButton), "pin");
    EXPECT_TRUE(toolbar().addBookmarkButton->isEnabled());
}

TEST_F(BrowserToolbarTest, ShowsTheFirstOfTwoBookmarksOfThePage)
{
    auto first = bookmarkFor("/");
    first.isPinned = true;
    auto second = bookmarkFor("/");
    second.isAddedToMenuBar = true;
    store().addBookmark(first);
    store().addBookmark(second);

    open("/");

    EXPECT_EQ(imageName(toolbar().pinButton), "pin.fill");
    EXPECT_EQ(imageName(toolbar().menuButton), "plus.circle");
}

TEST_F(BrowserToolbarTest, SpinsOnlyWhileThePageLoads)
{
    server.serve("/slow", { .body = "<title>Slow</title>", .hold = perchly::test::Hold::BeforeHead });

    browser->loadURLString(server.url("/slow"), perchly::CurrentBookmark::Clear);

    EXPECT_TRUE(perchly::test::waitUntil([&] { return !toolbar().progressIndicator->isHidden(); }));
    server.release("/slow");
    EXPECT_TRUE(showsPage("/slow"));
    EXPECT_TRUE(perchly::test::waitUntil([&] { return toolbar().progressIndicator->isHidden(); }));
}

TEST_F(BrowserToolbarTest, BackAndForwardFollowThePage)
{
    open("/");
    open("/second");
    EXPECT_TRUE(toolbar().backButton->isEnabled());
    EXPECT_FALSE(toolbar().forwardButton->isEnabled());

    toolbar().backButton->performClick();

    EXPECT_TRUE(showsPage("/"));
    EXPECT_TRUE(perchly::test::waitUntil([&] { return toolbar().forwardButton->isEnabled(); }));
    toolbar().forwardButton->performClick();
    EXPECT_TRUE(showsPage("/second"));
}

TEST_F(BrowserToolbarTest, ReloadAsksForThePageAgain)
{
    open("/");

    toolbar().reloadButton->performClick();

    EXPECT_TRUE(perchly::test::waitUntil([&] { return server.requestCount("/") == 2; }));
}

} // namespace
