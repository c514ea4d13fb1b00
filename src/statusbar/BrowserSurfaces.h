#pragma once

#include "statusbar/DetachedWindows.h"

#include <map>
#include <memory>
#include <string>

namespace appkit {
class Popover;
class PopoverDelegate;
class StatusBarButton;
class Window;
} // namespace appkit

namespace perchly {

struct Bookmark;
class BrowserViewController;
class BrowserViewControllerDelegate;

/// The browsers and where they are shown: one browser for each bookmark that was ever opened, one for the home page,
/// the one popover, and the windows of their own that some have. Browsers, once made, live as long as this.
class BrowserSurfaces {
public:
    BrowserSurfaces(std::weak_ptr<appkit::PopoverDelegate> popoverDelegate,
        std::weak_ptr<BrowserViewControllerDelegate> browserDelegate);
    ~BrowserSurfaces();

    /// The bookmark's browser, or the general one for none; made, and sent to its page, when first asked for.
    [[nodiscard]] std::shared_ptr<BrowserViewController> browserViewControllerForBookmark(const Bookmark* bookmark);

    /// Null until the general browser was first asked for.
    [[nodiscard]] const std::shared_ptr<BrowserViewController>& generalBrowserViewController() const
    {
        return generalBrowserViewController_;
    }

    [[nodiscard]] appkit::Popover& popover() const { return *popover_; }

    /// Puts the browser into the popover at its preferred size, and shows that under the button. Without a button the
    /// popover only takes the browser.
    void showInPopover(const std::shared_ptr<BrowserViewController>& browser, appkit::StatusBarButton* anchor);

    /// Brings a window to the front with the bookmark's browser, out of the popover if it is there. Nothing where the
    /// bookmark has a window.
    void showInWindow(const Bookmark& bookmark);

    /// Gives a bookmark's window the keyboard, and its browser, wherever that is.
    void bringForward(appkit::Window& window);

    [[nodiscard]] DetachedWindows& detachedWindows() { return detachedWindows_; }

    /// Silences the page that the popover showed and takes it out; the browser is kept with its page.
    void emptyClosedPopover();

private:
    [[nodiscard]] std::shared_ptr<BrowserViewController> makeBrowser() const;
    [[nodiscard]] std::shared_ptr<BrowserViewController> browserInPopover() const;

    std::weak_ptr<BrowserViewControllerDelegate> browserDelegate_;
    std::unique_ptr<appkit::Popover> popover_;
    std::map<std::string, std::shared_ptr<BrowserViewController>, std::less<>> browserViewControllers_;
    std::shared_ptr<BrowserViewController> generalBrowserViewController_;
    DetachedWindows detachedWindows_;
};

} // namespace perchly
