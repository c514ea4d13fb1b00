#include "platform/linux/appkit/ViewNative.h"
#include "ui/MediaTest.h"

namespace {

using perchly::test::Hold;
using perchly::test::waitUntil;

/// What the engine says of the sound of a page, whoever makes it.
class SilenceMuteTest : public MediaTest {
protected:
    static constexpr auto player = "<audio id=player src=/sound.wav loop></audio>"
                                   "<script>const player = document.getElementById('player')</script>";

    [[nodiscard]] bool is(const char* property) const
    {
        gboolean value = FALSE;
        g_object_get(appkit::widgetOf(*webView), property, &value, nullptr);
        return value;
    }
    [[nodiscard]] bool isMute() const { return is("is-muted"); }
    [[nodiscard]] bool makesSound() const
    {
        return waitUntil([&] { return is("is-playing-audio"); });
    }

    /// A script of ours counts as the user's own touch.
    void openAndPlay(const std::string& html, const std::string& script)
    {
        server.servePage("/media", html);
        open("/media");
        (void)valueOf(script + "; 'done'");
        ASSERT_TRUE(makesSound());
        ASSERT_FALSE(isMute());
    }

    void silence()
    {
        hide();
        webView->stopLoading();
        webView->pauseAllMediaPlayback();
    }
};

TEST_F(SilenceMuteTest, SoundThatIsNoElementIsMuteUntilThePageIsShown)
{
    show();
    openAndPlay("",
        "context = new AudioContext(); oscillator = context.createOscillator();"
        "oscillator.connect(context.destination); oscillator.start()");

    silence();

    EXPECT_TRUE(isMute());
    show();
    EXPECT_FALSE(isMute());
    EXPECT_TRUE(makesSound());
}

TEST_F(SilenceMuteTest, APageThatPlaysOnWhenItIsPausedIsMuteUntilItIsShown)
{
    show();
    openAndPlay(player, "player.play(); pauses = 0; player.onpause = () => { ++pauses; player.play() }");

    silence();

    ASSERT_TRUE(waitForValue("String(pauses > 0 && !player.paused)", "true"));
    ASSERT_TRUE(makesSound());
    EXPECT_TRUE(isMute());
    show();
    EXPECT_FALSE(isMute());
    EXPECT_EQ(valueOf("String(pauses)"), "1");
}

TEST_F(SilenceMuteTest, APageThatPlaysWhileItIsHiddenIsMuteUntilItIsShown)
{
    show();
    openAndPlay(player, "player.play()");
    silence();
    ASSERT_TRUE(comesToSilence());
    ASSERT_TRUE(waitUntil([&] { return !is("is-playing-audio"); }));

    (void)valueOf("setTimeout(() => player.play(), 100)");

    ASSERT_TRUE(makesSound());
    EXPECT_TRUE(isMute());
    show();
    EXPECT_FALSE(isMute());
}

TEST_F(SilenceMuteTest, APageThatArrivesAfterTheOrderIsMuteUntilItIsShown)
{
    show();
    server.serve("/media", { .body = player, .hold = Hold::BeforeHead });
    load(server.url("/media"));
    ASSERT_TRUE(waitUntil([&] { return server.requestCount("/media") > 0; }));
    hide();
    webView->pauseAllMediaPlayback();

    server.release("/media");
    ASSERT_TRUE(waitUntil([&] { return !delegate->finished.empty(); }));
    (void)valueOf("player.play(); 'done'");

    ASSERT_TRUE(makesSound());
    EXPECT_TRUE(isMute());
    show();
    EXPECT_FALSE(isMute());
}

TEST_F(SilenceMuteTest, ASiteThatIsEnteredOutOfSightIsMute)
{
    show();
    openAndPlay(player, "player.play()");
    silence();
    elsewhere.servePage("/media", player);

    load(elsewhere.url("/media"));
    ASSERT_TRUE(waitUntil([&] { return address() == elsewhere.url("/media") && !webView->isLoading(); }));
    (void)valueOf("player.play(); 'done'");

    ASSERT_TRUE(makesSound());
    EXPECT_TRUE(isMute());
}

TEST_F(SilenceMuteTest, APageThatStaysInSightIsPausedAndMayPlayAgain)
{
    show();
    openAndPlay(player, "player.play()");

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(isMute());
    EXPECT_TRUE(comesToSilence());
    EXPECT_TRUE(waitUntil([&] { return !isMute(); }));
}

TEST_F(SilenceMuteTest, APageThatIsSilentInSightIsMuteOnceItIsHidden)
{
    show();
    server.servePage("/media", player);
    open("/media");

    webView->pauseAllMediaPlayback();
    EXPECT_FALSE(isMute());
    hide();

    EXPECT_TRUE(waitUntil([&] { return isMute(); }));
}

} // namespace
