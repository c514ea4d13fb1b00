#include "bookmarklist/BookmarkListViewController.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "platform/appkit/Alert.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Menu.h"
#include "platform/appkit/SearchField.h"
#include "platform/appkit/StatusItem.h"
#include "platform/appkit/TableView.h"
#include "platform/appkit/WindowController.h"
#include "platform/foundation/DispatchQueue.h"
#include "settings/SettingsViewController.h"
#include "statusbar/StatusBarController.h"
#include "support/MainLoop.h"
#include "support/UserFolders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace {

using appkit::Alert;
using appkit::Button;
using appkit::TextField;
using appkit::Window;
using perchly::Bookmark;
using perchly::BookmarkListViewController;
using perchly::BookmarkManager;
using perchly::SettingsViewController;

/// The windows that the menu opens, of a user who has never started the program.
class ManagerWindowsTest : public testing::Test {
protected:
    [[nodiscard]] static BookmarkManager& store() { return BookmarkManager::shared(); }

    [[nodiscard]] appkit::MenuItem& row(std::string_view title) const
    {
        for (const auto& item : controller->statusItem()->menu()->items()) {
            if (item->title() == title)
                return *item;
        }
        throw std::runtime_error("No row " + std::string(title));
    }

    [[nodiscard]] bool hasRow(std::string_view title) const
    {
        const auto menu = controller->statusItem()->menu();
        return std::ranges::any_of(menu->items(), [&](const auto& item) { return item->title() == title; });
    }

    /// Chooses the row, and waits for its window to have the keyboard.
    void choose(std::string_view title, const std::shared_ptr<appkit::WindowController>& windowController) const
    {
        row(title).performAction();
        ASSERT_NE(windowController, nullptr);
        ASSERT_TRUE(perchly::test::waitUntil([&] { return windowController->window()->isKeyWindow(); }));
    }

    void openList() const { choose("Bookmarks Manager", controller->bookmarkListWindowController()); }
    void openSettings() const { choose("Settings...", controller->settingsWindowController()); }

    [[nodiscard]] const std::shared_ptr<Window>& listWindow() const
    {
        return controller->bookmarkListWindowController()->window();
    }
    [[nodiscard]] const std::shared_ptr<Window>& settingsWindow() const
    {
        return controller->settingsWindowController()->window();
    }
    [[nodiscard]] std::shared_ptr<BookmarkListViewController> list() const
    {
        return std::dynamic_pointer_cast<BookmarkListViewController>(listWindow()->contentViewController());
    }

    /// Of the list.
    [[nodiscard]] Button& button(std::size_t bookmarkRow, std::size_t index) const
    {
        const auto strip = list()->tableView()->viewAt(2, bookmarkRow, /*makeIfNecessary=*/true);
        return *std::dynamic_pointer_cast<Button>(strip->subviews().at(index));
    }

    static void answerNext(
        std::size_t answer, const std::function<void(Alert&)>& work = [](Alert&) {})
    {
        foundation::dispatchMainAsync([=] {
            ASSERT_NE(Alert::running(), nullptr);
            work(*Alert::running());
            Alert::running()->performClick(answer);
        });
    }

    perchly::test::UserFolders folders;
    std::shared_ptr<perchly::StatusBarController> controller = perchly::StatusBarController::create();
};

TEST_F(ManagerWindowsTest, AreMadeWhenTheyAreFirstAskedFor)
{
    EXPECT_EQ(controller->bookmarkListWindowController(), nullptr);
    EXPECT_EQ(controller->settingsWindowController(), nullptr);
    for (const auto* title : { "Bookmarks Manager", "Settings...", "About" })
        EXPECT_TRUE(row(title).isEnabled()) << title;
}

TEST_F(ManagerWindowsTest, TheManagerShowsTheListOfBookmarks)
{
    openList();

    EXPECT_EQ(listWindow()->title(), "Bookmarks Manager");
    EXPECT_EQ(listWindow()->level(), appkit::WindowLevel::Normal);
    ASSERT_NE(list(), nullptr);
    EXPECT_EQ(list()->view()->frame().size, (foundation::Size { 950, 500 }));
    EXPECT_EQ(list()->tableView()->numberOfRows(), store().bookmarks().size());
    EXPECT_EQ(controller->settingsWindowController(), nullptr);
}

TEST_F(ManagerWindowsTest, TheManagerIsOneWindowThatKeepsItsState)
{
    openList();
    const auto window = listWindow();
    const auto content = list();
    content->searchField()->setStringValue("you");
    content->searchField()->action().send(*content->searchField());
    ASSERT_EQ(content->tableView()->numberOfRows(), 1U);

    openList();
    EXPECT_EQ(listWindow(), window);
    window->close();
    EXPECT_FALSE(window->isVisible());
    openList();

    EXPECT_EQ(listWindow(), window);
    EXPECT_EQ(list(), content);
    EXPECT_EQ(content->searchField()->stringValue(), "you");
    EXPECT_EQ(content->tableView()->numberOfRows(), 1U);
}

