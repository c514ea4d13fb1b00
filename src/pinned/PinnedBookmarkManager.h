#pragma once

#include "pinned/PinnedBookmarkManagerDelegate.h"
#include "platform/foundation/NotificationCenter.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace appkit {
class MenuItem;
class StatusBar;
class StatusItem;
} // namespace appkit

namespace perchly {

/// The status items of the bookmarks that have one. They follow the store: each announced change brings them in step.
/// Main thread.
class PinnedBookmarkManager : public std::enable_shared_from_this<PinnedBookmarkManager> {
public:
    /// Made, with its items, on first use.
    static const std::shared_ptr<PinnedBookmarkManager>& shared();
    [[nodiscard]] static std::shared_ptr<PinnedBookmarkManager> create();

    /// Held weakly; without one, clicks that need it do nothing.
    void setDelegate(std::weak_ptr<PinnedBookmarkManagerDelegate> delegate);

    void syncStatusItems();

    void statusItemClicked(appkit::StatusBarButton& sender);

    // What the rows of an item's menu do. Each saves the bookmark as it was when the menu was built, with its change.
    // While a dialog waits for its answer, clicks and rows only bring that forward.
    void detachWindow(appkit::MenuItem& sender);
    void toggleReloadOnOpen(appkit::MenuItem& sender);
    void toggleAlwaysOnTop(appkit::MenuItem& sender);
    void togglePrefersDetached(appkit::MenuItem& sender);
    void toggleOpenInSystemBrowser(appkit::MenuItem& sender);
    void changeUserAgent(appkit::MenuItem& sender);
    void changeIconSize(appkit::MenuItem& sender);
    void editCustomIcon(appkit::MenuItem& sender);
    void togglePinnedStatus(appkit::MenuItem& sender);
    void removeFromMenubar(appkit::MenuItem& sender);

    /// By bookmark id.
    [[nodiscard]] const std::map<std::string, std::shared_ptr<appkit::StatusItem>, std::less<>>& statusItems() const
    {
        return statusItems_;
    }

    /// Null where the bookmark has no item, or its item no button.
    [[nodiscard]] std::shared_ptr<appkit::StatusBarButton> buttonFor(std::string_view bookmarkId) const;

private:
    PinnedBookmarkManager();
    void start();
    void bookmarksDidChange();
    void removeItemsExceptFor(const std::vector<Bookmark>& bookmarks);
    void createItem(const Bookmark& bookmark);
    void refreshItem(appkit::StatusItem& item, const Bookmark& bookmark);
    void identify(appkit::StatusBarButton& button, const Bookmark& bookmark);
    void applyIcon(appkit::StatusBarButton& button, const Bookmark& bookmark);
    void showContextMenu(const Bookmark& bookmark, appkit::StatusBarButton& button);
    void toggle(bool Bookmark::*flag, const appkit::MenuItem& sender);

    std::weak_ptr<PinnedBookmarkManagerDelegate> delegate_;
    std::map<std::string, std::shared_ptr<appkit::StatusItem>, std::less<>> statusItems_;
    std::unordered_map<std::size_t, std::string> bookmarkIdMap_;
    appkit::StatusBar& statusBar_;
    foundation::ObservationToken bookmarksObservation_;
};

} // namespace perchly
