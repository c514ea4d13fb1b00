#include "bookmarks/BookmarkCollection.h"
#include "ui/BookmarkListTest.h"
#include "unit/BookmarkJson.h"
#include "unit/JsonCases.h"
#include "unit/UnprivilegedUser.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <sys/stat.h>

namespace {

using appkit::Alert;
using appkit::AlertStyle;
using perchly::Bookmark;
using perchly::BookmarkCollection;
using perchly::BookmarkListViewController;
using perchly::tests::BookmarkJson;
using perchly::tests::documentOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// What the list reads and writes for the user.
class BookmarkTransferTest : public BookmarkListTest {
protected:
    [[nodiscard]] static std::filesystem::path folder() { return std::getenv("XDG_DATA_HOME"); }

    [[nodiscard]] static std::filesystem::path fileHolding(std::string_view contents)
    {
        auto file = folder() / "import.json";
        std::ofstream(file, std::ios::binary) << contents;
        return file;
    }

    [[nodiscard]] static std::string contentsOf(const std::filesystem::path& file)
    {
        std::ifstream stream(file, std::ios::binary);
        return { std::istreambuf_iterator<char>(stream), {} };
    }

    [[nodiscard]] static std::filesystem::path storeFile() { return folder() / "Perchly" / "bookmarks.json"; }

    [[nodiscard]] static std::string indented(const std::vector<Bookmark>& bookmarks)
    {
        return BookmarkCollection::encode(bookmarks, BookmarkCollection::Style::Indented).value();
    }

    /// Checks the sheet on the list's window, and answers it.
    void expectSheet(AlertStyle style, std::string_view message, std::string_view details) const
    {
        ASSERT_NE(sheet(), nullptr);
        EXPECT_EQ(sheet()->style, style);
        EXPECT_EQ(sheet()->messageText, message);
        EXPECT_EQ(sheet()->informativeText, details);
        EXPECT_THAT(sheet()->buttonTitles, IsEmpty());
        EXPECT_EQ(Alert::running(), nullptr);
        sheet()->performClick(0);
        EXPECT_EQ(sheet(), nullptr);
    }

    void importFile(const std::filesystem::path& file)
    {
        watch();
        list->importBookmarks(file);
    }

    /// As a notice, and announced after the list has been reloaded.
    void expectImport() const
    {
        EXPECT_THAT(events, ElementsAre("announced after the reload"));
        EXPECT_THAT(storeAtEvents, ElementsAre(store().bookmarks()));
        expectSheet(AlertStyle::Warning, "Import Successful", "Bookmarks have been imported successfully.");
    }

    void expectNoImport(const std::filesystem::path& file)
    {
        const auto before = store().bookmarks();
        const auto wasStored = contentsOf(storeFile());

        importFile(file);

        expectSheet(AlertStyle::Critical, "Import Failed", "The file could not be read. Please check the format.");
        EXPECT_THAT(events, IsEmpty());
        EXPECT_FALSE(wasReloaded());
        EXPECT_EQ(store().bookmarks(), before);
        EXPECT_EQ(contentsOf(storeFile()), wasStored);
    }

    void expectNoImportOf(std::string_view contents)
    {
        SCOPED_TRACE(contents.substr(0, 200));
        expectNoImport(fileHolding(contents));
    }

    void exportTo(const std::filesystem::path& file)
    {
        watch();
        std::filesystem::remove(storeFile());
        const auto before = store().bookmarks();
        const auto selected = table().selectedRow();

        list->exportBookmarks(file);

        EXPECT_EQ(store().bookmarks(), before);
        EXPECT_FALSE(std::filesystem::exists(storeFile()));
        EXPECT_THAT(events, IsEmpty());
        EXPECT_EQ(table().selectedRow(), selected);
    }

    void expectExport() const
    {
        expectSheet(AlertStyle::Warning, "Export Successful", "Your bookmarks have been saved as a JSON file.");
    }

