#include "bookmarks/Preferences.h"
#include "bookmarks/UserAgents.h"
#include "platform/foundation/UserDefaults.h"
#include "ui/BrowserTest.h"

namespace {

using perchly::CurrentBookmark;

class NavigationTest : public BrowserTest {
protected:
    /// What the field and the browser take the text for, before any answer.
    [[nodiscard]] std::string addressLoadedFor(std::string_view text)
    {
        enter(text);
        EXPECT_EQ(browser->lastVisitedURL().value_or(""), addressInField());
        return addressInField();
    }
};

TEST_F(NavigationTest, ABareHostNameBetweenBlanksIsLoadedOverHttps)
{
    EXPECT_EQ(addressLoadedFor(" \n127.0.0.1 \n"), "https://127.0.0.1");
}

TEST_F(NavigationTest, HttpAndHttpsAreLoadedAsTheyAre)
{
    EXPECT_EQ(addressLoadedFor("http://127.0.0.1:1/a"), "http://127.0.0.1:1/a");
    EXPECT_EQ(addressLoadedFor("https://127.0.0.1:1/b"), "https://127.0.0.1:1/b");
}

TEST_F(NavigationTest, AnyOtherSchemeGetsHttpsInFrontOfTheWholeEntry)
{
    EXPECT_EQ(addressLoadedFor("HTTPS://127.0.0.1"), "https://HTTPS://127.0.0.1");
    EXPECT_EQ(addressLoadedFor("ftp://127.0.0.1/"), "https://ftp://127.0.0.1/");
}

TEST_F(NavigationTest, ScriptsAndFilesAreNeverRunOrShown)
{
    open("/");
    ASSERT_TRUE(hasTitle("First"));
    for (const auto* entry : { "javascript:document.title='ran'", "file:///etc/passwd", "data:text/html,ran" }) {
        enter(entry);
        ASSERT_TRUE(perchly::test::waitUntil([&] { return !browser->webView()->isLoading(); })) << entry;
        EXPECT_EQ(browser->webView()->title(), "First") << entry;
    }
}

TEST_F(NavigationTest, AnAddressThatDoesNotParseChangesNothing)
{
    open("/");
    for (const auto* entry : { "a host with blanks", "https://", "http://[::1", "host\x01name" }) {
        enter(entry);
        EXPECT_EQ(addressInField(), entry);
        EXPECT_EQ(browser->lastVisitedURL(), server.url("/")) << entry;
        EXPECT_EQ(pageAddress(), server.url("/")) << entry;
    }
}

TEST_F(NavigationTest, AMegabyteOfTextIsAnAddressLikeAnyOther)
{
    const auto path = std::string(std::size_t { 1024 } * 1024, 'a');

    browser->loadURLString(server.url("/" + path), CurrentBookmark::Clear);

    EXPECT_EQ(browser->lastVisitedURL(), server.url("/" + path));
    EXPECT_TRUE(perchly::test::waitUntil([&] { return !browser->webView()->isLoading(); }));
    open("/");
    enter(path);
    EXPECT_TRUE(browser->lastVisitedURL()->starts_with("https://aaaa"));
}

TEST_F(NavigationTest, EmptyTextInTheFieldLeavesThePage)
{
    open("/");

    enter(" \t ");

    EXPECT_EQ(pageAddress(), server.url("/"));
    EXPECT_FALSE(browser->webView()->isLoading());
}

TEST_F(NavigationTest, OnlyReturnNavigates)
{
    toolbar().urlTextField->setStringValue(server.url("/"));

    for (const auto* command : { "cancelOperation:", "insertTab:", "moveUp:", "moveDown:" })
        EXPECT_FALSE(browser->controlDoCommandBySelector(*toolbar().urlTextField, command)) << command;
    EXPECT_FALSE(browser->webView()->isLoading());

    EXPECT_TRUE(toolbar().urlTextField->doCommandBySelector("insertNewline:"));
    EXPECT_TRUE(showsPage("/"));
}

TEST_F(NavigationTest, BlankingThePageRemembersIt)
{
    auto bookmark = bookmarkFor("/");
    browser->loadBookmark(bookmark);
    ASSERT_TRUE(showsPage("/"));
    open("/second");

    enter("about:blank");

    EXPECT_TRUE(perchly::test::waitUntil([&] { return pageAddress() == "about:blank"; }));
    EXPECT_EQ(browser->lastVisitedURL(), server.url("/second"));
    browser->loadBookmark(bookmark);
    EXPECT_TRUE(showsPage("/second"));
}

TEST_F(NavigationTest, BlankTextFromTheOwnerBlanksThePage)
{
    open("/");

    browser->loadURLString("  ", CurrentBookmark::Clear);

    EXPECT_EQ(addressInField(), "");
    EXPECT_EQ(browser->lastVisitedURL(), server.url("/"));
    EXPECT_TRUE(perchly::test::waitUntil([&] { return pageAddress() == "about:blank"; }));
}

TEST_F(NavigationTest, ShowingABookmarkTwiceDoesNotReloadIt)
{
    const auto bookmark = bookmarkFor("/");
    browser->loadBookmark(bookmark);
    ASSERT_TRUE(showsPage("/"));

    browser->loadBookmark(bookmark);

    EXPECT_FALSE(browser->webView()->isLoading());
    open("/second");
    EXPECT_EQ(server.requestCount("/"), 1U);
}

TEST_F(NavigationTest, ABookmarkThatReloadsOnOpenIsLoadedEveryTime)
{
    auto bookmark = bookmarkFor("/");
    bookmark.shouldReloadOnOpen = true;
    browser->loadBookmark(bookmark);
    ASSERT_TRUE(showsPage("/"));
    open("/second");

    browser->loadBookmark(bookmark);

    EXPECT_TRUE(showsPage("/"));
    EXPECT_EQ(server.requestCount("/"), 2U);
}

TEST_F(NavigationTest, ShowingABookmarkReturnsToWhereTheViewLastWas)
{
    open("/second");

    browser->loadBookmark(bookmarkFor("/"));

    EXPECT_EQ(pageAddress(), server.url("/second"));
    EXPECT_EQ(browser->originalURL(), server.url("/"));
    EXPECT_EQ(server.requestCount("/"), 0U);
}

TEST_F(NavigationTest, ABookmarkIsShownAtItsSizeOr600By700)
{
    auto bookmark = bookmarkFor("/");
    bookmark.preferredWidth = 420;
    bookmark.preferredHeight = 510;
    browser->loadBookmark(bookmark);
    EXPECT_EQ(browser->preferredContentSize(), (foundation::Size { 420, 510 }));

    browser->loadBookmark(bookmarkFor("/"));

    EXPECT_EQ(browser->preferredContentSize(), (foundation::Size { 600, 700 }));
}

TEST_F(NavigationTest, APageIsAskedForUnderTheBookmarksUserAgent)
{
    EXPECT_EQ(browser->webView()->customUserAgent(), perchly::agents::systemDefault);
    auto bookmark = bookmarkFor("/");
    bookmark.userAgent = "Test/1.0";

    browser->loadBookmark(bookmark);

    ASSERT_TRUE(showsPage("/"));
    EXPECT_EQ(lastRequest("/").header("User-Agent"), "Test/1.0");
    open("/second");
    EXPECT_EQ(lastRequest("/second").header("User-Agent"), "Test/1.0");
    browser->loadBookmark(bookmarkFor("/"));
    EXPECT_EQ(browser->webView()->customUserAgent(), perchly::agents::systemDefault);
}

TEST_F(NavigationTest, ATypedAddressMakesTheViewAFreePage)
{
    const auto bookmark = bookmarkFor("/");
    browser->loadBookmark(bookmark);
    EXPECT_EQ(browser->currentBookmarkId(), bookmark.id);

    enter(server.url("/second"));

    EXPECT_EQ(browser->currentBookmarkId(), std::nullopt);
    EXPECT_TRUE(showsPage("/second"));
}

TEST_F(NavigationTest, HomeIsTheBookmarkShownLastEvenAfterATypedAddress)
{
    browser->loadBookmark(bookmarkFor("/"));
    ASSERT_TRUE(showsPage("/"));
    open("/second");

    toolbar().homeButton->performClick();

    EXPECT_TRUE(showsPage("/"));
}

TEST_F(NavigationTest, HomeIsTheHomePageWithoutABookmark)
{
    foundation::UserDefaults::standard().setString(server.url("/"), perchly::preferences::homePageURL);

    toolbar().homeButton->performClick();

    EXPECT_TRUE(showsPage("/"));
    EXPECT_EQ(browser->currentBookmarkId(), std::nullopt);
}

TEST_F(NavigationTest, HomeDoesNothingWithoutABookmarkAndAHomePage)
{
    foundation::UserDefaults::standard().setString("", perchly::preferences::homePageURL);

    toolbar().homeButton->performClick();

    EXPECT_FALSE(browser->webView()->isLoading());
    EXPECT_EQ(browser->lastVisitedURL(), std::nullopt);
}

TEST_F(NavigationTest, ALinkToANewWindowOpensInTheSameView)
{
    server.servePage("/link", "<title>Link</title><a id=a target=_blank href='/second'>new</a>");
    open("/link");

    browser->webView()->evaluateJavaScript("document.getElementById('a').click()", [](const auto&) {});

    EXPECT_TRUE(showsPage("/second"));
    EXPECT_EQ(server.requestCount("/second"), 1U);
    EXPECT_TRUE(browser->webView()->canGoBack());
}

TEST_F(NavigationTest, AFailedLoadLeavesThePage)
{
    open("/");
    ASSERT_TRUE(hasTitle("First"));
    const auto addressOfNobody = [] { return perchly::test::TestServer().url("/"); }();

    enter(addressOfNobody);

    EXPECT_TRUE(perchly::test::waitUntil([&] { return !browser->webView()->isLoading(); }));
    EXPECT_TRUE(showsPage("/"));
    EXPECT_EQ(browser->webView()->title(), "First");
    EXPECT_FALSE(browser->webView()->canGoBack());
}

} // namespace
