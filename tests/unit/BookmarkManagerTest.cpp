#include "bookmarks/BookmarkManager.h"
#include "BookmarkJson.h"
#include "CapturedStandardError.h"
#include "TemporaryHome.h"
#include "bookmarks/BookmarkCollection.h"
#include "platform/foundation/FileManager.h"

#include <atomic>
#include <functional>
#include <gmock/gmock.h>
#include <set>
#include <thread>

namespace perchly::tests {

using testing::ElementsAre;
using testing::IsEmpty;

class BookmarkManagerTest : public testing::Test {
protected:
    /// A store over a file that holds these bookmarks.
    BookmarkManager& storeHolding(const std::vector<Bookmark>& bookmarks)
    {
        home_.storeBookmarksFile(encoded(bookmarks));
        return openStore();
    }

    BookmarkManager& openStore() { return store_.emplace(foundation::FileManager::defaultManager()); }

    /// What the file on disk holds.
    [[nodiscard]] std::vector<Bookmark> storedBookmarks() const
    {
        return BookmarkCollection::decode(contentsOf(home_.bookmarksFile())).value().bookmarks;
    }

    void removeFile() const { std::filesystem::remove(home_.bookmarksFile()); }
    [[nodiscard]] bool fileExists() const { return std::filesystem::exists(home_.bookmarksFile()); }

