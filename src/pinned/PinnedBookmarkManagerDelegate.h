#pragma once

namespace appkit {
class StatusBarButton;
} // namespace appkit

namespace perchly {

struct Bookmark;

/// Opens what a bookmark's status item was clicked for.
class PinnedBookmarkManagerDelegate {
public:
    virtual ~PinnedBookmarkManagerDelegate() = default;

    /// A popover would point at the button.
    virtual void openPinnedBookmark(const Bookmark& bookmark, appkit::StatusBarButton& anchorButton) = 0;
    virtual void openDetachedWindow(const Bookmark& bookmark) = 0;
    /// The bookmark's isAlwaysOnTop has changed.
    virtual void updateWindowLevel(const Bookmark& bookmark) = 0;
};

} // namespace perchly
