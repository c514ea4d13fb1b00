#include "platform/foundation/URLSession.h"
#include "ui/PinnedTest.h"
#include "unit/CapturedStandardError.h"

#include <atomic>

namespace {

using perchly::test::TestServer;
using perchly::test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;

/// What the log tells of icons that cannot be downloaded.
class PinnedIconLogTest : public PinnedTest {
protected:
    [[nodiscard]] std::vector<std::string> errorLines() const
    {
        auto lines = captured.debugLines();
        std::erase_if(lines, [](const auto& line) { return !line.starts_with("DEBUG: Icon load error"); });
        return lines;
    }

    /// In the session's own words.
    [[nodiscard]] static std::string errorOf(const std::string& address)
    {
        auto text = std::make_shared<std::string>();
        auto isDone = std::make_shared<std::atomic<bool>>(false);
        const auto handler = [text, isDone](const foundation::Result<std::string>& data) {
            *text = data ? "" : data.error().localizedDescription;
            *isDone = true;
        };
        foundation::URLSession::sharedSession().dataTask({ .url = *foundation::URL::parse(address) }, handler);
        EXPECT_TRUE(waitUntil([&] { return isDone->load(); }));
        return *text;
    }

    perchly::Bookmark bookmark = bookmarkNamed("A title: with a colon");
    const std::string unreachable = TestServer().url("/icon.png"); // that server has gone
    perchly::tests::CapturedStandardError captured;
};

TEST_F(PinnedIconLogTest, AnIconThatCannotBeReachedIsToldOnceAndTheItemStaysBlank)
{
    bookmark.sfSymbolName = std::nullopt;
    bookmark.iconURL = unreachable;
    const auto error = errorOf(unreachable);
    ASSERT_NE(error, "");

    added(bookmark);
    ASSERT_TRUE(waitUntil([&] { return !errorLines().empty(); }));
    (void)errorOf(unreachable);

    EXPECT_THAT(errorLines(), ElementsAre("DEBUG: Icon load error for A title: with a colon: " + error));
    EXPECT_EQ(buttonOf(bookmark)->title(), "");
    EXPECT_EQ(buttonOf(bookmark)->image(), nullptr);
    EXPECT_EQ(buttonOf(bookmark)->imagePosition(), appkit::ImagePosition::ImageOnly);
    EXPECT_EQ(server.requestCount("/s2/favicons"), 0U);
}

TEST_F(PinnedIconLogTest, TheTitleIsThatOfTheBookmarkWhenTheDownloadBegan)
{
    bookmark.iconURL = unreachable;
    store().addBookmark(bookmark);
    announce();
    bookmark.title = "Renamed";
    bookmark.iconURL = std::nullopt;

    change(bookmark);

    ASSERT_TRUE(waitUntil([&] { return !errorLines().empty(); }));
    EXPECT_TRUE(errorLines().front().starts_with("DEBUG: Icon load error for A title: with a colon: "));
}

TEST_F(PinnedIconLogTest, AnAnswerThatIsNoPictureIsNotTold)
{
    bookmark.sfSymbolName = std::nullopt;
    server.serve("/page", { .body = "<p>no picture" });
    server.serve("/nothing", { .body = "" });
    for (const auto* path : { "/page", "/nothing", "/missing" }) {
        bookmark.iconURL = server.url(path);
        change(added(bookmark));
        remove(bookmark);
    }
    bookmark.iconURL = unreachable;
    added(bookmark);

    ASSERT_TRUE(waitUntil([&] { return !errorLines().empty(); }));
    ASSERT_TRUE(isAskedFor("/missing"));
    (void)errorOf(unreachable);
    EXPECT_EQ(errorLines().size(), 1U);
}

TEST_F(PinnedIconLogTest, ASitesIconThatCannotBeReachedIsNotTold)
{
    bookmark.sfSymbolName = std::nullopt;
    foundation::UserDefaults::standard().setString(TestServer().url(""), perchly::preferences::faviconServiceURL);

    added(bookmark);

    ASSERT_TRUE(waitUntil([&] { return buttonOf(bookmark)->title() == "A"; }));
    EXPECT_THAT(errorLines(), IsEmpty());
}

} // namespace
