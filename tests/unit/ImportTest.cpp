#include "BookmarkJson.h"
#include "CapturedStandardError.h"
#include "TemporaryHome.h"
#include "bookmarks/BookmarkCollection.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/BookmarkMerge.h"
#include "platform/foundation/FileManager.h"

#include <algorithm>
#include <chrono>
#include <gmock/gmock.h>
#include <random>
#include <sys/stat.h>

namespace perchly::tests {

using testing::ElementsAre;
using testing::IsEmpty;

class ImportTest : public testing::Test {
protected:
    BookmarkManager& storeHolding(const std::vector<Bookmark>& bookmarks)
    {
        home_.storeBookmarksFile(encoded(bookmarks));
        return store_.emplace(foundation::FileManager::defaultManager());
    }

    [[nodiscard]] std::filesystem::path fileHolding(const std::vector<Bookmark>& bookmarks) const
    {
        return home_.fileHolding(encoded(bookmarks), "import.json");
    }

    /// Imports what cannot be imported, and checks that nothing at all changed.
    void expectRefusal(const std::filesystem::path& file)
    {
        auto& store = storeHolding({ bookmarkNamed("A") });
        std::filesystem::remove(home_.bookmarksFile());

        const auto imported = store.importBookmarks(file);

        ASSERT_FALSE(imported);
        EXPECT_FALSE(imported.error().localizedDescription.empty());
        EXPECT_EQ(store.bookmarks(), std::vector { bookmarkNamed("A") });
        EXPECT_FALSE(std::filesystem::exists(home_.bookmarksFile()));
        EXPECT_THAT(log_.debugLines(), IsEmpty());
    }

