#pragma once

#include "bookmarks/Bookmark.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "bookmarks/Preferences.h"
#include "platform/appkit/StatusBar.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/appkit/StatusItem.h"
#include "platform/appkit/Window.h"
#include "platform/foundation/Timer.h"
#include "platform/foundation/UserDefaults.h"
#include "statusbar/StatusBarController.h"
#include "support/MainLoop.h"
#include "support/TestServer.h"
#include "support/UserFolders.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// All that shows browsers, a bookmark's own status item, a web server to browse, and a user who has never started
/// the program. Its home page is "/".
class SurfacesTest : public testing::Test {
protected:
    using Browser = std::shared_ptr<perchly::BrowserViewController>;

    SurfacesTest()
    {
        server.servePage("/", "<title>Home</title><body>home</body>");
        server.servePage("/first", "<title>First</title><body>first</body>");
        server.servePage("/second", "<title>Second</title><body>second</body>");
        foundation::UserDefaults::standard().setString(server.url("/"), perchly::preferences::homePageURL);
        first = stored({ .title = "First", .url = server.url("/first"), .isAlwaysOnTop = false });
        second = stored({ .title = "Second", .url = server.url("/second"), .isAlwaysOnTop = false });
    }

    [[nodiscard]] static perchly::BookmarkManager& store() { return perchly::BookmarkManager::shared(); }
    [[nodiscard]] static perchly::Bookmark stored(perchly::Bookmark bookmark)
    {
        store().addBookmark(bookmark);
        return bookmark;
    }

    [[nodiscard]] appkit::Popover& popover() const { return controller->surfaces().popover(); }
    [[nodiscard]] Browser browserOf(const perchly::Bookmark& bookmark) const
    {
        return controller->surfaces().browserViewControllerForBookmark(&bookmark);
    }
    [[nodiscard]] Browser browserInPopover() const
    {
        return std::dynamic_pointer_cast<perchly::BrowserViewController>(popover().contentViewController());
    }
    [[nodiscard]] std::shared_ptr<appkit::Window> windowOf(const perchly::Bookmark& bookmark) const
    {
        return controller->surfaces().detachedWindows().windowFor(bookmark);
    }

    /// On the bookmark's own status item.
    void click(const perchly::Bookmark& bookmark) const { controller->openPinnedBookmark(bookmark, *item->button()); }

    [[nodiscard]] std::string addressIn(const Browser& browser) const
    {
        const auto url = browser->webView()->url();
        return url ? url->absoluteString() : "";
    }

    /// Waits for the page of that path.
    [[nodiscard]] bool showsPage(const Browser& browser, std::string_view path) const
    {
        return perchly::test::waitUntil(
            [&] { return !browser->webView()->isLoading() && addressIn(browser) == server.url(path); });
    }

    /// Makes the bookmark's browser a blank page, which was its own before.
    void makeBlank(const perchly::Bookmark& bookmark) const
    {
        const auto browser = browserOf(bookmark);
        browser->loadURLString("", perchly::CurrentBookmark::Keep);
        ASSERT_TRUE(perchly::test::waitUntil(
            [&] { return !browser->webView()->isLoading() && addressIn(browser) == "about:blank"; }));
    }

    /// With the keyboard, and with the bookmark's page inside.
    void openWindow(const perchly::Bookmark& bookmark, std::string_view path) const
    {
        controller->openDetachedWindow(bookmark);
        ASSERT_NE(windowOf(bookmark), nullptr);
        ASSERT_TRUE(showsPage(browserOf(bookmark), path));
        ASSERT_TRUE(isKey(*windowOf(bookmark)));
    }

    void openPopover(const perchly::Bookmark& bookmark, std::string_view path) const
    {
        controller->showBookmarkInPopover(bookmark);
        ASSERT_TRUE(popover().isShown());
        ASSERT_TRUE(showsPage(browserOf(bookmark), path));
    }

    /// Waits until the window has the keyboard.
    [[nodiscard]] static bool isKey(const appkit::Window& window)
    {
        return perchly::test::waitUntil([&] { return window.isKeyWindow(); });
    }

    /// Waits until the browser is laid out at that size, as its page tells.
    [[nodiscard]] static bool isLaidOut(const Browser& browser, foundation::Size size)
    {
        const foundation::Size page { size.width - 4, size.height - 42 };
        return perchly::test::waitUntil([&] { return browser->webView()->frame().size == page; });
    }

    /// What the script comes to in the browser's page; none where it fails.
    [[nodiscard]] static std::optional<std::string> valueIn(const Browser& browser, std::string_view script)
    {
        auto answer = std::make_shared<std::optional<std::optional<std::string>>>();
        browser->webView()->evaluateJavaScript(
            script, [answer](std::optional<std::string> value) { *answer = std::move(value); });
        EXPECT_TRUE(perchly::test::waitUntil([&] { return answer->has_value(); })) << script;
        return answer->value_or(std::nullopt);
    }

    [[nodiscard]] static bool comesTo(const Browser& browser, std::string_view script, std::string_view value)
    {
        return perchly::test::waitUntil([&] { return valueIn(browser, script) == value; });
    }

    /// Waits until all is over that was set to happen within that time.
    static void letPass(std::chrono::milliseconds time)
    {
        auto passed = false;
        const auto timer = foundation::Timer::scheduledTimer(time, [&] { passed = true; });
        ASSERT_TRUE(perchly::test::waitUntil([&] { return passed; }));
        perchly::test::handlePendingEvents();
    }

    perchly::test::UserFolders folders;
    perchly::test::TestServer server;
    std::shared_ptr<perchly::StatusBarController> controller = perchly::StatusBarController::create();
    std::shared_ptr<appkit::StatusItem> item = appkit::StatusBar::systemStatusBar().statusItem();
    perchly::Bookmark first;
    perchly::Bookmark second;
};
