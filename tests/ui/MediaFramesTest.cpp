#include "ui/MediaTest.h"

namespace {

using perchly::test::TestServer;
using perchly::test::waitUntil;

class MediaFramesTest : public MediaTest {
protected:
    /// Opens the page, in a frame of which something plays that tells that server.
    void openWithFrame(const std::string& html, const TestServer& told)
    {
        server.servePage("/media", html);
        open("/media");
        ASSERT_TRUE(waitUntil([&] { return told.requestCount("/playing") > 0; }));
        ASSERT_EQ(told.requestCount("/paused"), 0U);
    }

    [[nodiscard]] static bool hearsSilence(const TestServer& told)
    {
        return waitUntil([&] { return told.requestCount("/paused") > 0; });
    }
};

TEST_F(MediaFramesTest, SilenceComesToAFrameInAFrameOfAnotherSite)
{
    server.servePage("/inner", telling);
    elsewhere.servePage("/outer", "<iframe allow=autoplay src='" + server.url("/inner") + "'></iframe>");

    openWithFrame("<iframe allow=autoplay src='" + elsewhere.url("/outer") + "'></iframe>", server);
    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(hearsSilence(server));
}

TEST_F(MediaFramesTest, SilenceComesToAFrameThatIsWrittenInThePage)
{
    openWithFrame("<iframe allow=autoplay srcdoc=\"" + std::string(telling) + "\"></iframe>", server);

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(hearsSilence(server));
}

TEST_F(MediaFramesTest, SilenceComesToAFrameInASandbox)
{
    elsewhere.servePage("/boxed", telling);
    openWithFrame(
        "<iframe allow=autoplay sandbox=allow-scripts src='" + elsewhere.url("/boxed") + "'></iframe>", elsewhere);

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(hearsSilence(elsewhere));
}

TEST_F(MediaFramesTest, SilenceComesToAFrameWithoutScripts)
{
    server.servePage("/boxed", "<audio src=/sound.wav muted loop></audio>");
    openPlaying("<iframe id=frame sandbox=allow-same-origin src=/boxed></iframe><script>let player = { paused: true };"
                "document.getElementById('frame').onload = (event) => { "
                "player = event.target.contentDocument.querySelector('audio'); player.play() }</script>");

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(comesToSilence());
}

TEST_F(MediaFramesTest, SilenceComesToTheEmptyDocumentThatAFrameBeginsWith)
{
    openPlaying("<iframe id=frame></iframe><script>const inner = frames[0].document;"
                "inner.body.innerHTML = '<audio src=/sound.wav muted loop></audio>';"
                "const player = inner.body.firstChild; player.play()</script>");

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(comesToSilence());
}

TEST_F(MediaFramesTest, ElementsNamedAsFunctionsDoNotHinderSilence)
{
    openPlaying("<html id=addEventListener><img name=querySelectorAll><p id=dispatchEvent></p>"
                "<form><input name=shadowRoot><input name=contentDocument></form>"
        + std::string(inDocument));

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(comesToSilence());
}

TEST_F(MediaFramesTest, SilenceComesToAPageOutOfThePageCache)
{
    show();
    openPlaying(inDocument);
    open("/second");
    webView->goBack();
    ASSERT_TRUE(waitUntil([&] { return address() == server.url("/media") && !webView->isLoading(); }));
    ASSERT_EQ(server.requestCount("/media"), 1U);
    ASSERT_EQ(valueOf("String(player.paused)"), "false");

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(comesToSilence());
}

TEST_F(MediaFramesTest, APageThatComesBackOutOfSightIsSilenced)
{
    show();
    openPlaying(inDocument);
    open("/second");
    hide();
    webView->pauseAllMediaPlayback();

    webView->goBack();

    ASSERT_TRUE(waitUntil([&] { return address() == server.url("/media") && !webView->isLoading(); }));
    EXPECT_EQ(server.requestCount("/media"), 1U);
    EXPECT_TRUE(comesToSilence());
}

} // namespace
