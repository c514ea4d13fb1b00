#include "ui/WebViewTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <utility>

namespace {

using perchly::test::Hold;
using perchly::test::waitUntil;
using testing::ElementsAre;
using testing::HasSubstr;

/// An address of this machine where nobody answers.
std::string closedAddress()
{
    return perchly::test::TestServer().url("/");
}

TEST_F(WebViewTest, HasNeitherAddressNorTitleBeforeTheFirstLoad)
{
    EXPECT_FALSE(webView->url());
    EXPECT_FALSE(webView->isLoading());
    EXPECT_FALSE(webView->canGoBack());
}

TEST_F(WebViewTest, HasTheAddressOfTheLoadAtOnce)
{
    load(server.url("/"));

    EXPECT_EQ(address(), server.url("/"));
    EXPECT_TRUE(webView->isLoading());
}

TEST_F(WebViewTest, ABlankPageHasAnAddress)
{
    load("about:blank");

    ASSERT_TRUE(waitUntil([&] { return !delegate->finished.empty(); }));
    EXPECT_EQ(address(), "about:blank");
}

TEST_F(WebViewTest, AFailedLoadKeepsThePage)
{
    open("/");
    const auto closed = closedAddress();

    load(closed);
    EXPECT_EQ(address(), closed);
    ASSERT_TRUE(comesToRest());

    EXPECT_EQ(address(), server.url("/"));
    EXPECT_EQ(valueOf("document.body.textContent"), "first");
    EXPECT_THAT(delegate->finished, ElementsAre(server.url("/")));
    EXPECT_FALSE(webView->canGoBack());
}

TEST_F(WebViewTest, ALoadFromAPortOfAnotherServiceKeepsThePage)
{
    open("/");
    for (const auto* blocked : { "http://127.0.0.1:9/", "http://127.0.0.1:1/a|b%zz", "https://user@127.0.0.1:6697/",
             "http://[::1]:10080/#part" }) {
        load(blocked);
        EXPECT_TRUE(webView->isLoading()) << blocked;
        ASSERT_TRUE(comesToRest()) << blocked;

        EXPECT_EQ(address(), server.url("/")) << blocked;
        EXPECT_EQ(valueOf("document.body.textContent"), "first") << blocked;
    }
    EXPECT_FALSE(webView->canGoBack());
    EXPECT_EQ(delegate->finished.size(), 1U);
}

TEST_F(WebViewTest, ALoadWithoutAnAnswerIsGivenUpAfterItsTimeout)
{
    open("/");
    server.serve("/silent", { .body = "late", .hold = Hold::BeforeHead });
    const auto start = std::chrono::steady_clock::now();

    load(server.url("/silent"), std::chrono::milliseconds(400));
    ASSERT_TRUE(comesToRest());

    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(400));
    EXPECT_EQ(server.requestCount("/silent"), 1U);
    EXPECT_EQ(address(), server.url("/"));
    EXPECT_EQ(delegate->finished.size(), 1U);
}

TEST_F(WebViewTest, ALoadThatReplacesAnotherHasItsOwnTimeout)
{
    server.serve("/silent", { .body = "late", .hold = Hold::BeforeHead });
    server.serve("/slow", { .body = "slow", .hold = Hold::BeforeHead });
    load(server.url("/silent"), std::chrono::milliseconds(200));

    load(server.url("/slow"));
    const auto formerDeadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
    ASSERT_TRUE(waitUntil(
        [&] { return std::chrono::steady_clock::now() > formerDeadline && server.requestCount("/slow") == 1; }));
    perchly::test::handlePendingEvents();
    EXPECT_TRUE(webView->isLoading());
    server.release("/slow");

    ASSERT_TRUE(waitUntil([&] { return !delegate->finished.empty(); }));
    EXPECT_THAT(delegate->finished, ElementsAre(server.url("/slow")));
}

TEST_F(WebViewTest, StoppingALoadGoesBackToThePageThatIsThere)
{
    open("/");
    server.serve("/silent", { .body = "late", .hold = Hold::BeforeHead });
    load(server.url("/silent"));
    ASSERT_TRUE(waitUntil([&] { return server.requestCount("/silent") == 1; }));

    webView->stopLoading();

    ASSERT_TRUE(comesToRest());
    EXPECT_EQ(address(), server.url("/"));
    EXPECT_EQ(delegate->finished.size(), 1U);
}

TEST_F(WebViewTest, BackAndForwardFinishTheirNavigations)
{
    open("/");
    open("/second");

    webView->goBack();
    ASSERT_TRUE(waitUntil([&] { return delegate->finished.size() == 3; }));
    EXPECT_EQ(address(), server.url("/"));
    EXPECT_TRUE(webView->canGoForward());
    webView->goForward();
    ASSERT_TRUE(waitUntil([&] { return delegate->finished.size() == 4; }));

    EXPECT_EQ(delegate->finished.back(), server.url("/second"));
}