    TemporaryHome home_;
    CapturedStandardError log_;
    std::optional<BookmarkManager> store_;
};

namespace {

/// The rules of the merge, word by word, without any index.
void mergePlainly(std::vector<Bookmark>& list, const std::vector<Bookmark>& imported)
{
    for (const auto& bookmark : imported) {
        const auto sameId = [&](const Bookmark& each) { return each.id == bookmark.id; };
        const auto sameURL = [&](const Bookmark& each) { return each.url == bookmark.url; };
        const auto stored = std::find_if(list.begin(), list.end(), sameId);
        if (stored != list.end())
            *stored = bookmark;
        else if (std::none_of(list.begin(), list.end(), sameURL))
            list.push_back(bookmark);
    }
}

} // namespace

TEST_F(ImportTest, AKnownIdIsReplacedInPlace)
{
    auto& store = storeHolding({ bookmarkNamed("A", "a"), bookmarkNamed("B", "b"), bookmarkNamed("C", "c") });
    auto renamed = bookmarkNamed("B", "b");
    renamed.title = "New title";

    EXPECT_TRUE(store.importBookmarks(fileHolding({ renamed })));

    EXPECT_EQ(store.bookmarks(), (std::vector { bookmarkNamed("A", "a"), renamed, bookmarkNamed("C", "c") }));
    EXPECT_EQ(contentsOf(home_.bookmarksFile()), encoded(store.bookmarks()));
}

TEST_F(ImportTest, ANewIdWhoseAddressIsStoredIsIgnored)
{
    auto& store = storeHolding({ bookmarkNamed("A", "https://example.org/") });

    EXPECT_TRUE(store.importBookmarks(fileHolding({ bookmarkNamed("B", "https://example.org/") })));

    EXPECT_EQ(store.bookmarks(), std::vector { bookmarkNamed("A", "https://example.org/") });
}

TEST_F(ImportTest, AddressesAreComparedWithoutAnyNormalisation)
{
    auto& store = storeHolding({ bookmarkNamed("A", "https://example.org/") });

    EXPECT_TRUE(store.importBookmarks(fileHolding({ bookmarkNamed("B", "https://example.org"),
        bookmarkNamed("C", "https://EXAMPLE.org/"), bookmarkNamed("D", "http://example.org/") })));

    EXPECT_THAT(idsOf(store.bookmarks()), ElementsAre("A", "B", "C", "D"));
}

TEST_F(ImportTest, TheSameIdTwiceEndsWithTheLaterRecord)
{
    auto& store = storeHolding({ bookmarkNamed("A", "a") });

    EXPECT_TRUE(store.importBookmarks(fileHolding({ bookmarkNamed("B", "first"), bookmarkNamed("B", "second") })));

    EXPECT_EQ(store.bookmarks(), (std::vector { bookmarkNamed("A", "a"), bookmarkNamed("B", "second") }));
}

TEST_F(ImportTest, TheSameAddressTwiceUnderDifferentIdsKeepsOnlyTheFirst)
{
    auto& store = storeHolding({});

    EXPECT_TRUE(store.importBookmarks(fileHolding({ bookmarkNamed("A", "same"), bookmarkNamed("B", "same") })));

    EXPECT_THAT(idsOf(store.bookmarks()), ElementsAre("A"));
}

TEST_F(ImportTest, AReplacedBookmarksFormerAddressIsFreeAgain)
{
    auto& store = storeHolding({ bookmarkNamed("A", "old") });

    EXPECT_TRUE(store.importBookmarks(
        fileHolding({ bookmarkNamed("A", "new"), bookmarkNamed("B", "old"), bookmarkNamed("C", "new") })));

    EXPECT_EQ(store.bookmarks(), (std::vector { bookmarkNamed("A", "new"), bookmarkNamed("B", "old") }));
}

TEST_F(ImportTest, AnAddressThatAnotherBookmarkStillHasIsNotFree)
{
    auto& store = storeHolding({ bookmarkNamed("A", "shared"), bookmarkNamed("B", "shared") });

    EXPECT_TRUE(store.importBookmarks(fileHolding({ bookmarkNamed("A", "own"), bookmarkNamed("C", "shared") })));

    EXPECT_THAT(idsOf(store.bookmarks()), ElementsAre("A", "B"));
}

TEST_F(ImportTest, OfStoredDuplicatesTheFirstIsReplaced)
{
    auto& store = storeHolding({ bookmarkNamed("A", "1"), bookmarkNamed("A", "2") });

    EXPECT_TRUE(store.importBookmarks(fileHolding({ bookmarkNamed("A", "3") })));

    EXPECT_EQ(store.bookmarks(), (std::vector { bookmarkNamed("A", "3"), bookmarkNamed("A", "2") }));
}

TEST_F(ImportTest, AReplacementMayTakeAnAddressThatIsStoredElsewhere)
{
    auto& store = storeHolding({ bookmarkNamed("A", "a"), bookmarkNamed("B", "b") });

    EXPECT_TRUE(store.importBookmarks(fileHolding({ bookmarkNamed("B", "a") })));

    EXPECT_EQ(store.bookmarks(), (std::vector { bookmarkNamed("A", "a"), bookmarkNamed("B", "a") }));
}

TEST_F(ImportTest, AnEmptyListRewritesTheFileAndChangesNothingElse)
{
    auto& store = storeHolding({ bookmarkNamed("A") });
    std::filesystem::remove(home_.bookmarksFile());

    EXPECT_TRUE(store.importBookmarks(fileHolding({})));

    EXPECT_EQ(store.bookmarks(), std::vector { bookmarkNamed("A") });
    EXPECT_EQ(contentsOf(home_.bookmarksFile()), encoded(store.bookmarks()));
    EXPECT_THAT(log_.debugLines(), ElementsAre("DEBUG: BookmarkManager - Saved 1 bookmarks"));
}

TEST_F(ImportTest, AnExportComesBackUnchanged)
{
    const std::vector bookmarks = { fullBookmark("A"), bookmarkNamed("B", "b"), bookmarkNamed("C", "b") };
    auto& store = storeHolding(bookmarks);
    const auto exported = BookmarkCollection::encode(bookmarks, BookmarkCollection::Style::Indented).value();

    EXPECT_TRUE(store.importBookmarks(home_.fileHolding(exported, "bookmarks_backup.json")));

    EXPECT_EQ(store.bookmarks(), bookmarks);
}

TEST_F(ImportTest, AMissingFileChangesNothing)
{
    expectRefusal(home_.path() / "missing.json");
}

TEST_F(ImportTest, AFolderChangesNothing)
{
    expectRefusal(home_.path());
}

TEST_F(ImportTest, ANamedPipeChangesNothingAndIsNotWaitedFor)
{
    const auto pipe = home_.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);

