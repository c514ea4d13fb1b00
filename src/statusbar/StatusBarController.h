#pragma once

#include "bookmarklist/BookmarkListViewControllerDelegate.h"
#include "browser/BrowserViewController.h"
#include "pinned/PinnedBookmarkManagerDelegate.h"
#include "platform/appkit/Popover.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/foundation/Timer.h"
#include "statusbar/BrowserSurfaces.h"

#include <memory>
#include <optional>

namespace appkit {
class MenuItem;
class StatusBarButton;
class StatusItem;
class WindowController;
} // namespace appkit

namespace perchly {

/// Owns everything that the user sees: the main status item with its menu, and the browsers. While a dialog waits for
/// its answer, what the user does with the item and its menu only brings that forward, but for quitting. Main thread.
class StatusBarController : public appkit::PopoverDelegate,
                            public BrowserViewControllerDelegate,
                            public PinnedBookmarkManagerDelegate,
                            public BookmarkListViewControllerDelegate,
                            public std::enable_shared_from_this<StatusBarController> {
public:
    [[nodiscard]] static std::shared_ptr<StatusBarController> create();

    /// The status item's own click, where no menu takes it: shows the general browser, or closes the popover.
    void statusBarButtonClicked();
    void showBrowserWindow();
    /// Brings up the bookmark manager, and the settings: each one window, made at the first time.
    void showBookmarkList();
    void showSettings();
    /// Each time a window of its own.
    void showAbout();
    /// Nothing: the About window's own button closes it.
    void closeAboutWindow(appkit::Sender& sender);
    void openAppWebsite();
    void quitApp();
    void pinnedBookmarkClicked(appkit::MenuItem& sender);
    void openInSystemBrowserClicked(appkit::MenuItem& sender);

    /// Builds the menu anew from the store and attaches it to the status item.
    void updateMenu() override;

    /// Waits for the user's answer, saves what was entered, and announces it.
    void showAddBookmarkDialog(
        const std::optional<Bookmark>& bookmark, const std::shared_ptr<BookmarkListViewController>& list) override;

    /// Shows the bookmark's browser under the main status item as it is, without a reload.
    void showBookmarkInPopover(const Bookmark& bookmark) override;

    /// The click on a bookmark's own item: brings its window forward, or opens one if the bookmark prefers that, or
    /// else shows its browser in the popover under that item.
    void openPinnedBookmark(const Bookmark& bookmark, appkit::StatusBarButton& anchorButton) override;

    /// Moves the bookmark's browser into a window of its own, unless it has one.
    void openDetachedWindow(const Bookmark& bookmark) override;

    /// Lets the bookmark's window, if it is open, float or not as the bookmark says now.
    void updateWindowLevel(const Bookmark& bookmark) override;

    [[nodiscard]] const std::shared_ptr<appkit::StatusItem>& statusItem() const { return statusItem_; }
    [[nodiscard]] BrowserSurfaces& surfaces() { return *surfaces_; }
    // Null until first shown.
    [[nodiscard]] const std::shared_ptr<appkit::WindowController>& bookmarkListWindowController() const
    {
        return bookmarkListWindowController_;
    }
    [[nodiscard]] const std::shared_ptr<appkit::WindowController>& settingsWindowController() const
    {
        return settingsWindowController_;
    }

    void popoverDidClose() override;
    void browserDidResize(BrowserViewController& controller, double width, double height) override;

private:
    StatusBarController() = default;
    void start();
    void setupStatusItem();
    std::shared_ptr<BrowserViewController> showGeneralBrowser();
    void openInPopover(const Bookmark& bookmark, appkit::StatusBarButton* anchor);
    void saveBrowserSize(const BrowserViewController& controller, double width, double height);
    void bookmarksDidChange();
    void settingsDidChange();

    std::shared_ptr<appkit::StatusItem> statusItem_;
    std::optional<BrowserSurfaces> surfaces_;
    std::shared_ptr<appkit::WindowController> bookmarkListWindowController_;
    std::shared_ptr<appkit::WindowController> settingsWindowController_;
    std::unique_ptr<foundation::Timer> saveTimer_;
    foundation::ObservationToken settingsObservation_;
    foundation::ObservationToken bookmarksObservation_;
};

} // namespace perchly
