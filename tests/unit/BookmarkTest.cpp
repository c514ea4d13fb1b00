#include "bookmarks/Bookmark.h"
#include "BookmarkJson.h"

#include <functional>
#include <gmock/gmock.h>
#include <unordered_set>

namespace perchly::tests {

namespace {

std::size_t hashOf(const Bookmark& bookmark)
{
    return std::hash<Bookmark>()(bookmark);
}

/// One change for each of the seventeen fields.
const std::vector<std::function<void(Bookmark&)>>& changes()
{
    static const std::vector<std::function<void(Bookmark&)>> all = {
        [](auto& bookmark) { bookmark.id += "x"; },
        [](auto& bookmark) { bookmark.title += "x"; },
        [](auto& bookmark) { bookmark.url += "x"; },
        [](auto& bookmark) { bookmark.isPinned = !bookmark.isPinned; },
        [](auto& bookmark) { bookmark.isAddedToMenuBar = !bookmark.isAddedToMenuBar; },
        [](auto& bookmark) { bookmark.iconURL = ""; },
        [](auto& bookmark) { bookmark.createdAt.timeIntervalSinceReferenceDate += 1; },
        [](auto& bookmark) { bookmark.preferredWidth = 1; },
        [](auto& bookmark) { bookmark.preferredHeight = 1; },
        [](auto& bookmark) { bookmark.shouldReloadOnOpen = !bookmark.shouldReloadOnOpen; },
        [](auto& bookmark) { bookmark.isAlwaysOnTop = !bookmark.isAlwaysOnTop; },
        [](auto& bookmark) { bookmark.prefersDetached = !bookmark.prefersDetached; },
        [](auto& bookmark) { bookmark.openInSystemBrowser = !bookmark.openInSystemBrowser; },
        [](auto& bookmark) { bookmark.userAgent = ""; },
        [](auto& bookmark) { bookmark.customEmoji = ""; },
        [](auto& bookmark) { bookmark.sfSymbolName = ""; },
        [](auto& bookmark) { bookmark.menubarIconSize = 0; },
    };
    return all;
}

} // namespace

TEST(BookmarkTest, ANewBookmarkFloatsAndHasNoOtherFlag)
{
    const Bookmark bookmark { .title = "Mail", .url = "https://mail.example/" };

    EXPECT_TRUE(bookmark.isAlwaysOnTop);
    EXPECT_FALSE(bookmark.isPinned || bookmark.isAddedToMenuBar || bookmark.shouldReloadOnOpen);
    EXPECT_FALSE(bookmark.prefersDetached || bookmark.openInSystemBrowser);
    EXPECT_FALSE(bookmark.iconURL || bookmark.userAgent || bookmark.customEmoji || bookmark.sfSymbolName);
    EXPECT_FALSE(bookmark.preferredWidth || bookmark.preferredHeight || bookmark.menubarIconSize);
}

TEST(BookmarkTest, ANewBookmarkHasAFreshIdAndWasMadeNow)
{
    const auto before = foundation::Date::now();
    const Bookmark first, second;
    const auto after = foundation::Date::now();

    EXPECT_EQ(first.id.size(), 36u);
    EXPECT_NE(first.id, second.id);
    EXPECT_GE(first.createdAt.timeIntervalSinceReferenceDate, before.timeIntervalSinceReferenceDate);
    EXPECT_LE(first.createdAt.timeIntervalSinceReferenceDate, after.timeIntervalSinceReferenceDate);
}

TEST(BookmarkTest, TheReferenceDateIsTheStartOf2001)
{
    const auto unixTime = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();

    EXPECT_NEAR(foundation::Date::now().timeIntervalSinceReferenceDate, unixTime - 978307200.0, 60);
}

TEST(BookmarkTest, ACopyIsEqualAndHashesAlike)
{
    const std::vector<Bookmark> copies(2, fullBookmark("A"));

    EXPECT_EQ(copies[0], copies[1]);
    EXPECT_EQ(hashOf(copies[0]), hashOf(copies[1]));
}

TEST(BookmarkTest, EveryFieldCountsForEqualityAndForTheHash)
{
    ASSERT_EQ(changes().size(), 17u);
    const auto original = bookmarkNamed("A");
    std::unordered_set<std::size_t> hashes { hashOf(original) };
    for (const auto& change : changes()) {
        auto changed = original;
        change(changed);

        EXPECT_NE(changed, original);
        EXPECT_TRUE(hashes.insert(hashOf(changed)).second) << "change number " << hashes.size();
    }
}

TEST(BookmarkTest, BookmarksThatDifferOnlyInWidthAreUnequalAndHashApart)
{
    auto narrow = bookmarkNamed("A");
    auto wide = narrow;
    narrow.preferredWidth = 320;
    wide.preferredWidth = 640;

    EXPECT_NE(narrow, wide);
    EXPECT_NE(hashOf(narrow), hashOf(wide));
}

TEST(BookmarkTest, AnAbsentTextAndAnEmptyOneAreUnequalAndHashApart)
{
    auto absent = bookmarkNamed("A");
    auto empty = absent;
    empty.userAgent = "";

    EXPECT_NE(absent, empty);
    EXPECT_NE(hashOf(absent), hashOf(empty));
}

TEST(BookmarkTest, TheSameValueInAnotherFieldHashesApart)
{
    auto emoji = bookmarkNamed("A");
    auto symbol = emoji;
    emoji.customEmoji = "star";
    symbol.sfSymbolName = "star";

    EXPECT_NE(hashOf(emoji), hashOf(symbol));
}

TEST(BookmarkTest, ZeroAndNegativeZeroAreEqualAndHashAlike)
{
    auto zero = bookmarkNamed("A");
    zero.createdAt = { 0.0 };
    zero.preferredWidth = 0.0;
    auto negative = zero;
    negative.createdAt = { -0.0 };
    negative.preferredWidth = -0.0;

    EXPECT_EQ(zero, negative);
    EXPECT_EQ(hashOf(zero), hashOf(negative));
}

} // namespace perchly::tests
