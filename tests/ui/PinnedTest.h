#pragma once

#include "bookmarks/Bookmark.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "bookmarks/Preferences.h"
#include "pinned/PinnedBookmarkManager.h"
#include "pinned/PinnedBookmarkManagerDelegate.h"
#include "platform/appkit/Menu.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/appkit/StatusItem.h"
#include "platform/foundation/UserDefaults.h"
#include "support/MainLoop.h"
#include "support/TestServer.h"
#include "support/UserFolders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Notes what it is asked to open.
class RecordingDelegate : public perchly::PinnedBookmarkManagerDelegate {
public:
    void openPinnedBookmark(const perchly::Bookmark& bookmark, appkit::StatusBarButton& anchorButton) override
    {
        opened.push_back(bookmark);
        anchor = &anchorButton;
    }
    void openDetachedWindow(const perchly::Bookmark& bookmark) override { detached.push_back(bookmark); }
    void updateWindowLevel(const perchly::Bookmark& bookmark) override
    {
        levelled.push_back(bookmark);
        if (whenLevelled)
            whenLevelled();
    }

    std::vector<perchly::Bookmark> opened;
    std::vector<perchly::Bookmark> detached;
    std::vector<perchly::Bookmark> levelled;
    const appkit::StatusBarButton* anchor = nullptr;
    std::function<void()> whenLevelled;
};

/// The status items of a user without bookmarks, and a server for all that they download.
class PinnedTest : public testing::Test {
protected:
    PinnedTest()
    {
        foundation::UserDefaults::standard().setString(server.url(""), perchly::preferences::faviconServiceURL);
        while (!store().bookmarks().empty())
            store().removeBookmark(std::string(store().bookmarks().front().id));
        manager = perchly::PinnedBookmarkManager::create();
        manager->setDelegate(delegate);
    }

    [[nodiscard]] static perchly::BookmarkManager& store() { return perchly::BookmarkManager::shared(); }
    static void announce() { perchly::notifications::postBookmarksDidChange(); }

    /// Shown as a text, so nothing is downloaded for it.
    [[nodiscard]] static perchly::Bookmark bookmarkNamed(std::string_view title)
    {
        return {
            .title = std::string(title), .url = "https://site.example/", .isAddedToMenuBar = true, .sfSymbolName = "Ab"
        };
    }

    /// Stored, announced, and hence in the status bar if it is to be there.
    static perchly::Bookmark added(perchly::Bookmark bookmark)
    {
        store().addBookmark(bookmark);
        announce();
        return bookmark;
    }

    static void change(const perchly::Bookmark& bookmark)
    {
        store().updateBookmark(bookmark);
        announce();
    }

    static void remove(const perchly::Bookmark& bookmark)
    {
        store().removeBookmark(bookmark.id);
        announce();
    }

    /// As the store has it; there must be one.
    [[nodiscard]] static perchly::Bookmark storedLike(const perchly::Bookmark& bookmark)
    {
        return *store().bookmark(bookmark.id);
    }

    [[nodiscard]] std::shared_ptr<appkit::StatusItem> itemOf(const perchly::Bookmark& bookmark) const
    {
        const auto found = manager->statusItems().find(bookmark.id);
        return found == manager->statusItems().end() ? nullptr : found->second;
    }

    [[nodiscard]] std::shared_ptr<appkit::StatusBarButton> buttonOf(const perchly::Bookmark& bookmark) const
    {
        return manager->buttonFor(bookmark.id);
    }

    [[nodiscard]] std::vector<std::string> idsOfItems() const
    {
        std::vector<std::string> ids;
        for (const auto& [id, item] : manager->statusItems())
            ids.push_back(id);
        return ids;
    }

    /// Waits, handling events, until the server was asked for the path that many times.
    [[nodiscard]] bool isAskedFor(std::string_view path, std::size_t count = 1) const
    {
        return perchly::test::waitUntil([&] { return server.requestCount(path) >= count; });
    }

    /// A row of an item's menu that carries this.
    [[nodiscard]] static appkit::MenuItem rowCarrying(std::any object)
    {
        appkit::MenuItem row("Row", {});
        row.setRepresentedObject(std::move(object));
        return row;
    }

    perchly::test::UserFolders folders;
    perchly::test::TestServer server;
    std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>();
    std::shared_ptr<perchly::PinnedBookmarkManager> manager;
    int announcements = 0;
    foundation::ObservationToken observation = foundation::NotificationCenter::defaultCenter().addObserver(
        perchly::notifications::bookmarksDidChange, [this] { ++announcements; });
};
