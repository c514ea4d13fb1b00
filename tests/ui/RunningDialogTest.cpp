#include "platform/appkit/Popover.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/appkit/Window.h"
#include "platform/appkit/WindowController.h"
#include "ui/BookmarkDialogTest.h"

namespace {

using appkit::Alert;
using perchly::StatusBarController;

/// What the menu's rows do while a dialog waits for its answer.
class RunningDialogTest : public BookmarkDialogTest {
protected:
    [[nodiscard]] appkit::MenuItem rowOfBookmark() const
    {
        appkit::MenuItem row(bookmark.title, {});
        row.setRepresentedObject(bookmark);
        return row;
    }
};

TEST_F(RunningDialogTest, NothingElseOfTheMenuStarts)
{
    edit(cancel, [this](const Dialog& dialog) {
        for (const auto operation : { &StatusBarController::statusBarButtonClicked,
                 &StatusBarController::showBrowserWindow, &StatusBarController::showBookmarkList,
                 &StatusBarController::showSettings, &StatusBarController::showAbout })
            (*controller.*operation)();
        auto row = rowOfBookmark();
        controller->pinnedBookmarkClicked(row);
        EXPECT_EQ(Alert::running(), &dialog.alert);
    });

    EXPECT_FALSE(controller->surfaces().popover().isShown());
    EXPECT_EQ(controller->surfaces().generalBrowserViewController(), nullptr);
    EXPECT_EQ(controller->bookmarkListWindowController(), nullptr);
    EXPECT_EQ(controller->settingsWindowController(), nullptr);

    controller->showSettings();
    ASSERT_NE(controller->settingsWindowController(), nullptr);
    controller->settingsWindowController()->window()->close();
}

} // namespace
