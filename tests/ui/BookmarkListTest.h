#pragma once

#include "bookmarklist/BookmarkListViewController.h"
#include "bookmarks/Bookmark.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/SearchField.h"
#include "platform/appkit/TableView.h"
#include "platform/appkit/TextField.h"
#include "platform/appkit/Window.h"
#include "support/MainLoop.h"
#include "support/UserFolders.h"
#include "ui/AnsweredAlert.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Notes what the list asks its owner for.
class RecordingListDelegate : public perchly::BookmarkListViewControllerDelegate {
public:
    void showAddBookmarkDialog(const std::optional<perchly::Bookmark>& bookmark,
        const std::shared_ptr<perchly::BookmarkListViewController>& list) override
    {
        dialogs.push_back(bookmark);
        listOfDialog = list.get();
    }
    void showBookmarkInPopover(const perchly::Bookmark& bookmark) override { shown.push_back(bookmark); }
    void updateMenu() override { note("menu"); }
    void updateWindowLevel(const perchly::Bookmark& bookmark) override
    {
        levelled.push_back(bookmark);
        note("level");
    }

    std::vector<std::optional<perchly::Bookmark>> dialogs;
    const perchly::BookmarkListViewController* listOfDialog = nullptr;
    std::vector<perchly::Bookmark> shown;
    std::vector<perchly::Bookmark> levelled;
    std::function<void(std::string)> note;
};

/// Which of a row's buttons.
enum RowButton : std::size_t { Pin, MenuBar, Reload, AlwaysOnTop, Detach, SystemBrowser, Edit, Delete };

/// The list in a window of its own, of a user with three bookmarks whose flags are all off, and an owner.
class BookmarkListTest : public testing::Test {
protected:
    static constexpr std::size_t titleColumn = 0;
    static constexpr std::size_t urlColumn = 1;
    static constexpr std::size_t actionsColumn = 2;

    BookmarkListTest()
    {
        while (!store().bookmarks().empty())
            store().removeBookmark(std::string(store().bookmarks().front().id));
        for (const auto& bookmark : { alpha, beta, gamma })
            store().addBookmark(bookmark);
        delegate->note = [this](std::string event) { note(std::move(event)); };
        list->setDelegate(delegate);
        window->setContentViewController(list);
        window->makeKeyAndOrderFront();
        EXPECT_TRUE(perchly::test::waitUntil(
            [&] { return window->isKeyWindow() && list->searchField()->frame().size.width > 0; }));
    }

    [[nodiscard]] static perchly::BookmarkManager& store() { return perchly::BookmarkManager::shared(); }
    static void announce() { perchly::notifications::postBookmarksDidChange(); }

    [[nodiscard]] static perchly::Bookmark bookmarkNamed(std::string_view title, std::string_view url)
    {
        return { .title = std::string(title), .url = std::string(url), .isAlwaysOnTop = false };
    }

    /// As the store has it; there must be one.
    [[nodiscard]] static perchly::Bookmark storedLike(const perchly::Bookmark& bookmark)
    {
        return *store().bookmark(bookmark.id);
    }

    static void add(const std::vector<perchly::Bookmark>& bookmarks)
    {
        for (const auto& bookmark : bookmarks)
            store().addBookmark(bookmark);
        announce();
    }

    static void removeAll()
    {
        while (!store().bookmarks().empty())
            store().removeBookmark(std::string(store().bookmarks().front().id));
        announce();
    }

    [[nodiscard]] appkit::TableView& table() const { return *list->tableView(); }

    /// What the row shows in the column of texts; there must be such a row.
    [[nodiscard]] std::string textAt(std::size_t column, std::size_t row) const
    {
        const auto cell
            = std::dynamic_pointer_cast<appkit::TableCellView>(table().viewAt(column, row, /*makeIfNecessary=*/true));
        return cell ? cell->textField()->stringValue() : "no cell";
    }

    [[nodiscard]] std::vector<std::string> shownTitles() const
    {
        std::vector<std::string> titles;
        for (std::size_t row = 0; row < table().numberOfRows(); ++row)
            titles.push_back(textAt(titleColumn, row));
        return titles;
    }

    [[nodiscard]] static std::vector<std::shared_ptr<appkit::Button>> buttonsIn(const appkit::View& strip)
    {
        std::vector<std::shared_ptr<appkit::Button>> buttons;
        for (const auto& view : strip.subviews()) {
            if (auto button = std::dynamic_pointer_cast<appkit::Button>(view))
                buttons.push_back(std::move(button));
        }
        return buttons;
    }

    [[nodiscard]] std::vector<std::shared_ptr<appkit::Button>> buttonsAt(std::size_t row) const
    {
        const auto strip = table().viewAt(actionsColumn, row, /*makeIfNecessary=*/true);
        return strip ? buttonsIn(*strip) : std::vector<std::shared_ptr<appkit::Button>> {};
    }

    [[nodiscard]] std::shared_ptr<appkit::Button> buttonAt(std::size_t row, RowButton which) const
    {
        return buttonsAt(row).at(which);
    }

    void click(std::size_t row, RowButton which) const { buttonAt(row, which)->performClick(); }

    /// Types the text into the empty or filled search field.
    void search(std::string_view text) const
    {
        list->searchField()->setStringValue(text);
        list->searchField()->action().send(*list->searchField());
    }

    /// From then on what happens is noted, with whether it was after a reload: that one leaves nothing selected.
    void watch()
    {
        table().selectRow(0);
        events.clear();
        storeAtEvents.clear();
    }

    void note(std::string event)
    {
        if (!table().selectedRow())
            event += " after the reload";
        events.push_back(std::move(event));
        storeAtEvents.push_back(store().bookmarks());
    }

    [[nodiscard]] bool wasReloaded() const { return !table().selectedRow(); }

    /// What a click on that button opens is shown to the user, who then answers.
    void clickAndAnswer(
        std::size_t row, RowButton which, std::size_t answer,
        const std::function<void(appkit::Alert&)>& look = [](appkit::Alert&) {}) const
    {
        openAndAnswer([&] { click(row, which); }, answer, look);
    }

    [[nodiscard]] appkit::Alert* sheet() const { return appkit::Alert::sheetOf(*window); }

    perchly::test::UserFolders folders;
    std::vector<std::string> events;
    std::vector<std::vector<perchly::Bookmark>> storeAtEvents;
    perchly::Bookmark alpha = bookmarkNamed("Alpha", "https://one.example/");
    perchly::Bookmark beta = bookmarkNamed("Beta", "https://two.example/path");
    perchly::Bookmark gamma = bookmarkNamed("Gamma", "three.example");
    std::shared_ptr<RecordingListDelegate> delegate = std::make_shared<RecordingListDelegate>();
    std::shared_ptr<perchly::BookmarkListViewController> list = std::make_shared<perchly::BookmarkListViewController>();
    std::shared_ptr<appkit::Window> window = appkit::Window::create({ {}, { 950, 500 } },
        appkit::WindowStyleMask::Titled | appkit::WindowStyleMask::Closable | appkit::WindowStyleMask::Resizable);
    // Before the list's own, which it makes with its view.
    foundation::ObservationToken observation = foundation::NotificationCenter::defaultCenter().addObserver(
        perchly::notifications::bookmarksDidChange, [this] { note("announced"); });
};
