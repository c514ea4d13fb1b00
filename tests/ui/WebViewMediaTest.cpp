#include "ui/SilentSound.h"
#include "ui/WebViewTest.h"

namespace {

using perchly::test::silentSound;
using perchly::test::TestServer;
using perchly::test::waitUntil;

/// Plays something, muted because nobody has touched the page, and tells how it goes.
class WebViewMediaTest : public WebViewTest {
protected:
    WebViewMediaTest()
    {
        for (auto* host : { &server, &elsewhere })
            host->serve("/sound.wav", { .body = silentSound(), .contentType = "audio/wav" });
    }

    static constexpr auto inDocument
        = "<audio id=player src=/sound.wav muted loop></audio>"
          "<script>const player = document.getElementById('player'); player.play()</script>";
    static constexpr auto inNoDocument = "<script>const player = new Audio('/sound.wav');"
                                         "player.muted = player.loop = true; player.play()</script>";
    static constexpr auto inHiddenTree
        = "<div id=host></div><script>"
          "const root = document.getElementById('host').attachShadow({ mode: 'closed' });"
          "root.innerHTML = '<audio src=/sound.wav muted loop></audio>';"
          "const player = root.firstChild; player.play()</script>";

    void openPlaying(const std::string& html)
    {
        server.servePage("/media", html);
        open("/media");
        ASSERT_TRUE(waitForValue("String(!player.paused)", "true"));
    }

    TestServer elsewhere;
};

TEST_F(WebViewMediaTest, SilenceComesToWhatPlaysInThePage)
{
    openPlaying(inDocument);

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(waitForValue("String(player.paused)", "true"));
}

TEST_F(WebViewMediaTest, SilenceComesToWhatIsInNoDocument)
{
    openPlaying(inNoDocument);

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(waitForValue("String(player.paused)", "true"));
}

TEST_F(WebViewMediaTest, SilenceComesToWhatAPageHidesFromItsOwnScripts)
{
    openPlaying(inHiddenTree);

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(waitForValue("String(player.paused)", "true"));
}

TEST_F(WebViewMediaTest, SilenceComesToAFrameOfAnotherSite)
{
    elsewhere.servePage("/frame",
        "<audio id=player src=/sound.wav muted loop></audio><script>const player = document.getElementById('player');"
        "player.onplay = () => fetch('/playing'); player.onpause = () => fetch('/paused'); player.play()</script>");
    server.servePage("/media", "<iframe allow=autoplay src='" + elsewhere.url("/frame") + "'></iframe>");
    open("/media");
    ASSERT_TRUE(waitUntil([&] { return elsewhere.requestCount("/playing") > 0; }));
    ASSERT_EQ(elsewhere.requestCount("/paused"), 0U);

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(waitUntil([&] { return elsewhere.requestCount("/paused") > 0; }));
}

TEST_F(WebViewMediaTest, SilencedMediaMayBePlayedAgainAndSilencedAgain)
{
    openPlaying(inDocument);
    for (int round = 0; round < 2; ++round) {
        webView->pauseAllMediaPlayback();
        ASSERT_TRUE(waitForValue("String(player.paused)", "true"));
        ASSERT_TRUE(waitForValue("player.play(); String(!player.paused)", "true"));
    }
}

TEST_F(WebViewMediaTest, FramesThatCameAndWentDoNotHinderSilence)
{
    openPlaying(std::string(inDocument)
        + "<script>let gone = 0; const visit = () => { const frame = document.createElement('iframe'); frame.src = '/';"
          "frame.onload = () => { frame.remove(); if (++gone < 300) visit() }; document.body.append(frame) };"
          "visit()</script>");
    ASSERT_TRUE(waitForValue("String(gone)", "300"));

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(waitForValue("String(player.paused)", "true"));
}

} // namespace
