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

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

/// A browser of its own, a web server to browse, and a user who has never started the program.
class BrowserTest : public testing::Test {
protected:
    BrowserTest()
    {
        server.servePage("/", "<title>First</title><body>first</body>");
        server.servePage("/second", "<title>Second</title><body>second</body>");
    }

    /// Waits until the page of that path is there and the toolbar knows it.
    [[nodiscard]] bool showsPage(std::string_view path)
    {
        const auto address = server.url(path);
        return perchly::test::waitUntil([&] {
            return !browser->webView()->isLoading() && browser->toolbar().urlTextField->stringValue() == address;
        });
    }

    void open(std::string_view path)
    {
        browser->loadURLString(server.url(path), perchly::CurrentBookmark::Clear);
        ASSERT_TRUE(showsPage(path));
    }

    /// The title arrives a little after the page.
    [[nodiscard]] bool hasTitle(std::string_view title) const
    {
        return perchly::test::waitUntil([&] { return browser->webView()->title() == title; });
    }

    [[nodiscard]] perchly::Bookmark bookmarkFor(std::string_view path) const
    {
        return { .title = "A bookmark", .url = server.url(path) };
    }

    [[nodiscard]] static perchly::BookmarkManager& store() { return perchly::BookmarkManager::shared(); }
    [[nodiscard]] const perchly::BrowserToolbar& toolbar() const { return browser->toolbar(); }
    [[nodiscard]] std::string addressInField() const { return toolbar().urlTextField->stringValue(); }
    [[nodiscard]] std::string pageAddress() const
    {
        const auto url = browser->webView()->url();
        return url ? url->absoluteString() : "";
    }

    /// The latest request for that path; there must be one.
    [[nodiscard]] perchly::test::Request lastRequest(std::string_view path) const
    {
        const auto requests = server.requests();
        const auto found = std::ranges::find(requests.rbegin(), requests.rend(), path, &perchly::test::Request::path);
        return found == requests.rend() ? perchly::test::Request {} : *found;
    }

    /// Types the text into the address field and presses Return.
    void enter(std::string_view text)
    {
        toolbar().urlTextField->setStringValue(text);
        toolbar().urlTextField->doCommandBySelector("insertNewline:");
    }

    perchly::test::UserFolders folders;
    perchly::test::TestServer server;
    std::shared_ptr<perchly::BrowserViewController> browser = [] {
        auto made = std::make_shared<perchly::BrowserViewController>();
        made->loadViewIfNeeded();
        return made;
    }();
};
