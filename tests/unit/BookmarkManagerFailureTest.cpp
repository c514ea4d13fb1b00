#include "BookmarkJson.h"
#include "CapturedStandardError.h"
#include "ChildProcess.h"
#include "SmallDisk.h"
#include "TemporaryHome.h"
#include "UnprivilegedUser.h"
#include "bookmarks/BookmarkCollection.h"
#include "bookmarks/BookmarkManager.h"
#include "platform/foundation/FileManager.h"

#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <limits>
#include <sys/resource.h>

namespace perchly::tests {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

class BookmarkManagerFailureTest : public testing::Test {
protected:
    BookmarkManager& openStore() { return store_.emplace(foundation::FileManager::defaultManager()); }

    TemporaryHome home_;
    CapturedStandardError log_;
    std::optional<BookmarkManager> store_;
};

namespace {

constexpr auto savedFive = "DEBUG: BookmarkManager - Saved 5 bookmarks";

auto saveError(const std::string& reason)
{
    return AllOf(StartsWith("DEBUG: BookmarkManager - Save error: "), EndsWith(": " + reason));
}

/// The log of a store that saves a large bookmark where there is no room, then goes on, and the number that it holds.
std::string logOfStoreWithoutRoom(const std::filesystem::path& file)
{
    const CapturedStandardError log;
    BookmarkManager store(foundation::FileManager::defaultManager());
    auto large = bookmarkNamed("A");
    large.title.assign(1 << 20, 'x');
    const auto before = encoded(store.bookmarks());
    store.addBookmark(large);
    const auto held = store.bookmarks().size();
    const auto isUnchanged = contentsOf(file) == before;
    store.removeBookmark("A");

    std::string report;
    for (const auto& line : log.debugLines())
        report += line + "\n";
    return report + "held " + std::to_string(held) + (isUnchanged ? ", file unchanged" : ", file changed");
}

std::string logWithout(const std::string& reason, const TemporaryHome& home)
{
    return std::string(savedFive) + "\nDEBUG: BookmarkManager - Save error: " + home.bookmarksFile().string() + ": "
        + reason + "\n" + savedFive + "\nheld 6, file unchanged";
}

} // namespace

TEST_F(BookmarkManagerFailureTest, AnUndecodableFileIsReplacedByTheDefaultsAndLogged)
{
    for (const std::string_view contents : { "", "garbage", "{\"bookmarks\":[", "[]", "\xFF\xFE" }) {
        home_.storeBookmarksFile(contents);
        const auto linesBefore = log_.debugLines().size();

        EXPECT_EQ(openStore().bookmarks().size(), 5u);

        EXPECT_EQ(contentsOf(home_.bookmarksFile()), encoded(store_->bookmarks()));
        const auto lines = log_.debugLines();
        ASSERT_EQ(lines.size(), linesBefore + 2);
        EXPECT_THAT(lines[linesBefore], StartsWith("DEBUG: BookmarkManager - Decode error: "));
        EXPECT_EQ(lines.back(), savedFive);
    }
}

TEST_F(BookmarkManagerFailureTest, AFolderInTheFilesPlaceLeavesTheDefaultsInMemory)
{
    std::filesystem::create_directories(home_.bookmarksFile());

    EXPECT_EQ(openStore().bookmarks().size(), 5u);
    EXPECT_THAT(log_.debugLines(), ElementsAre(saveError("Is a directory")));

    std::filesystem::remove(home_.bookmarksFile());
    store_->removeBookmark("");
    EXPECT_EQ(contentsOf(home_.bookmarksFile()), encoded(store_->bookmarks()));
}

TEST_F(BookmarkManagerFailureTest, AFileInTheFoldersPlaceLeavesTheDefaultsInMemory)
{
    std::filesystem::create_directories(home_.bookmarksFolder().parent_path());
    std::ofstream(home_.bookmarksFolder()) << "in the way";

    EXPECT_EQ(openStore().bookmarks().size(), 5u);

    EXPECT_THAT(log_.debugLines(), ElementsAre(saveError("Not a directory")));
    EXPECT_EQ(contentsOf(home_.bookmarksFolder()), "in the way");
}

TEST_F(BookmarkManagerFailureTest, AnUnreadableFileIsReplacedWithoutALineOfItsOwn)
{
    home_.storeBookmarksFile(encoded({ bookmarkNamed("A") }));
    const UnprivilegedUser user(home_.path());
    if (!user.isActive())
        GTEST_SKIP() << "cannot become another user";
    std::filesystem::permissions(home_.bookmarksFile(), std::filesystem::perms::owner_write);

    EXPECT_EQ(openStore().bookmarks().size(), 5u);

    EXPECT_THAT(log_.debugLines(), ElementsAre(savedFive));
    std::filesystem::permissions(home_.bookmarksFile(), std::filesystem::perms::owner_read);
    EXPECT_EQ(contentsOf(home_.bookmarksFile()), encoded(store_->bookmarks()));
}

TEST_F(BookmarkManagerFailureTest, AnUnwritableFileKeepsTheChangeInMemoryAndTheNextSaveTriesAgain)
{
    home_.storeBookmarksFile(encoded({ bookmarkNamed("A") }));
    const UnprivilegedUser user(home_.path());
    if (!user.isActive())
        GTEST_SKIP() << "cannot become another user";
    std::filesystem::permissions(home_.bookmarksFile(), std::filesystem::perms::owner_read);

    openStore().addBookmark(bookmarkNamed("B"));

    EXPECT_THAT(log_.debugLines(), ElementsAre(saveError("Permission denied")));
    EXPECT_THAT(idsOf(store_->bookmarks()), ElementsAre("A", "B"));
    EXPECT_EQ(contentsOf(home_.bookmarksFile()), encoded({ bookmarkNamed("A") }));

    std::filesystem::permissions(home_.bookmarksFile(), std::filesystem::perms::owner_all);
    store_->togglePin("A");
    EXPECT_EQ(contentsOf(home_.bookmarksFile()), encoded(store_->bookmarks()));
}

TEST_F(BookmarkManagerFailureTest, AReadOnlyFolderLeavesTheDefaultsInMemory)
{
    std::filesystem::create_directories(home_.bookmarksFolder());
    const UnprivilegedUser user(home_.path());
    if (!user.isActive())
        GTEST_SKIP() << "cannot become another user";
    std::filesystem::permissions(
        home_.bookmarksFolder(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);

    EXPECT_EQ(openStore().bookmarks().size(), 5u);

    EXPECT_THAT(log_.debugLines(), ElementsAre(saveError("Permission denied")));
    EXPECT_TRUE(std::filesystem::is_empty(home_.bookmarksFolder()));
}

TEST_F(BookmarkManagerFailureTest, AFolderThatCannotBeMadeShowsAsAFailedSave)
{
    std::filesystem::create_directories(home_.bookmarksFolder().parent_path());
    const UnprivilegedUser user(home_.path());
    if (!user.isActive())
        GTEST_SKIP() << "cannot become another user";
    std::filesystem::permissions(
        home_.bookmarksFolder().parent_path(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);

    EXPECT_EQ(openStore().bookmarks().size(), 5u);

    EXPECT_THAT(log_.debugLines(), ElementsAre(saveError("No such file or directory")));
}

TEST_F(BookmarkManagerFailureTest, ADeviceThatIsFullKeepsTheChangeInMemory)
{
    std::filesystem::create_directories(home_.bookmarksFolder());
    std::filesystem::create_symlink("/dev/full", home_.bookmarksFile());

    EXPECT_EQ(openStore().bookmarks().size(), 5u);

    EXPECT_THAT(log_.debugLines(), ElementsAre(saveError("No space left on device")));
}

TEST_F(BookmarkManagerFailureTest, AFullDiskKeepsTheChangeInMemoryAndTheNextSaveTriesAgain)
{
    std::filesystem::create_directories(home_.bookmarksFolder());
    const auto report = inChildProcess([&]() -> std::string {
        if (!mountSmallDisk(home_.bookmarksFolder()))
            return "not permitted";
        return logOfStoreWithoutRoom(home_.bookmarksFile());
    });
    if (report == "not permitted")
        GTEST_SKIP() << "cannot mount a small disk";

    EXPECT_EQ(report, logWithout("No space left on device", home_));
}

TEST_F(BookmarkManagerFailureTest, AFileBeyondItsAllowedSizeKeepsTheChangeInMemoryAndTheNextSaveTriesAgain)
{
    const auto report = inChildProcess([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit { 65536, 65536 };
        return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 ? logOfStoreWithoutRoom(home_.bookmarksFile()) : "no limit";
    });

    EXPECT_EQ(report, logWithout("File too large", home_));
}

TEST_F(BookmarkManagerFailureTest, AListThatCannotBeEncodedIsDroppedSilently)
{
    home_.storeBookmarksFile(encoded({ bookmarkNamed("A") }));
    auto& store = openStore();
    auto text = bookmarkNamed("B"), number = bookmarkNamed("C");
    text.title = "\xFF";
    number.preferredWidth = std::numeric_limits<double>::infinity();

    store.addBookmark(text);
    store.removeBookmark("B");
    store.addBookmark(number);

    EXPECT_THAT(idsOf(store.bookmarks()), ElementsAre("A", "C"));
    EXPECT_THAT(log_.debugLines(), ElementsAre("DEBUG: BookmarkManager - Saved 1 bookmarks"));
    EXPECT_EQ(contentsOf(home_.bookmarksFile()), encoded({ bookmarkNamed("A") }));
}

TEST_F(BookmarkManagerFailureTest, ALogLineKeepsPercentSignsOfTheReason)
{
    const EnvironmentVariable folder("XDG_DATA_HOME", (home_.path() / "100%s%n").string());
    std::filesystem::create_directories(home_.path() / "100%s%n" / "Perchly" / "bookmarks.json");

    openStore();

    EXPECT_THAT(log_.debugLines(), ElementsAre(testing::HasSubstr("/100%s%n/Perchly/bookmarks.json: ")));
}

TEST_F(BookmarkManagerFailureTest, WithoutAFolderForDataTheProcessStops)
{
    const EnvironmentVariable data("XDG_DATA_HOME", std::nullopt);
    const EnvironmentVariable home("HOME", "");

    EXPECT_DEATH(openStore(), "Fatal error: there is no folder for the application's data");
}

} // namespace perchly::tests