    TemporaryHome home_;
    CapturedStandardError log_;
    std::optional<BookmarkManager> store_;
};

namespace {

struct Expected {
    std::string title;
    std::string url;
    bool isAddedToMenuBar;
};

const std::vector<Expected> defaults = {
    { "Google Translate", "https://translate.google.com", false },
    { "Youtube", "https://www.youtube.com", true },
    { "ChatGPT", "https://chatgpt.com", true },
    { "Slack", "https://app.slack.com/client", true },
    { "Perchly", "https://perchly.example/", false },
};

void expectDefaults(const std::vector<Bookmark>& bookmarks)
{
    ASSERT_EQ(bookmarks.size(), defaults.size());
    std::set<std::string> ids;
    for (std::size_t i = 0; i < defaults.size(); ++i) {
        const Bookmark expected {
            .id = bookmarks[i].id,
            .title = defaults[i].title,
            .url = defaults[i].url,
            .isPinned = true,
            .isAddedToMenuBar = defaults[i].isAddedToMenuBar,
            .createdAt = bookmarks[i].createdAt,
        };
        EXPECT_EQ(bookmarks[i], expected);
        EXPECT_NEAR(bookmarks[i].createdAt.timeIntervalSinceReferenceDate,
            foundation::Date::now().timeIntervalSinceReferenceDate, 60);
        ids.insert(bookmarks[i].id);
    }
    EXPECT_EQ(ids.size(), defaults.size());
}

constexpr auto savedFive = "DEBUG: BookmarkManager - Saved 5 bookmarks";

} // namespace

TEST_F(BookmarkManagerTest, TheFirstStartCreatesTheFileWithTheFiveDefaults)
{
    const auto& store = openStore();

    expectDefaults(store.bookmarks());
    EXPECT_EQ(storedBookmarks(), store.bookmarks());
    EXPECT_THAT(log_.debugLines(), ElementsAre(savedFive));
}

TEST_F(BookmarkManagerTest, ASuccessfulLoadKeepsTheOrderAndWritesNothing)
{
    const std::vector<Bookmark> bookmarks = { fullBookmark("B"), bookmarkNamed("A"), bookmarkNamed("C") };
    home_.storeBookmarksFile(encoded(bookmarks) + "\n");

    EXPECT_EQ(openStore().bookmarks(), bookmarks);
    EXPECT_EQ(contentsOf(home_.bookmarksFile()), encoded(bookmarks) + "\n");
    EXPECT_THAT(log_.debugLines(), IsEmpty());
}

TEST_F(BookmarkManagerTest, AnEmptyListIsLoadedAsItIs)
{
    EXPECT_THAT(storeHolding({}).bookmarks(), IsEmpty());
    EXPECT_THAT(log_.debugLines(), IsEmpty());
}

TEST_F(BookmarkManagerTest, AFileWithABookmarkThatLacksAKeyIsReplacedByTheDefaults)
{
    home_.storeBookmarksFile(documentOf({ BookmarkJson::full(), BookmarkJson::full().without("prefersDetached") }));

    const auto& store = openStore();

    expectDefaults(store.bookmarks());
    EXPECT_EQ(storedBookmarks(), store.bookmarks());
    EXPECT_THAT(log_.debugLines(),
        ElementsAre("DEBUG: BookmarkManager - Decode error: Bookmark 1: \"prefersDetached\" is missing", savedFive));
}

TEST_F(BookmarkManagerTest, AddingAppendsWithoutATestForDuplicates)
{
    auto& store = storeHolding({ bookmarkNamed("A") });

    store.addBookmark(bookmarkNamed("B"));
    store.addBookmark(bookmarkNamed("A"));

    EXPECT_THAT(idsOf(store.bookmarks()), ElementsAre("A", "B", "A"));
    EXPECT_EQ(storedBookmarks(), store.bookmarks());
    EXPECT_THAT(log_.debugLines(),
        ElementsAre("DEBUG: BookmarkManager - Saved 2 bookmarks", "DEBUG: BookmarkManager - Saved 3 bookmarks"));
}

TEST_F(BookmarkManagerTest, TheFileIsWrittenInTheCompactForm)
{
    auto& store = storeHolding({});

    store.addBookmark(fullBookmark("A"));

    EXPECT_EQ(contentsOf(home_.bookmarksFile()), encoded({ fullBookmark("A") }));
}

TEST_F(BookmarkManagerTest, UpdatingReplacesTheWholeRecordAtItsPosition)
{
    auto& store = storeHolding({ bookmarkNamed("A"), bookmarkNamed("B"), bookmarkNamed("C") });

    store.updateBookmark(fullBookmark("B"));

    EXPECT_EQ(store.bookmarks(), (std::vector { bookmarkNamed("A"), fullBookmark("B"), bookmarkNamed("C") }));
    EXPECT_EQ(storedBookmarks(), store.bookmarks());
}

TEST_F(BookmarkManagerTest, UpdatingAnUnknownIdNeitherChangesNorWritesAnything)
{
    auto& store = storeHolding({ bookmarkNamed("A") });
    removeFile();

    store.updateBookmark(bookmarkNamed("a"));

    EXPECT_EQ(store.bookmarks(), std::vector { bookmarkNamed("A") });
    EXPECT_FALSE(fileExists());
    EXPECT_THAT(log_.debugLines(), IsEmpty());
}

TEST_F(BookmarkManagerTest, RemovingKeepsTheOrderOfTheRest)
{
    auto& store = storeHolding({ bookmarkNamed("A"), bookmarkNamed("B"), bookmarkNamed("C") });

    store.removeBookmark("B");

    EXPECT_THAT(idsOf(store.bookmarks()), ElementsAre("A", "C"));
    EXPECT_EQ(storedBookmarks(), store.bookmarks());
}

TEST_F(BookmarkManagerTest, RemovingAnUnknownIdWritesTheUnchangedList)
{
    auto& store = storeHolding({ bookmarkNamed("A") });
    removeFile();

    store.removeBookmark("B");

    EXPECT_EQ(store.bookmarks(), std::vector { bookmarkNamed("A") });
    EXPECT_EQ(storedBookmarks(), store.bookmarks());
    EXPECT_THAT(log_.debugLines(), ElementsAre("DEBUG: BookmarkManager - Saved 1 bookmarks"));
}

TEST_F(BookmarkManagerTest, RemovingByAnIdThatBelongsToTheListRemovesAllOfThatId)
{
    auto& store = storeHolding({ bookmarkNamed("A"), bookmarkNamed("B"), bookmarkNamed("A"), bookmarkNamed("C") });

    store.removeBookmark(store.bookmarks().front().id);

    EXPECT_THAT(idsOf(store.bookmarks()), ElementsAre("B", "C"));
}

TEST_F(BookmarkManagerTest, TogglingThePinTwiceRestoresItAndWritesTwice)
{
    auto& store = storeHolding({ bookmarkNamed("A"), bookmarkNamed("B") });

    store.togglePin("B");
    EXPECT_FALSE(storedBookmarks()[0].isPinned);
    EXPECT_TRUE(storedBookmarks()[1].isPinned);
    store.togglePin("B");

    EXPECT_EQ(store.bookmarks(), (std::vector { bookmarkNamed("A"), bookmarkNamed("B") }));
    EXPECT_EQ(storedBookmarks(), store.bookmarks());
    EXPECT_EQ(log_.debugLines().size(), 2u);
}

TEST_F(BookmarkManagerTest, TogglingTheMenuBarChangesThatFlagAlone)
{
    auto& store = storeHolding({ bookmarkNamed("A") });

    store.toggleMenuBar("A");

    auto expected = bookmarkNamed("A");
    expected.isAddedToMenuBar = true;
    EXPECT_EQ(storedBookmarks(), std::vector { expected });
    store.toggleMenuBar("A");
    EXPECT_EQ(storedBookmarks(), std::vector { bookmarkNamed("A") });
}

TEST_F(BookmarkManagerTest, TogglingAnUnknownIdWritesNothing)
{
    auto& store = storeHolding({ bookmarkNamed("A") });
    removeFile();

    store.togglePin("B");
    store.toggleMenuBar("B");

    EXPECT_EQ(store.bookmarks(), std::vector { bookmarkNamed("A") });
    EXPECT_FALSE(fileExists());
}

TEST_F(BookmarkManagerTest, OfTwoBookmarksOfOneIdChangesReachTheFirstAndRemovalBoth)
{
    auto& store = storeHolding({ bookmarkNamed("A"), bookmarkNamed("B") });
    store.addBookmark(bookmarkNamed("A"));

    store.togglePin("A");
    store.toggleMenuBar("A");
    EXPECT_TRUE(store.bookmarks()[0].isPinned && store.bookmarks()[0].isAddedToMenuBar);
    EXPECT_EQ(store.bookmarks()[2], bookmarkNamed("A"));

    store.updateBookmark(fullBookmark("A"));
    EXPECT_EQ(store.bookmarks()[0], fullBookmark("A"));
    EXPECT_EQ(store.bookmarks()[2], bookmarkNamed("A"));

    store.removeBookmark("A");
    EXPECT_THAT(idsOf(store.bookmarks()), ElementsAre("B"));
}

TEST_F(BookmarkManagerTest, MenuBarBookmarksAreThoseOfTheFlagInOrder)
{
    auto& store = storeHolding({ bookmarkNamed("C"), bookmarkNamed("B"), bookmarkNamed("A") });
    store.toggleMenuBar("A");
    store.toggleMenuBar("C");

    EXPECT_THAT(idsOf(store.menuBarBookmarks()), ElementsAre("C", "A"));
}

TEST_F(BookmarkManagerTest, LoadingTheDefaultsReplacesTheWholeListWithFreshIds)
{
    auto& store = openStore();
    const auto former = idsOf(store.bookmarks());
    store.addBookmark(bookmarkNamed("A"));

    store.loadDefaultBookmarks();

    expectDefaults(store.bookmarks());
    EXPECT_EQ(storedBookmarks(), store.bookmarks());
    for (const auto& id : idsOf(store.bookmarks()))
        EXPECT_THAT(former, testing::Not(testing::Contains(id)));
}

TEST_F(BookmarkManagerTest, ChangesMadeToTheFileByOthersAreOverwritten)
{
    auto& store = storeHolding({ bookmarkNamed("A") });
    home_.storeBookmarksFile(encoded({ bookmarkNamed("Other") }));

    EXPECT_THAT(idsOf(store.bookmarks()), ElementsAre("A"));
    store.addBookmark(bookmarkNamed("B"));

    EXPECT_THAT(idsOf(storedBookmarks()), ElementsAre("A", "B"));
}

TEST_F(BookmarkManagerTest, AShorterListLeavesNothingOfTheLongerOneInTheFile)
{
    auto& store = storeHolding({ fullBookmark("A"), fullBookmark("B") });

    store.removeBookmark("A");
    store.removeBookmark("B");

    EXPECT_EQ(contentsOf(home_.bookmarksFile()), R"({"bookmarks":[]})");
}

TEST_F(BookmarkManagerTest, TheFileIsWrittenInPlace)
{
    auto& store = storeHolding({ bookmarkNamed("A") });
    std::filesystem::create_hard_link(home_.bookmarksFile(), home_.path() / "link");

    store.addBookmark(bookmarkNamed("B"));

    EXPECT_EQ(contentsOf(home_.path() / "link"), encoded({ bookmarkNamed("A"), bookmarkNamed("B") }));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(home_.bookmarksFolder()), {}), 1);
}

