#include "ui/BookmarkTransferTest.h"
#include "unit/BookmarkJson.h"
#include "unit/JsonCases.h"
#include "unit/UnprivilegedUser.h"

#include <sys/stat.h>

namespace {

using perchly::tests::BookmarkJson;
using perchly::tests::documentOf;
using testing::ElementsAre;
using testing::SizeIs;

using BookmarkImportTest = BookmarkTransferTest;

TEST_F(BookmarkImportTest, AnImportReplacesKnownBookmarksAndAppendsNewOnes)
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

TEST_F(BookmarkImportTest, AnImportShowsAllUnderAFilter)
{
    search("beta");

    importFile(fileHolding(indented({ bookmarkNamed("Delta", "four.example") })));

    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Beta", "Gamma", "Delta"));
    EXPECT_EQ(list->searchField()->stringValue(), "beta");
    expectImport();
}

TEST_F(BookmarkImportTest, AnImportThatAddsNothingSucceeds)
{
    const auto before = store().bookmarks();

    importFile(fileHolding(R"({"bookmarks":[]})"));

    EXPECT_EQ(store().bookmarks(), before);
    expectImport();
}

TEST_F(BookmarkImportTest, AnImportNeedsNoOwner)
{
    delegate.reset();

    importFile(fileHolding(indented({ bookmarkNamed("Delta", "four.example") })));

    EXPECT_THAT(store().bookmarks(), SizeIs(4));
    expectImport();
}

TEST_F(BookmarkImportTest, AnImportMayBeginWithAByteOrderMark)
{
    importFile(fileHolding("\xEF\xBB\xBF" + indented({ bookmarkNamed("Delta", "four.example") })));

    EXPECT_THAT(store().bookmarks(), SizeIs(4));
    expectImport();
}

TEST_F(BookmarkImportTest, OneImportAfterTheOtherShowsASheetForEach)
{
    importFile(fileHolding(R"({"bookmarks":[]})"));
    list->importBookmarks(folder() / "missing.json");

    ASSERT_NE(sheet(), nullptr);
    EXPECT_EQ(sheet()->messageText, "Import Successful");
    sheet()->performClick(0);

    EXPECT_TRUE(perchly::test::waitUntil([&] { return sheet() && sheet()->messageText == "Import Failed"; }));
}

TEST_F(BookmarkImportTest, WhatIsNoDocumentIsNotImported)
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

TEST_F(BookmarkImportTest, ABareArrayOfBookmarksIsNotImported)
{
    expectNoImportOf('[' + BookmarkJson::complete().text() + ']');
}

TEST_F(BookmarkImportTest, OneRecordThatLacksAKeyKeepsAllOut)
{
    for (const auto* key : { "id", "title", "url", "isPinned", "isAddedToMenuBar", "createdAt", "shouldReloadOnOpen",
             "isAlwaysOnTop", "prefersDetached", "openInSystemBrowser" }) {
        expectNoImportOf(documentOf({ BookmarkJson::full().with("id", R"("B")"),
            BookmarkJson::full().with("id", R"("C")").with("url", R"("c")").without(key),
            BookmarkJson::full().with("id", R"("D")").with("url", R"("d")") }));
    }
}

TEST_F(BookmarkImportTest, OneRecordWithAValueOfAnotherTypeKeepsAllOut)
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

TEST_F(BookmarkImportTest, MalformedJsonIsNotImported)
{
    for (const auto& each : perchly::tests::malformedCases()) {
        SCOPED_TRACE(each.name);
        expectNoImportOf(R"({"ignored":)" + each.text + R"(,"bookmarks":[]})");
    }
}

TEST_F(BookmarkImportTest, AnExportThatWasCutOffIsNotImported)
{
    const auto whole = indented({ bookmarkNamed("Delta", "four.example") });

    for (const auto size : { whole.size() / 4, whole.size() / 2, whole.size() - 2, whole.size() - 1 })
        expectNoImportOf(whole.substr(0, size));
}

TEST_F(BookmarkImportTest, WhatIsNoFileIsNotImported)
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

TEST_F(BookmarkImportTest, AFileThatMayNotBeReadIsNotImported)
{
    const auto file = fileHolding(indented({ bookmarkNamed("Delta", "four.example") }));
    const perchly::tests::UnprivilegedUser user(folder().parent_path());
    if (!user.isActive())
        GTEST_SKIP() << "cannot become another user";
    std::filesystem::permissions(file, std::filesystem::perms::none);

    expectNoImport(file);
}

} // namespace