TEST_F(ManagerWindowsTest, TheManagerKeepsTheSizeThatItWasGiven)
{
    constexpr foundation::Size wanted { 1000, 560 };
    const auto hasThatSize = [this, wanted] { return list()->view()->frame().size == wanted; };
    openList();
    // It may still be opening, at its own size.
    ASSERT_TRUE(perchly::test::waitUntil([&] {
        listWindow()->setContentSize(wanted);
        return hasThatSize();
    }));

    listWindow()->close();
    openList();

    EXPECT_TRUE(perchly::test::waitUntil(hasThatSize));
}

TEST_F(ManagerWindowsTest, TheSettingsAreOneFloatingWindow)
{
    openSettings();
    const auto window = settingsWindow();
    EXPECT_EQ(window->title(), "Settings");
    EXPECT_EQ(window->level(), appkit::WindowLevel::Floating);
    const auto content = std::dynamic_pointer_cast<SettingsViewController>(window->contentViewController());
    ASSERT_NE(content, nullptr);

    openSettings();
    EXPECT_EQ(settingsWindow(), window);
    content->homePageTextField()->setStringValue("typed");
    window->close();
    EXPECT_FALSE(window->isVisible());
    openSettings();

    EXPECT_EQ(settingsWindow(), window);
    EXPECT_EQ(window->contentViewController(), content);
    EXPECT_EQ(content->homePageTextField()->stringValue(), "typed");
    EXPECT_EQ(window->level(), appkit::WindowLevel::Floating);
}

TEST_F(ManagerWindowsTest, BothCanBeOpenAtOnce)
{
    openSettings();
    openList();
    openSettings();

    EXPECT_TRUE(listWindow()->isVisible());
    EXPECT_NE(listWindow(), settingsWindow());
}

TEST_F(ManagerWindowsTest, AskingToCloseTheAboutWindowDoesNothing)
{
    openList();

    controller->closeAboutWindow(row("About"));

    EXPECT_TRUE(listWindow()->isVisible());
}

TEST_F(ManagerWindowsTest, AClickInTheListReachesTheMenuAtOnce)
{
    openList();
    ASSERT_TRUE(hasRow("Youtube"));

    button(1, 0).performClick();

    EXPECT_FALSE(hasRow("Youtube"));
}

TEST_F(ManagerWindowsTest, ADeletionLeavesTheListAndTheMenuAtOnce)
{
    openList();
    ASSERT_TRUE(hasRow("Youtube"));
    answerNext(1);
    button(1, 7).performClick();
    EXPECT_TRUE(hasRow("Youtube"));
    EXPECT_EQ(list()->tableView()->numberOfRows(), 5U);

    answerNext(0);
    button(1, 7).performClick();

    EXPECT_FALSE(hasRow("Youtube"));
    EXPECT_EQ(list()->tableView()->numberOfRows(), 4U);
}

TEST_F(ManagerWindowsTest, TheListsButtonsOpenTheDialog)
{
    openList();
    answerNext(0, [](Alert& alert) {
        EXPECT_EQ(alert.messageText, "Add New Bookmark");
        std::dynamic_pointer_cast<TextField>(alert.accessoryView->subviews().at(3))->setStringValue("new.example");
    });
    list()->addButton()->performClick();
    EXPECT_EQ(list()->tableView()->numberOfRows(), 6U);

    answerNext(0, [](Alert& alert) {
        EXPECT_EQ(alert.messageText, "Edit Bookmark");
        const auto title = std::dynamic_pointer_cast<TextField>(alert.accessoryView->subviews().at(1));
        EXPECT_EQ(title->stringValue(), "Youtube");
        title->setStringValue("Videos");
    });
    button(1, 6).performClick();

    EXPECT_EQ(store().bookmarks().at(1).title, "Videos");
    EXPECT_TRUE(hasRow("Videos"));
    EXPECT_FALSE(hasRow("Youtube"));
}

TEST_F(ManagerWindowsTest, ADoubleClickInTheListShowsTheBrowser)
{
    const Bookmark bookmark { .title = "Nothing", .url = "about:blank" };
    store().addBookmark(bookmark);
    openList();
    auto& table = *list()->tableView();
    table.selectRow(5);

    table.doubleAction().send(table);

    EXPECT_TRUE(controller->surfaces().popover().isShown());
    EXPECT_EQ(controller->surfaces().popover().contentViewController(),
        controller->surfaces().browserViewControllerForBookmark(&bookmark));
}

TEST_F(ManagerWindowsTest, AResetInTheSettingsReachesTheListAndTheMenu)
{
    openList();
    store().removeBookmark(std::string(store().bookmarks().at(1).id));
    perchly::notifications::postBookmarksDidChange();
    ASSERT_FALSE(hasRow("Youtube"));
    ASSERT_EQ(list()->tableView()->numberOfRows(), 4U);
    openSettings();
    const auto content = std::dynamic_pointer_cast<SettingsViewController>(settingsWindow()->contentViewController());

    answerNext(0);
    content->resetAllData();

    EXPECT_TRUE(hasRow("Youtube"));
    EXPECT_EQ(list()->tableView()->numberOfRows(), 5U);
}

} // namespace
