#include "browser/ResizeArea.h"
#include "platform/foundation/FileManager.h"
#include "ui/SurfacesTest.h"

namespace {

using perchly::Bookmark;
using perchly::test::waitUntil;
using std::chrono::milliseconds;

/// What becomes of the sizes to which the user drags browsers.
class SavedSizeTest : public SurfacesTest {
protected:
    [[nodiscard]] static Bookmark inStore(const Bookmark& bookmark)
    {
        const auto* found = store().bookmark(bookmark.id);
        return found ? *found : Bookmark {};
    }

    void resize(const Browser& browser, double width, double height) const
    {
        controller->browserDidResize(*browser, width, height);
    }

    /// Waits until the store knows the width.
    [[nodiscard]] static bool isSaved(const Bookmark& bookmark, double width)
    {
        return waitUntil([&] { return inStore(bookmark).preferredWidth == width; });
    }

    /// Waits for all saves that are on their way.
    static void letAllSavesPass() { letPass(milliseconds(510)); }
};

TEST_F(SavedSizeTest, ASizeIsSavedInItsBookmarkAndInTheFile)
{
    auto expected = first;
    expected.preferredWidth = 610;
    expected.preferredHeight = 420.5;

    resize(browserOf(first), 610, 420.5);

    EXPECT_EQ(inStore(first), first);
    ASSERT_TRUE(isSaved(first, 610));
    EXPECT_EQ(inStore(first), expected);
    EXPECT_EQ(inStore(second), second);
    const perchly::BookmarkManager onDisk(foundation::FileManager::defaultManager());
    const auto* saved = onDisk.bookmark(first.id);
    ASSERT_NE(saved, nullptr);
    EXPECT_EQ(saved->preferredWidth, 610);
    EXPECT_EQ(saved->preferredHeight, 420.5);
}

TEST_F(SavedSizeTest, TheLastSizeOfABurstIsSaved)
{
    for (auto width = 601; width <= 605; ++width)
        resize(browserOf(first), width, 700);

    EXPECT_TRUE(isSaved(first, 605));
    EXPECT_EQ(popover().contentSize(), (foundation::Size { 605, 700 }));
}

TEST_F(SavedSizeTest, EachStepPutsTheSaveOff)
{
    std::optional<double> before;
    std::unique_ptr<foundation::Timer> look;
    resize(browserOf(first), 610, 700);
    const auto again = foundation::Timer::scheduledTimer(milliseconds(300), [&] {
        resize(browserOf(first), 620, 700);
        look = foundation::Timer::scheduledTimer(milliseconds(400), [&] { before = inStore(first).preferredWidth; });
    });

    EXPECT_TRUE(isSaved(first, 620));
    EXPECT_EQ(before, std::nullopt);
}

TEST_F(SavedSizeTest, OnlyTheBrowserThatWasResizedLastHasItsSizeSaved)
{
    resize(browserOf(first), 610, 700);
    resize(browserOf(second), 620, 700);

    ASSERT_TRUE(isSaved(second, 620));
    letAllSavesPass();
    EXPECT_EQ(inStore(first), first);
}

TEST_F(SavedSizeTest, TheGeneralBrowsersSizeIsNotSaved)
{
    const auto before = store().bookmarks();

    resize(controller->surfaces().browserViewControllerForBookmark(nullptr), 610, 700);
    letAllSavesPass();

    EXPECT_EQ(store().bookmarks(), before);
    EXPECT_EQ(popover().contentSize(), (foundation::Size { 610, 700 }));
}

TEST_F(SavedSizeTest, AFreePagesSizeIsNotSaved)
{
    const auto browser = browserOf(first);
    browser->loadURLString(server.url("/second"), perchly::CurrentBookmark::Clear);

    resize(browser, 610, 700);
    letAllSavesPass();

    EXPECT_EQ(inStore(first), first);
    EXPECT_EQ(inStore(second), second);
}

TEST_F(SavedSizeTest, TheSizeOfABookmarkThatWasDeletedMeanwhileIsForgotten)
{
    resize(browserOf(first), 610, 700);
    store().removeBookmark(first.id);
    const auto before = store().bookmarks();

    letAllSavesPass();

    EXPECT_EQ(store().bookmarks(), before);
    resize(browserOf(second), 620, 700);
    EXPECT_TRUE(isSaved(second, 620));
}

TEST_F(SavedSizeTest, WhatChangedMeanwhileIsKept)
{
    resize(browserOf(first), 610, 700);
    auto renamed = first;
    renamed.title = "Renamed";
    renamed.isPinned = true;
    store().updateBookmark(renamed);

    ASSERT_TRUE(isSaved(first, 610));

    EXPECT_EQ(inStore(first).title, "Renamed");
    EXPECT_TRUE(inStore(first).isPinned);
}

TEST_F(SavedSizeTest, ASavedSizeIsNotAnnounced)
{
    auto announcements = 0;
    const auto observation = foundation::NotificationCenter::defaultCenter().addObserver(
        perchly::notifications::bookmarksDidChange, [&] { ++announcements; });

    resize(browserOf(first), 610, 700);

    ASSERT_TRUE(isSaved(first, 610));
    letPass(milliseconds(1));
    EXPECT_EQ(announcements, 0);
}

TEST_F(SavedSizeTest, WithoutTheControllerNothingIsSaved)
{
    resize(browserOf(first), 610, 700);

    controller.reset();
    letAllSavesPass();

    EXPECT_EQ(inStore(first), first);
}

TEST_F(SavedSizeTest, ADragInTheWindowIsSaved)
{
    openWindow(first, "/first");

    browserOf(first)->resizeAreas().rightResizeArea->onResize(15, 0);

    EXPECT_TRUE(isSaved(first, 615));
    EXPECT_EQ(inStore(first).preferredHeight, 700);
}

} // namespace
