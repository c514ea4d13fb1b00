#include "ui/WebViewTest.h"

namespace {

using perchly::test::TestServer;
using perchly::test::waitUntil;

/// A minute of silence in the simplest sound format there is.
std::string silentSound()
{
    const auto number = [](std::uint32_t value, int bytes) {
        std::string text;
        for (int i = 0; i < bytes; ++i)
            text += static_cast<char>(value >> (8 * i) & 0xFF);
        return text;
    };
    constexpr std::uint32_t rate = 8000;
    constexpr std::uint32_t length = 60 * rate;
    return "RIFF" + number(36 + length, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) + number(1, 2) + number(rate, 4)
        + number(rate, 4) + number(1, 2) + number(8, 2) + "data" + number(length, 4) + std::string(length, '\x80');
}

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