    void expectNoExport() const { expectSheet(AlertStyle::Critical, "Export Failed", "The file could not be saved."); }
};

TEST_F(BookmarkTransferTest, AnImportReplacesKnownBookmarksAndAppendsNewOnes)
{
    auto renamed = beta;
    renamed.title = "Renamed";
    auto sameAddress = bookmarkNamed("Same address", alpha.url);
    auto unknown = bookmarkNamed("Delta", "four.example");

    importFile(fileHolding(indented({ renamed, sameAddress, unknown })));

    EXPECT_THAT(store().bookmarks(), ElementsAre(alpha, renamed, gamma, unknown));
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Renamed", "Gamma", "Delta"));
    expectImport();
}

TEST_F(BookmarkTransferTest, AnImportShowsAllUnderAFilter)
{
    search("beta");

    importFile(fileHolding(indented({ bookmarkNamed("Delta", "four.example") })));

    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Beta", "Gamma", "Delta"));
    EXPECT_EQ(list->searchField()->stringValue(), "beta");
    expectImport();
}

TEST_F(BookmarkTransferTest, AnImportThatAddsNothingSucceeds)
{
    const auto before = store().bookmarks();

    importFile(fileHolding(R"({"bookmarks":[]})"));

    EXPECT_EQ(store().bookmarks(), before);
    expectImport();
}

TEST_F(BookmarkTransferTest, AnImportNeedsNoOwner)
{
    delegate.reset();

    importFile(fileHolding(indented({ bookmarkNamed("Delta", "four.example") })));

    EXPECT_THAT(store().bookmarks(), SizeIs(4));
    expectImport();
}

TEST_F(BookmarkTransferTest, AnImportMayBeginWithAByteOrderMark)
{
    importFile(fileHolding("\xEF\xBB\xBF" + indented({ bookmarkNamed("Delta", "four.example") })));

    EXPECT_THAT(store().bookmarks(), SizeIs(4));
    expectImport();
}

TEST_F(BookmarkTransferTest, OneImportAfterTheOtherShowsASheetForEach)
{
    importFile(fileHolding(R"({"bookmarks":[]})"));
    list->importBookmarks(folder() / "missing.json");

    ASSERT_NE(sheet(), nullptr);
    EXPECT_EQ(sheet()->messageText, "Import Successful");
    sheet()->performClick(0);

    EXPECT_TRUE(perchly::test::waitUntil([&] { return sheet() && sheet()->messageText == "Import Failed"; }));
}

TEST_F(BookmarkTransferTest, WhatIsNoDocumentIsNotImported)
{
    expectNoImportOf("");
    expectNoImportOf("\n");
    expectNoImportOf("null");
    expectNoImportOf("[]");
    expectNoImportOf("{}");
    expectNoImportOf("Title,Address\n");
    expectNoImportOf("<!DOCTYPE NETSCAPE-Bookmark-file-1>");
    expectNoImportOf(R"({"bookmarks":null})");
    expectNoImportOf(R"({"bookmarks":{}})");
    expectNoImportOf(R"({"bookmarks":"[]"})");
    expectNoImportOf(R"({"Bookmarks":[]})");
    expectNoImportOf(R"({"bookmarks":[null]})");
    expectNoImportOf(R"({"bookmarks":[[]]})");
    expectNoImportOf(R"({"bookmarks":[{}]})");
    expectNoImportOf(R"({"list":{"bookmarks":[]}})");
    expectNoImportOf(std::string("{\0\"bookmarks\":[]}", 17));
    expectNoImportOf("\xFF\xFE{\0}\0");
    expectNoImportOf(std::string(1'000'000, '\0'));
    expectNoImportOf(R"({"bookmarks":)" + std::string(100'000, '['));
}

TEST_F(BookmarkTransferTest, ABareArrayOfBookmarksIsNotImported)
{
    expectNoImportOf('[' + BookmarkJson::complete().text() + ']');
}

TEST_F(BookmarkTransferTest, OneRecordThatLacksAKeyKeepsAllOut)
{
    for (const auto* key : { "id", "title", "url", "isPinned", "isAddedToMenuBar", "createdAt", "shouldReloadOnOpen",
             "isAlwaysOnTop", "prefersDetached", "openInSystemBrowser" }) {
        expectNoImportOf(documentOf({ BookmarkJson::full().with("id", R"("B")"),
            BookmarkJson::full().with("id", R"("C")").with("url", R"("c")").without(key),
            BookmarkJson::full().with("id", R"("D")").with("url", R"("d")") }));
    }
}

TEST_F(BookmarkTransferTest, OneRecordWithAValueOfAnotherTypeKeepsAllOut)
{
    const std::pair<const char*, const char*> values[] = {
        { "id", "1" },
        { "title", "null" },
        { "url", "[]" },
        { "isPinned", "1" },
        { "isAlwaysOnTop", R"("true")" },
        { "createdAt", R"("2001-01-01T00:00:00Z")" },
        { "createdAt", "1e309" },
        { "preferredWidth", R"("640")" },
        { "iconURL", "false" },
        { "menubarIconSize", "{}" },
        { "title", "\"\xFF\"" },
        { "title", R"("\uD800")" },
    };
    for (const auto& [key, value] : values) {
        expectNoImportOf(documentOf(
            { BookmarkJson::full().with("id", R"("B")"), BookmarkJson::full().with("id", R"("C")").with(key, value) }));
    }
}

TEST_F(BookmarkTransferTest, MalformedJsonIsNotImported)
{
    for (const auto& each : perchly::tests::malformedCases()) {
        SCOPED_TRACE(each.name);
        expectNoImportOf(R"({"ignored":)" + each.text + R"(,"bookmarks":[]})");
    }
}

TEST_F(BookmarkTransferTest, AnExportThatWasCutOffIsNotImported)
{
    const auto whole = indented({ bookmarkNamed("Delta", "four.example") });

    for (const auto size : { whole.size() / 4, whole.size() / 2, whole.size() - 2, whole.size() - 1 })
        expectNoImportOf(whole.substr(0, size));
}

TEST_F(BookmarkTransferTest, WhatIsNoFileIsNotImported)
{
    const auto pipe = folder() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const auto giant = folder() / "giant";
    std::ofstream(giant) << '{';
    std::filesystem::resize_file(giant, std::uintmax_t { 1 } << 40);

    expectNoImport(folder() / "missing.json");
    expectNoImport(folder() / "missing" / "file.json");
    expectNoImport(folder());
    expectNoImport(pipe);
    expectNoImport(giant);
    expectNoImport("");
}

TEST_F(BookmarkTransferTest, AFileThatMayNotBeReadIsNotImported)
{
    const auto file = fileHolding(indented({ bookmarkNamed("Delta", "four.example") }));
    const perchly::tests::UnprivilegedUser user(folder().parent_path());
    if (!user.isActive())
        GTEST_SKIP() << "cannot become another user";
    std::filesystem::permissions(file, std::filesystem::perms::none);

    expectNoImport(file);
}

TEST_F(BookmarkTransferTest, AnExportIsTheIndentedDocumentOfAllBookmarks)
{
    const auto file = folder() / "bookmarks_backup.json";

    exportTo(file);

    EXPECT_EQ(contentsOf(file), indented({ alpha, beta, gamma }));
    EXPECT_THAT(contentsOf(file), testing::HasSubstr("\n"));
    expectExport();
}

TEST_F(BookmarkTransferTest, AnExportUnderAFilterHasEveryBookmark)
{
    search("gamma");
    ASSERT_THAT(shownTitles(), SizeIs(1));
    const auto file = folder() / "bookmarks_backup.json";

    exportTo(file);

    EXPECT_EQ(contentsOf(file), indented({ alpha, beta, gamma }));
    EXPECT_THAT(shownTitles(), ElementsAre("Gamma"));
    expectExport();
}

TEST_F(BookmarkTransferTest, AnExportHasTheStoreAsItIsNow)
{
    store().removeBookmark(beta.id);
    const auto file = folder() / "bookmarks_backup.json";

    exportTo(file);

    EXPECT_EQ(contentsOf(file), indented({ alpha, gamma }));
    expectExport();
}

TEST_F(BookmarkTransferTest, AnExportOfNothingIsAnEmptyDocument)
{
    removeAll();
    const auto file = folder() / "bookmarks_backup.json";

    exportTo(file);

    EXPECT_THAT(BookmarkCollection::decode(contentsOf(file)).value().bookmarks, IsEmpty());
    expectExport();
}

TEST_F(BookmarkTransferTest, AnExportReplacesALongerFileInPlace)
{
    const auto file = fileHolding(std::string(100'000, 'x'));
    std::filesystem::create_hard_link(file, folder() / "link");

    exportTo(file);

    EXPECT_EQ(contentsOf(folder() / "link"), indented({ alpha, beta, gamma }));
    expectExport();
}

TEST_F(BookmarkTransferTest, AnExportNeedsNoOwner)
{
    delegate.reset();
    const auto file = folder() / "bookmarks_backup.json";

    exportTo(file);

    EXPECT_EQ(contentsOf(file), indented({ alpha, beta, gamma }));
    expectExport();
}

TEST_F(BookmarkTransferTest, ImportingWhatWasExportedChangesNothing)
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

TEST_F(BookmarkTransferTest, AnExportOverAFolderFails)
{
    exportTo(folder());

    expectNoExport();
}

TEST_F(BookmarkTransferTest, AnExportIntoAFolderThatIsMissingFails)
{
    exportTo(folder() / "missing" / "bookmarks_backup.json");

    expectNoExport();
    EXPECT_FALSE(std::filesystem::exists(folder() / "missing"));
}

TEST_F(BookmarkTransferTest, AnExportToAFullDeviceFails)
{
    exportTo("/dev/full");

    expectNoExport();
}

TEST_F(BookmarkTransferTest, AnExportToAPipeThatNobodyReadsFailsAndDoesNotWait)
{
    const auto pipe = folder() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);

    exportTo(pipe);

    expectNoExport();
}

TEST_F(BookmarkTransferTest, AnExportToAPlaceThatMayNotBeWrittenFails)
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

TEST_F(BookmarkTransferTest, WhatCannotBeEncodedIsNotExportedAndTheFileStays)
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
