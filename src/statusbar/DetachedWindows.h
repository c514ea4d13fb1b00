#pragma once

#include "platform/foundation/NotificationCenter.h"

#include <map>
#include <memory>
#include <string>

namespace appkit {
class Window;
} // namespace appkit

namespace perchly {

struct Bookmark;
class BrowserViewController;

/// The windows in which bookmarks have their browsers to themselves: one for a bookmark at most, known by the
/// bookmark's id as long as it is open.
class DetachedWindows {
public:
    DetachedWindows();
    ~DetachedWindows();
    DetachedWindows(const DetachedWindows&) = delete;
    DetachedWindows& operator=(const DetachedWindows&) = delete;

    /// Null where the bookmark has none.
    [[nodiscard]] std::shared_ptr<appkit::Window> windowFor(const Bookmark& bookmark) const;

    /// Brings a new window to the front with the browser inside. Closed, it silences the page.
    void open(const Bookmark& bookmark, const std::shared_ptr<BrowserViewController>& browser);

    /// Lets the bookmark's window float or not, as the bookmark says now.
    void updateLevel(const Bookmark& bookmark);

    /// Puts the browser back into its window, if that is open and has lost it to the popover.
    void takeBack(const std::shared_ptr<BrowserViewController>& browser);

private:
    struct OpenWindow {
        std::shared_ptr<appkit::Window> window;
        foundation::ObservationToken willClose;
    };

    std::map<std::string, OpenWindow, std::less<>> windows_;
};

} // namespace perchly
