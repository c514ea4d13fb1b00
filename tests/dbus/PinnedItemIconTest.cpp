#include "Monitor.h"
#include "PinnedItemTest.h"
#include "platform/linux/appkit/StatusBarButtonNative.h"
#include "unit/CapturedStandardError.h"

#include <atomic>
#include <filesystem>
#include <set>
#include <thread>

namespace {

using perchly::test::Hold;
using testbus::waitUntil;
using testing::Each;
using testing::IsEmpty;
using testing::Not;

constexpr const char* noPixmaps = "(<@a(iiay) []>,)";

using PinnedItemIconTest = PinnedItemTest;

TEST_F(PinnedItemIconTest, NothingIsToldOfLettersThatComeBack)
{
    const auto first = shown(withFavicon("first"));
    const auto second = shown(withFavicon("second"));
    ASSERT_TRUE(hasLetter(first, "F") && hasLetter(second, "S"));
    testbus::settle(host_);
    const testbus::Monitor monitor;

    for (auto time = 0; time < 3; ++time) {
        announce();
        ASSERT_EQ(buttonOf(first)->title(), "");
        ASSERT_TRUE(hasLetter(first, "F") && hasLetter(second, "S"));
        testbus::settle(host_);
    }

    EXPECT_THAT(monitor.messagesFrom(connectionOf(first)), IsEmpty());
    EXPECT_THAT(monitor.messagesFrom(connectionOf(second)), IsEmpty());
}

TEST_F(PinnedItemIconTest, ABlankLookLeavesTheFormerPictureForAWhile)
{
    auto bookmark = shown(bookmarkNamed("This"));
    const auto picture = property(bookmark, "IconPixmap");
    ASSERT_NE(picture, noPixmaps);
    server.serve("/slow.png", { .status = 404, .hold = Hold::BeforeHead });
    bookmark.iconURL = server.url("/slow.png");
    const auto start = std::chrono::steady_clock::now();

    change(bookmark);
    testbus::settle(host_);

    EXPECT_EQ(property(bookmark, "IconPixmap"), picture);
    EXPECT_TRUE(waitUntil([&] { return property(bookmark, "IconPixmap") == noPixmaps; }));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1000));
}

TEST_F(PinnedItemIconTest, ANewLookEndsTheBlankOneBeforeItIsSeen)
{
    auto bookmark = shown(bookmarkNamed("This"));
    server.serve("/slow.png", { .status = 404, .hold = Hold::BeforeHead });
    bookmark.iconURL = server.url("/slow.png");
    change(bookmark);
    testbus::settle(host_);
    const testbus::Monitor monitor;
    bookmark.iconURL = std::nullopt;

    change(bookmark);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(2500);
    ASSERT_TRUE(waitUntil([&] { return std::chrono::steady_clock::now() > end; }));

    EXPECT_THAT(monitor.messagesFrom(connectionOf(bookmark)), IsEmpty());
}

TEST_F(PinnedItemIconTest, AnIconWithoutAnEndLeavesTheItemBlankAndAnswered)
{
    constexpr auto mebibyte = std::size_t { 1 } << 20U;
    server.serve("/large.png", { .body = std::string(50 * mebibyte, 'x'), .contentType = "image/png" });
    server.serve("/endless.png", { .body = std::string(mebibyte, 'x'), .contentType = "image/png", .isEndless = true });
    server.serve("/never.png", { .hold = Hold::BeforeHead });
    const perchly::tests::CapturedStandardError captured;
    const auto withIcon = [&](const std::string& name) {
        auto bookmark = withFavicon(name);
        bookmark.iconURL = server.url("/" + name + ".png");
        return shown(bookmark);
    };
    const auto large = withIcon("large");
    const auto endless = withIcon("endless");
    const auto never = withIcon("never");
    ASSERT_TRUE(isAskedFor("/never.png"));

    auto longest = std::chrono::steady_clock::duration::zero();
    const auto isTold = [&] {
        const auto start = std::chrono::steady_clock::now();
        for (const auto& bookmark : { large, endless, never })
            EXPECT_EQ(property(bookmark, "IconPixmap"), noPixmaps);
        longest = std::max(longest, std::chrono::steady_clock::now() - start);
        const auto text = captured.text();
        return text.find("load error for large: The download is too large") != std::string::npos
            && text.find("load error for endless: The download is too large") != std::string::npos;
    };
    EXPECT_TRUE(waitUntil(isTold)) << captured.text();

    EXPECT_LT(longest, std::chrono::seconds(1));
    click(never, "Activate");
    EXPECT_TRUE(waitUntil([&] { return delegate->opened.size() == 1; }));
}

