#include "ui/BookmarkTransferTest.h"
#include "unit/BookmarkJson.h"
#include "unit/UnprivilegedUser.h"

#include <limits>
#include <sys/stat.h>

namespace {

using perchly::BookmarkCollection;
using perchly::BookmarkListViewController;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using BookmarkExportTest = BookmarkTransferTest;

TEST_F(BookmarkExportTest, AnExportIsTheIndentedDocumentOfAllBookmarks)
{
    const auto file = folder() / "bookmarks_backup.json";

    exportTo(file);

    EXPECT_EQ(contentsOf(file), indented({ alpha, beta, gamma }));
    EXPECT_THAT(contentsOf(file), testing::HasSubstr("\n"));
    expectExport();
}

TEST_F(BookmarkExportTest, AnExportUnderAFilterHasEveryBookmark)
{
    search("gamma");
    ASSERT_THAT(shownTitles(), SizeIs(1));
    const auto file = folder() / "bookmarks_backup.json";

    exportTo(file);

    EXPECT_EQ(contentsOf(file), indented({ alpha, beta, gamma }));
    EXPECT_THAT(shownTitles(), ElementsAre("Gamma"));
    expectExport();
}

TEST_F(BookmarkExportTest, AnExportHasTheStoreAsItIsNow)
{
    store().removeBookmark(beta.id);
    const auto file = folder() / "bookmarks_backup.json";

    exportTo(file);

    EXPECT_EQ(contentsOf(file), indented({ alpha, gamma }));
    expectExport();
}

TEST_F(BookmarkExportTest, AnExportOfNothingIsAnEmptyDocument)
{
    removeAll();
    const auto file = folder() / "bookmarks_backup.json";

    exportTo(file);

    EXPECT_THAT(BookmarkCollection::decode(contentsOf(file)).value().bookmarks, IsEmpty());
    expectExport();
}

TEST_F(BookmarkExportTest, AnExportReplacesALongerFileInPlace)
{
    const auto file = fileHolding(std::string(100'000, 'x'));
    std::filesystem::create_hard_link(file, folder() / "link");

    exportTo(file);

    EXPECT_EQ(contentsOf(folder() / "link"), indented({ alpha, beta, gamma }));
    expectExport();
}

TEST_F(BookmarkExportTest, AnExportNeedsNoOwner)
{
    delegate.reset();
    const auto file = folder() / "bookmarks_backup.json";

    exportTo(file);

    EXPECT_EQ(contentsOf(file), indented({ alpha, beta, gamma }));
    expectExport();
}

TEST_F(BookmarkExportTest, ImportingWhatWasExportedChangesNothing)
{
    add({ perchly::tests::fullBookmark("Full"), { .id = "", .title = "\x01\u05D0</b>\n", .url = "" },
        bookmarkNamed("Two of one address", "same"), bookmarkNamed("Two of one address", "same") });
    const auto before = store().bookmarks();
    const auto titles = shownTitles();
    const auto file = folder() / "bookmarks_backup.json";
    exportTo(file);
    expectExport();

    importFile(file);

    EXPECT_EQ(store().bookmarks(), before);
    EXPECT_EQ(shownTitles(), titles);
    expectImport();
}

TEST_F(BookmarkExportTest, AnExportOverAFolderFails)
{
    exportTo(folder());

    expectNoExport();
}

TEST_F(BookmarkExportTest, AnExportIntoAFolderThatIsMissingFails)
{
    exportTo(folder() / "missing" / "bookmarks_backup.json");

    expectNoExport();
    EXPECT_FALSE(std::filesystem::exists(folder() / "missing"));
}

TEST_F(BookmarkExportTest, AnExportToAFullDeviceFails)
{
    exportTo("/dev/full");

    expectNoExport();
}

TEST_F(BookmarkExportTest, AnExportToAPipeThatNobodyReadsFailsAndDoesNotWait)
{
    const auto pipe = folder() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);

    exportTo(pipe);

    expectNoExport();
}

TEST_F(BookmarkExportTest, AnExportToAPlaceThatMayNotBeWrittenFails)
{
    const auto file = fileHolding("precious");
    const auto closed = folder() / "closed";
    std::filesystem::create_directory(closed);
    const perchly::tests::UnprivilegedUser user(folder().parent_path());
    if (!user.isActive())
        GTEST_SKIP() << "cannot become another user";
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    std::filesystem::permissions(closed, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);

    exportTo(file);
    expectNoExport();
    exportTo(closed / "bookmarks_backup.json");
    expectNoExport();

    EXPECT_EQ(contentsOf(file), "precious");
    EXPECT_TRUE(std::filesystem::is_empty(closed));
}

TEST_F(BookmarkExportTest, WhatCannotBeEncodedIsNotExportedAndTheFileStays)
{
    const auto file = fileHolding("precious");
    auto endless = bookmarkNamed("Endless", "https://wide.example/");
    endless.preferredWidth = std::numeric_limits<double>::infinity();
    store().addBookmark(endless);

    exportTo(file);

    expectNoExport();
    EXPECT_EQ(contentsOf(file), "precious");
}

TEST(BookmarkListWithoutAWindowTest, StopsTheProcessWhereItHasSomethingToTell)
{
    const perchly::test::UserFolders folders;
    const auto list = std::make_shared<BookmarkListViewController>();
    list->loadViewIfNeeded();

    EXPECT_DEATH(list->importBookmarks("missing.json"), "Fatal error: The list of bookmarks is in no window");
    EXPECT_DEATH(list->exportBookmarks("/dev/null"), "Fatal error: The list of bookmarks is in no window");
}

} // namespace
