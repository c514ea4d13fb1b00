#pragma once

#include "platform/appkit/Popover.h"
#include "platform/appkit/StatusBar.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/appkit/StatusItem.h"
#include "platform/appkit/ViewController.h"
#include "ui/SilentSound.h"
#include "ui/WebViewTest.h"

#include <string>

/// Plays something, muted because nobody has touched the page, and tells how it goes: in the page as `player`, from
/// a frame by what that asks its server for.
class MediaTest : public WebViewTest {
protected:
    MediaTest()
    {
        for (auto* host : { &server, &elsewhere })
            host->serve("/sound.wav", { .body = perchly::test::silentSound(), .contentType = "audio/wav" });
    }

    static constexpr auto inDocument
        = "<audio id=player src=/sound.wav muted loop></audio>"
          "<script>const player = document.getElementById('player'); player.play()</script>";
    /// For a frame.
    static constexpr auto telling
        = "<audio id=player src=/sound.wav muted loop></audio><script>const player = document.getElementById('player');"
          "player.onplay = () => fetch('/playing'); player.onpause = () => fetch('/paused'); player.play()</script>";

    /// Nothing begins to play by itself out of sight.
    void show()
    {
        const auto button = item_->button();
        popover_.setContentSize({ 300, 200 });
        popover_.setContentViewController(content_);
        popover_.show(button->bounds(), *button, appkit::RectEdge::MinY);
        ASSERT_TRUE(popover_.isShown());
    }

    void hide() { popover_.performClose(); }

    void openPlaying(const std::string& html)
    {
        server.servePage("/media", html);
        open("/media");
        ASSERT_TRUE(waitForValue("String(!player.paused)", "true"));
    }

    [[nodiscard]] bool comesToSilence() { return waitForValue("String(player.paused)", "true"); }

    perchly::test::TestServer elsewhere;

private:
    struct Content : appkit::ViewController {
        explicit Content(std::shared_ptr<appkit::View> shown) { setView(std::move(shown)); }
        void loadView() override { }
    };

    std::shared_ptr<appkit::StatusItem> item_ = appkit::StatusBar::systemStatusBar().statusItem();
    std::shared_ptr<Content> content_ = std::make_shared<Content>(webView);
    appkit::Popover popover_;
};