TEST_F(BookmarkManagerTest, TheSharedStoreIsMadeOnceThoughItsFirstUsesRace)
{
    std::atomic<bool> go = false;
    std::vector<BookmarkManager*> stores(8);
    std::vector<std::thread> threads;
    threads.reserve(stores.size());
    for (auto& store : stores) {
        threads.emplace_back([&go, &store] {
            while (!go)
                std::this_thread::yield();
            store = &BookmarkManager::shared();
        });
    }
    go = true;
    for (auto& thread : threads)
        thread.join();

    EXPECT_THAT(stores, testing::Each(&BookmarkManager::shared()));
    EXPECT_THAT(log_.debugLines(), ElementsAre(savedFive));
}

TEST_F(BookmarkManagerTest, OperationsOffTheMainThreadEndTheProcess)
{
    auto& store = storeHolding({ bookmarkNamed("A") });
    const std::vector<std::function<void()>> operations = {
        [&] { (void)store.bookmarks(); },
        [&] { (void)store.menuBarBookmarks(); },
        [&] { (void)store.bookmark("A"); },
        [&] { store.addBookmark(bookmarkNamed("B")); },
        [&] { store.updateBookmark(bookmarkNamed("A")); },
        [&] { store.removeBookmark("A"); },
        [&] { store.togglePin("A"); },
        [&] { store.toggleMenuBar("A"); },
        [&] { (void)store.importBookmarks("none"); },
        [&] { store.loadDefaultBookmarks(); },
    };
    for (const auto& operation : operations)
        EXPECT_DEATH(std::thread(operation).join(), "main thread");
}

} // namespace perchly::tests
