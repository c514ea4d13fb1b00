#pragma once

#include "bookmarks/Bookmark.h"
#include "bookmarks/BookmarkManager.h"
#include "browser/BrowserViewController.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/ProgressIndicator.h"
#include "support/MainLoop.h"
#include "support/TestServer.h"
#include "support/UserFolders.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

/// A browser of its own, a web server to browse, and a user who has never started the program.
class BrowserTest : public testing::Test {
protected:
    BrowserTest()
    {
        server.setPage("/", "<title>First</title><body>first</body>");
        server.setPage("/second", "<title>Second</title><body>second</body>");
    }

    /// Waits until the page of that path is there and the toolbar knows it.
    [[nodiscard]] bool showsPage(std::string_view path)
    {
        const auto address = server.address(path);
        return support::waitUntil([&] {
            return !browser->webView()->isLoading() && browser->toolbar().urlTextField->stringValue() == address;
        });
    }

    void open(std::string_view path)
    {
        browser->loadURLString(server.address(path), perchly::CurrentBookmark::Clear);
        ASSERT_TRUE(showsPage(path));
    }

    [[nodiscard]] perchly::Bookmark bookmarkFor(std::string_view path) const
    {
        return { .title = "A bookmark", .url = server.address(path) };
    }

    [[nodiscard]] static perchly::BookmarkManager& store() { return perchly::BookmarkManager::shared(); }
    [[nodiscard]] const perchly::BrowserToolbar& toolbar() const { return browser->toolbar(); }
    [[nodiscard]] std::string addressInField() const { return toolbar().urlTextField->stringValue(); }
    [[nodiscard]] std::string pageAddress() const
    {
        const auto url = browser->webView()->url();
        return url ? url->absoluteString() : "";
    }

    /// Types the text into the address field and presses Return.
    void enter(std::string_view text)
    {
        toolbar().urlTextField->setStringValue(text);
        toolbar().urlTextField->doCommandBySelector("insertNewline:");
    }

    support::UserFolders folders;
    support::TestServer server;
    std::shared_ptr<perchly::BrowserViewController> browser = [] {
        auto made = std::make_shared<perchly::BrowserViewController>();
        made->loadViewIfNeeded();
        return made;
    }();
};