    expectRefusal(pipe);
}

TEST_F(ImportTest, AnEmptyFileChangesNothing)
{
    expectRefusal(home_.fileHolding(""));
}

TEST_F(ImportTest, ABareArrayOfBookmarksChangesNothing)
{
    expectRefusal(home_.fileHolding('[' + BookmarkJson::complete().text() + ']'));
}

TEST_F(ImportTest, ARecordThatLacksAKeyImportsNoneOfTheRecords)
{
    expectRefusal(home_.fileHolding(documentOf({ BookmarkJson::full().with("id", R"("B")"),
        BookmarkJson::full().with("id", R"("C")").without("isAlwaysOnTop") })));
}

TEST_F(ImportTest, AGiantFileOfHolesChangesNothing)
{
    const auto file = home_.fileHolding("{");
    std::filesystem::resize_file(file, std::uintmax_t { 1 } << 40);

    expectRefusal(file);
}

TEST_F(ImportTest, AFileThatWouldTakeTooLongChangesNothing)
{
    const auto document = encoded({ bookmarkNamed("B") });
    const std::string blanks(BookmarkManager::largestImport - document.size(), ' ');

    expectRefusal(home_.fileHolding(document + blanks + ' '));

    EXPECT_TRUE(storeHolding({}).importBookmarks(home_.fileHolding(document + blanks)));
}

TEST_F(ImportTest, AFailedSaveIsOnlyLogged)
{
    auto& store = storeHolding({});
    std::filesystem::remove(home_.bookmarksFile());
    std::filesystem::create_directory(home_.bookmarksFile());

    EXPECT_TRUE(store.importBookmarks(fileHolding({ bookmarkNamed("A") })));

    EXPECT_THAT(idsOf(store.bookmarks()), ElementsAre("A"));
    EXPECT_THAT(log_.debugLines(), ElementsAre(testing::StartsWith("DEBUG: BookmarkManager - Save error: ")));
}

TEST(BookmarkMergeTest, FollowsTheRulesOnEveryMixOfIdsAndAddresses)
{
    std::minstd_rand random(1);
    const auto someBookmarks = [&] {
        std::vector<Bookmark> bookmarks(random() % 8);
        for (auto& bookmark : bookmarks)
            bookmark = bookmarkNamed(std::string(1, "ABCDE"[random() % 5]), std::string(1, "uvwx"[random() % 4]));
        for (std::size_t i = 0; i < bookmarks.size(); ++i)
            bookmarks[i].title = std::to_string(random());
        return bookmarks;
    };
    for (int round = 0; round < 20000; ++round) {
        const auto stored = someBookmarks(), imported = someBookmarks();
        auto merged = stored, expected = stored;

        mergeBookmarks(merged, imported);

        mergePlainly(expected, imported);
        ASSERT_EQ(merged, expected) << encoded(stored) << encoded(imported);
    }
}

TEST(BookmarkMergeTest, TakesTimeInProportionToTheNumberOfRecords)
{
    const auto timeFor = [](int count) {
        std::vector<Bookmark> list, imported;
        for (int i = 0; i < count; ++i) {
            list.push_back(bookmarkNamed("A" + std::to_string(i), "https://example.org/" + std::to_string(i)));
            imported.push_back(bookmarkNamed("B" + std::to_string(i), "https://example.com/" + std::to_string(i)));
        }
        const auto start = std::chrono::steady_clock::now();
        mergeBookmarks(list, std::move(imported));
        EXPECT_EQ(list.size(), 2 * static_cast<std::size_t>(count));
        return std::chrono::steady_clock::now() - start;
    };
    (void)timeFor(10000);

    // Twenty times the records: a quadratic merge would take four hundred times as long.
    EXPECT_LT(timeFor(100000), 100 * timeFor(5000));
}

} // namespace perchly::tests
