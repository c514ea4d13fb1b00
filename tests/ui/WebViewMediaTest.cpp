#include "ui/MediaTest.h"

namespace {

using perchly::test::waitUntil;

class WebViewMediaTest : public MediaTest {
protected:
    static constexpr auto inNoDocument = "<script>const player = new Audio('/sound.wav');"
                                         "player.muted = player.loop = true; player.play()</script>";
    static constexpr auto inHiddenTree
        = "<div id=host></div><script>"
          "const root = document.getElementById('host').attachShadow({ mode: 'closed' });"
          "root.innerHTML = '<audio src=/sound.wav muted loop></audio>';"
          "const player = root.firstChild; player.play()</script>";
};

TEST_F(WebViewMediaTest, SilenceComesToWhatPlaysInThePage)
{
    openPlaying(inDocument);

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(comesToSilence());
}

TEST_F(WebViewMediaTest, SilenceComesToWhatIsInNoDocument)
{
    openPlaying(inNoDocument);

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(comesToSilence());
}

TEST_F(WebViewMediaTest, SilenceComesToWhatAPageHidesFromItsOwnScripts)
{
    openPlaying(inHiddenTree);

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(comesToSilence());
}

TEST_F(WebViewMediaTest, SilenceComesToAFrameOfAnotherSite)
{
    elsewhere.servePage("/frame", telling);
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
        ASSERT_TRUE(comesToSilence());
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

    EXPECT_TRUE(comesToSilence());
}

} // namespace