TEST_F(PinnedItemIconTest, ADownloadedIconIsSetOnTheMainThread)
{
    server.serve("/icon.svg",
        { .body = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'><rect width='8' height='8'/></svg>",
            .contentType = "image/svg+xml",
            .hold = Hold::BeforeHead });
    auto bookmark = withFavicon("This");
    bookmark.iconURL = server.url("/icon.svg");
    shown(bookmark);
    std::vector<std::thread::id> threads;
    auto& changed = buttonOf(bookmark)->native().changed;
    changed = [&threads, tell = changed] {
        threads.push_back(std::this_thread::get_id());
        tell();
    };

    server.release("/icon.svg");

    ASSERT_TRUE(waitUntil([&] { return buttonOf(bookmark)->image() != nullptr; }));
    EXPECT_THAT(threads, Not(IsEmpty()));
    EXPECT_THAT(threads, Each(std::this_thread::get_id()));
}

TEST_F(PinnedItemIconTest, ADrawingThatChangesLeavesNoFilesBehind)
{
    auto drawings = std::make_shared<std::atomic<int>>(0);
    server.setHandler([drawings](const auto&) {
        const auto width = std::to_string(++*drawings % 8 + 1);
        return perchly::test::Response { .body
            = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'><rect width='" + width
                + "' height='8'/></svg>",
            .contentType = "image/svg+xml" };
    });
    auto bookmark = withFavicon("This");
    bookmark.iconURL = server.url("/icon.svg");
    shown(bookmark);
    shown(withFavicon("Another"));
    std::set<std::string> names;
    for (auto time = 0; time < 4; ++time) {
        ASSERT_TRUE(waitUntil([&] { return names.insert(property(bookmark, "IconName")).second; }));
        announce();
    }
    remove(bookmark);
    ASSERT_TRUE(waitUntil([&] { return watcher_.items().size() == 1; }));

    const auto folder = std::filesystem::path(std::getenv("XDG_CACHE_HOME")) / "Perchly" / "icons";
    EXPECT_TRUE(waitUntil([&] { return std::filesystem::is_empty(folder); }));
}

TEST_F(PinnedItemIconTest, ATitleIsToldAtOnceWhileItsIconIsOnItsWay)
{
    auto bookmark = shown(bookmarkNamed("Before"));
    const auto picture = property(bookmark, "IconPixmap");
    server.serve("/slow.png", { .status = 404, .hold = Hold::BeforeHead });
    bookmark.iconURL = server.url("/slow.png");
    bookmark.title = "After";
    const auto start = std::chrono::steady_clock::now();

    change(bookmark);

    EXPECT_TRUE(waitUntil([&] { return property(bookmark, "Title") == "(<'After'>,)"; }));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1000));
    EXPECT_EQ(property(bookmark, "IconPixmap"), picture);
}

TEST_F(PinnedItemIconTest, ASizeBeyondAllMeasureIsDrawnAsTheLargest)
{
    auto bookmark = shown(bookmarkNamed("This"));
    bookmark.menubarIconSize = 22;
    change(bookmark);
    testbus::settle(host_);
    const auto large = property(bookmark, "IconPixmap");
    for (const auto size : { 1e300, -1e300, 0.0, 1e10 }) {
        bookmark.menubarIconSize = size;
        change(bookmark);
        testbus::settle(host_);
        EXPECT_EQ(property(bookmark, "IconPixmap") == large, size > 22) << size;
    }
}

TEST_F(PinnedItemIconTest, ATextOfAnyLengthIsDrawn)
{
    for (const auto* letters : { "é", "日", "🚀" }) {
        auto bookmark = bookmarkNamed("This");
        bookmark.sfSymbolName.emplace();
        for (auto count = 0; count < 1 << 20; ++count)
            *bookmark.sfSymbolName += letters;
        shown(bookmark);

        EXPECT_NE(property(bookmark, "IconPixmap"), noPixmaps) << letters;

        remove(bookmark);
        ASSERT_TRUE(waitUntil([&] { return watcher_.items().empty(); }));
    }
}

TEST_F(PinnedItemIconTest, AnItemThatIsBlankFromTheStartIsThere)
{
    auto bookmark = withFavicon("This");
    server.serve("/slow.png", { .status = 404, .hold = Hold::BeforeHead });
    bookmark.iconURL = server.url("/slow.png");

    shown(bookmark);

    EXPECT_EQ(property(bookmark, "IconPixmap"), noPixmaps);
    EXPECT_EQ(property(bookmark, "Title"), "(<'This'>,)");
}

} // namespace
