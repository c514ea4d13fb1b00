#pragma once

#include "bookmarklist/BookmarkListViewController.h"
#include "bookmarks/Bookmark.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Menu.h"
#include "platform/appkit/PopUpButton.h"
#include "platform/appkit/StackView.h"
#include "platform/appkit/StatusItem.h"
#include "platform/appkit/TextField.h"
#include "statusbar/StatusBarController.h"
#include "support/MainLoop.h"
#include "support/UserFolders.h"
#include "ui/AnsweredAlert.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The dialog for new bookmarks and for those that are there, of a user with one pinned bookmark.
class BookmarkDialogTest : public testing::Test {
protected:
    static constexpr std::size_t save = 0;
    static constexpr std::size_t cancel = 1;

    static constexpr std::size_t systemDefaultAgent = 0;
    static constexpr std::size_t chromeAgent = 2;
    static constexpr std::size_t customAgent = 6;

    /// The dialog, which runs only while it is looked at.
    struct Dialog {
        appkit::Alert& alert;
        const std::vector<std::shared_ptr<appkit::View>>& views;
        appkit::TextField& title;
        appkit::TextField& address;
        appkit::TextField& symbol;
        appkit::TextField& iconAddress;
        appkit::PopUpButton& size;
        appkit::PopUpButton& agent;
        appkit::TextField& customAgentField;
        appkit::Button& openInSystemBrowser;

        /// As the user does.
        void chooseAgent(std::size_t row) const
        {
            agent.selectItemAt(row);
            agent.action().send(agent);
        }
    };

    using Work = std::function<void(const Dialog&)>;

    BookmarkDialogTest()
    {
        while (!store().bookmarks().empty())
            store().removeBookmark(std::string(store().bookmarks().front().id));
        store().addBookmark(bookmark);
        perchly::notifications::postBookmarksDidChange();
        announcements = 0;
    }

    [[nodiscard]] static perchly::BookmarkManager& store() { return perchly::BookmarkManager::shared(); }

    /// As the store has it; there must be one.
    [[nodiscard]] perchly::Bookmark stored() const { return *store().bookmark(bookmark.id); }

    /// Opens the dialog, lets the user work with it and answers it.
    void answer(const std::optional<perchly::Bookmark>& edited, std::size_t button, const Work& work,
        const std::shared_ptr<perchly::BookmarkListViewController>& list = nullptr)
    {
        openAndAnswer([&] { controller->showAddBookmarkDialog(edited, list); }, button,
            [&](appkit::Alert& alert) { EXPECT_TRUE(lookAt(alert, work)); });
    }

    static bool lookAt(appkit::Alert& alert, const Work& work)
    {
        const auto& views = alert.accessoryView->subviews();
        if (views.size() != 14)
            return false;
        const auto field
            = [&](std::size_t index) { return std::dynamic_pointer_cast<appkit::TextField>(views[index]); };
        const auto popUp
            = [&](std::size_t index) { return std::dynamic_pointer_cast<appkit::PopUpButton>(views[index]); };
        const auto checkbox = std::dynamic_pointer_cast<appkit::Button>(views[13]);
        if (!field(1) || !field(3) || !field(5) || !field(7) || !popUp(9) || !popUp(11) || !field(12) || !checkbox)
            return false;
        work(
            { alert, views, *field(1), *field(3), *field(5), *field(7), *popUp(9), *popUp(11), *field(12), *checkbox });
        return true;
    }

    void add(std::size_t button, const Work& work) { answer(std::nullopt, button, work); }
    void edit(
        std::size_t button, const Work& work = [](const Dialog&) {})
    {
        answer(bookmark, button, work);
    }

    /// Enters a new bookmark of that address, and the rest as it comes; gives what was stored.
    [[nodiscard]] std::optional<perchly::Bookmark> addedWith(const Work& work)
    {
        const auto before = store().bookmarks().size();
        add(save, [&](const Dialog& dialog) {
            dialog.address.setStringValue("new.example");
            work(dialog);
        });
        if (store().bookmarks().size() != before + 1)
            return std::nullopt;
        return store().bookmarks().back();
    }

    [[nodiscard]] std::vector<std::string> menuRows() const
    {
        std::vector<std::string> titles;
        for (const auto& item : controller->statusItem()->menu()->items())
            titles.push_back(item->title());
        return titles;
    }

    [[nodiscard]] static std::filesystem::path storeFile()
    {
        return std::filesystem::path(std::getenv("XDG_DATA_HOME")) / "Perchly" / "bookmarks.json";
    }

    perchly::test::UserFolders folders;
    std::function<void()> whenAnnounced = [] {};
    int announcements = 0;
    // Before the controller's own.
    foundation::ObservationToken observation = foundation::NotificationCenter::defaultCenter().addObserver(
        perchly::notifications::bookmarksDidChange, [this] {
            ++announcements;
            whenAnnounced();
        });
    perchly::Bookmark bookmark { .title = "Mail", .url = "mail.example", .isPinned = true };
    std::shared_ptr<perchly::StatusBarController> controller = perchly::StatusBarController::create();
};
