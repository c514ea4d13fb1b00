#include "bookmarks/Bookmark.h"
#include "bookmarks/Preferences.h"
#include "platform/foundation/UserDefaults.h"
#include "statusbar/StatusBarController.h"
#include "support/MainLoop.h"
#include "support/TestServer.h"
#include "support/UserFolders.h"
#include "ui/SilentSound.h"

#include <gtest/gtest.h>

namespace {

using perchly::BrowserViewController;
using perchly::test::waitUntil;

/// The popover shows a page that plays something. Its user started that: what plays by itself the engine pauses by
/// itself, out of sight.
class SilenceTest : public testing::Test {
protected:
    SilenceTest()
    {
        server.serve("/sound.wav", { .body = perchly::test::silentSound(), .contentType = "audio/wav" });
        server.servePage("/music", "<audio id=player src=/sound.wav loop></audio>");
        server.servePage("/quiet", "quiet");
        foundation::UserDefaults::standard().setString(server.url("/music"), perchly::preferences::homePageURL);
        controller->showBrowserWindow();
        music = shownBrowser();
    }

    [[nodiscard]] appkit::Popover& popover() const { return controller->surfaces().popover(); }

    [[nodiscard]] std::shared_ptr<BrowserViewController> shownBrowser() const
    {
        return std::dynamic_pointer_cast<BrowserViewController>(popover().contentViewController());
    }

    [[nodiscard]] std::optional<std::string> valueInMusic(std::string_view script) const
    {
        auto answer = std::make_shared<std::optional<std::optional<std::string>>>();
        music->webView()->evaluateJavaScript(
            script, [answer](std::optional<std::string> value) { *answer = std::move(value); });
        EXPECT_TRUE(waitUntil([&] { return answer->has_value(); }));
        return answer->value_or(std::nullopt);
    }

    /// A script of ours counts as the user's own touch.
    [[nodiscard]] bool comesToPlay() const
    {
        return waitUntil([&] { return valueInMusic("player.play(); 'started'") == "started"; })
            && waitUntil([&] { return valueInMusic("String(player.currentTime > 0)") == "true"; });
    }

    [[nodiscard]] bool comesToSilence() const
    {
        return waitUntil([&] { return valueInMusic("String(player.paused)") == "true"; });
    }

    perchly::test::UserFolders folders;
    perchly::test::TestServer server;
    std::shared_ptr<perchly::StatusBarController> controller = perchly::StatusBarController::create();
    std::shared_ptr<BrowserViewController> music;
};

TEST_F(SilenceTest, ClosingThePopoverPausesItsPage)
{
    ASSERT_TRUE(comesToPlay());
    ASSERT_TRUE(popover().isShown());

    popover().performClose();

    EXPECT_TRUE(comesToSilence());
    EXPECT_FALSE(popover().isShown());
}

TEST_F(SilenceTest, AnotherBrowserInThePopoverPausesTheOneThatWasThere)
{
    ASSERT_TRUE(comesToPlay());

    controller->showBookmarkInPopover({ .url = server.url("/quiet") });
    ASSERT_NE(shownBrowser(), music);
    ASSERT_TRUE(popover().isShown());

    EXPECT_TRUE(comesToSilence());
}

} // namespace
