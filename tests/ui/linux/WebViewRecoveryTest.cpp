#include "support/linux/PageProcess.h"
#include "support/linux/ShownDialog.h"
#include "ui/WebViewTest.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using perchly::test::killPageProcesses;
using perchly::test::pageProcesses;
using perchly::test::showsDialog;
using perchly::test::waitUntil;

class WebViewRecoveryTest : public WebViewTest {
protected:
    /// Kills the page's process and waits for the view's answer to that.
    [[nodiscard]] bool dies()
    {
        const auto before = delegate->finished.size();
        return killPageProcesses() > 0 && waitUntil([&] { return delegate->finished.size() > before; });
    }

    /// A page that asks the server for that path and then, without going back to its events, runs the script.
    [[nodiscard]] static std::string telling(const std::string& path, const std::string& script)
    {
        return "<script>setTimeout(() => { const request = new XMLHttpRequest(); request.open('GET', '" + path
            + "', false); request.send(); " + script + " }, 100)</script>";
    }

    /// The page asks its user, who answers.
    void expectThatThePageAsks()
    {
        (void)valueOf("setTimeout(() => { answer = String(confirm('stay?')) }); answer = 'none'");
        ASSERT_TRUE(waitUntil([&] { return showsDialog(*webView); }));
        perchly::test::answerDialog(*webView);
        EXPECT_TRUE(waitForValue("String(answer !== 'none')", "true"));
    }
};

TEST_F(WebViewRecoveryTest, APageWhoseProcessDiedIsLoadedOnceMore)
{
    open("/second");
    std::vector<std::string> addresses;
    const auto token = webView->observeURL([&] { addresses.push_back(address()); });

    ASSERT_TRUE(dies());

    EXPECT_EQ(valueOf("document.body.textContent"), "second");
    EXPECT_EQ(server.requestCount("/second"), 2U);
    EXPECT_TRUE(addresses.empty());
    EXPECT_FALSE(webView->canGoBack());
}

TEST_F(WebViewRecoveryTest, APageThatDiesAgainSoonIsExplainedAndComesBackByReload)
{
    open("/second");
    ASSERT_TRUE(dies());
    ASSERT_TRUE(dies());

    EXPECT_EQ(valueOf("document.title"), "This page has stopped");
    EXPECT_EQ(address(), server.url("/second"));
    EXPECT_EQ(server.requestCount("/second"), 2U);

    webView->reload();

    EXPECT_TRUE(waitForValue("document.body.textContent", "second"));
    EXPECT_EQ(address(), server.url("/second"));
}

TEST_F(WebViewRecoveryTest, APageThatHangsCanBeLeft)
{
    server.servePage("/hangs", telling("/hanging", "for (;;);"));
    open("/hangs");
    ASSERT_TRUE(waitUntil([&] { return server.requestCount("/hanging") == 1; }));

    open("/second");

    EXPECT_EQ(valueOf("document.body.textContent"), "second");
}

TEST_F(WebViewRecoveryTest, APageThatAsksWithoutEndCanBeReloadedAndLeft)
{
    server.servePage("/asks", telling("/asking", "for (;;) alert(1);"));
    open("/asks");
    ASSERT_TRUE(waitUntil([&] { return server.requestCount("/asking") == 1; }));

    webView->reload();
    ASSERT_TRUE(waitUntil([&] { return server.requestCount("/asking") == 2; }));
    open("/second");

    EXPECT_EQ(valueOf("document.body.textContent"), "second");
}

TEST_F(WebViewRecoveryTest, APageThatDoesNotWantToBeLeftIsLeft)
{
    server.servePage("/stays", "<script>onbeforeunload = () => 'stay'</script>");
    open("/stays");
    ASSERT_EQ(valueOf("1"), "1"); // the engine takes a script of ours for the user's own touch

    open("/second");

    EXPECT_EQ(valueOf("document.body.textContent"), "second");
}

TEST_F(WebViewRecoveryTest, BackWithinAPageLeavesItsDialogsAndItsProcess)
{
    open("/");
    for (const auto* step : { "/one", "/two", "" })
        (void)valueOf("history.pushState(null, '', '" + std::string(step) + "')");
    ASSERT_TRUE(waitUntil([&] { return address() == server.url("/two"); }));
    const auto processes = pageProcesses();

    webView->goBack();
    expectThatThePageAsks();
    webView->goBack();
    ASSERT_TRUE(waitUntil([&] { return address() == server.url("/one"); }));
    expectThatThePageAsks();
    webView->goForward();
    ASSERT_TRUE(waitUntil([&] { return address() == server.url("/two"); }));
    expectThatThePageAsks();

    EXPECT_EQ(pageProcesses(), processes);
    EXPECT_EQ(server.requestCount("/"), 1U);
}

TEST_F(WebViewRecoveryTest, APageMayAskWhileItIsGoneBackIn)
{
    open("/");
    const auto processes = pageProcesses();
    (void)valueOf("onpopstate = () => { answer = String(confirm('back?')) }; answer = 'none'; "
                  "history.pushState(null, '', '/one')");
    ASSERT_TRUE(waitUntil([&] { return address() == server.url("/one"); }));

    webView->goBack();

    ASSERT_TRUE(waitUntil([&] { return showsDialog(*webView); }));
    perchly::test::answerDialog(*webView);
    EXPECT_TRUE(waitForValue("String(answer !== 'none')", "true"));
    EXPECT_EQ(pageProcesses(), processes);
}

TEST_F(WebViewRecoveryTest, APartOfThePageLeavesItsDialogsAndItsProcess)
{
    open("/");
    const auto processes = pageProcesses();

    load(server.url("/#part"));
    ASSERT_TRUE(waitForValue("location.hash", "#part"));
    expectThatThePageAsks();

    EXPECT_EQ(pageProcesses(), processes);
    EXPECT_EQ(server.requestCount("/"), 1U);
}

TEST_F(WebViewRecoveryTest, CookiesAndTrackingPreventionLiveInTheUsersFolder)
{
    server.serve("/cookie", { .body = "kept", .headers = { { "Set-Cookie", "perch=branch; Max-Age=3600" } } });
    open("/cookie");
    const auto folder = std::filesystem::path(std::getenv("XDG_DATA_HOME")) / "Perchly/WebKit";

    const auto isOnDisk = [&] {
        std::ifstream file(folder / "cookies.sqlite", std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        return bytes.find("branch") != std::string::npos;
    };

    EXPECT_TRUE(waitUntil(isOnDisk));
    EXPECT_TRUE(waitUntil([&] { return std::filesystem::exists(folder / "itp/observations.db"); }));
    EXPECT_EQ(std::filesystem::status(folder).permissions(), std::filesystem::perms::owner_all);
}

TEST_F(WebViewRecoveryTest, ADownloadIsNotSaved)
{
    const auto downloads = std::filesystem::path(std::getenv("XDG_CACHE_HOME")) / "downloads";
    std::filesystem::create_directory(downloads);
    std::ofstream(std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "user-dirs.dirs")
        << "XDG_DOWNLOAD_DIR=" << downloads << "\n";
    server.serve("/file.bin", { .body = "bytes", .contentType = "application/octet-stream" });
    server.servePage("/saves", "<a id=link href='/file.bin' download>save</a>");
    open("/saves");

    (void)valueOf("document.getElementById('link').click()");
    ASSERT_TRUE(waitUntil([&] { return server.requestCount("/file.bin") > 0; }));
    open("/second");

    EXPECT_TRUE(std::filesystem::is_empty(downloads));
}

} // namespace