TEST_F(WebViewTest, TellsEachChangeOfAddressAndLoadingOnce)
{
    std::vector<std::string> changes;
    const auto url = webView->observeURL([&] { changes.push_back(address()); });
    const auto loading = webView->observeIsLoading([&] { changes.emplace_back(webView->isLoading() ? "on" : "off"); });

    open("/");
    open("/second");

    EXPECT_THAT(
        changes, testing::UnorderedElementsAre("on", server.url("/"), "off", "on", server.url("/second"), "off"));
}

TEST_F(WebViewTest, AnObservationEndsWithItsTokenWhichMayOutliveTheView)
{
    int calls = 0;
    auto ended = webView->observeURL([&] { ++calls; });
    ended = {};
    auto outliving = webView->observeURL([&] { ++calls; });

    open("/");
    webView.reset();

    EXPECT_EQ(calls, 1);
}

TEST_F(WebViewTest, AHandlerMayLetGoOfTheView)
{
    const auto token = webView->observeURL([&] { webView.reset(); });

    load(server.url("/"));

    EXPECT_TRUE(waitUntil([&] { return !webView; }));
}

TEST_F(WebViewTest, AnAddressIsWhatThePageItselfCallsIt)
{
    open("/");

    (void)valueOf("history.replaceState(null, '', '/a|b^c[d]?{e}\\'%zz#f`g')");

    ASSERT_TRUE(waitUntil([&] { return address() != server.url("/"); }));
    EXPECT_EQ(valueOf("location.href"), address());
    EXPECT_EQ(webView->url()->host(), "127.0.0.1");
}

TEST_F(WebViewTest, OddAddressesEndNothing)
{
    open("/");
    for (const auto* odd : { "https://javascript/", "http://[::1]:1/", "http://a.b.c.d.invalid/%00", "nothing:at-all",
             "mailto:a@b.invalid", "ftp://127.0.0.1/", "about:nothing", "blob:null", "http://0.0.0.0:65535/" }) {
        load(odd);
        ASSERT_TRUE(comesToRest()) << odd;
    }

    open("/second");
    EXPECT_EQ(valueOf("document.body.textContent"), "second");
}

TEST_F(WebViewTest, ALinkForANewWindowAsksTheDelegateOnce)
{
    server.servePage("/links", "<a id=link href='/second' target=_blank>second</a>");
    open("/links");

    (void)valueOf("document.getElementById('link').click()");

    ASSERT_TRUE(waitUntil([&] { return !delegate->windows.empty(); }));
    EXPECT_EQ(valueOf("1 + 1"), "2");
    EXPECT_THAT(delegate->windows, ElementsAre(server.url("/second")));
    EXPECT_EQ(address(), server.url("/links"));
}

TEST_F(WebViewTest, AScriptThatOpensAWindowByItselfAsksTheDelegateOnceAndGetsNone)
{
    server.servePage("/opens", "<script>document.title = String(window.open('/second'))</script>");
    delegate->loadsWindowsHere = true;

    load(server.url("/opens"));
    ASSERT_TRUE(waitUntil([&] {
        return address() == server.url("/second") && !delegate->finished.empty()
            && delegate->finished.back() == server.url("/second");
    }));

    EXPECT_THAT(delegate->windows, ElementsAre(server.url("/second")));
}

TEST_F(WebViewTest, AThousandWindowsLeaveTheApplicationResponsive)
{
    server.servePage(
        "/flood", "<script>setTimeout(() => { for (let i = 0; i < 1000; i++) window.open('/second?' + i) })</script>");
    delegate->loadsWindowsHere = true;

    load(server.url("/flood"));
    auto latest = std::chrono::steady_clock::now();
    auto longestPause = std::chrono::steady_clock::duration();
    const auto isDone = [&] {
        const auto now = std::chrono::steady_clock::now();
        longestPause = std::max(longestPause, now - std::exchange(latest, now));
        return delegate->windows.size() == 1000 && address() == server.url("/second?999") && !webView->isLoading();
    };
    ASSERT_TRUE(waitUntil(isDone, std::chrono::seconds(30)));

    EXPECT_LT(longestPause, std::chrono::seconds(1));
    EXPECT_EQ(valueOf("document.title"), "Second");
}

TEST_F(WebViewTest, SendsItsOwnUserAgentAndTheEnginesWhereThatIsEmpty)
{
    const auto sentFor = [&](std::string_view userAgent) {
        server.clearRequests();
        webView->setCustomUserAgent(userAgent);
        EXPECT_EQ(webView->customUserAgent(), userAgent);
        open(userAgent.empty() ? "/" : "/second");
        return server.requests().front().header("User-Agent");
    };

    EXPECT_EQ(sentFor("Perchly Test/1.0"), "Perchly Test/1.0");
    EXPECT_THAT(sentFor(""), HasSubstr("AppleWebKit"));
}

TEST_F(WebViewTest, AScriptComesToTextOrNone)
{
    open("/");

    EXPECT_EQ(valueOf("6 * 7"), "42");
    EXPECT_EQ(valueOf("document.title"), "First");
    EXPECT_FALSE(valueOf("throw new Error('no')"));
}

} // namespace
