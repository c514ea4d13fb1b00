#pragma once

#include "bookmarks/Bookmark.h"
#include "platform/appkit/Action.h"

#include <memory>
#include <optional>
#include <string>

namespace appkit {
class Menu;
} // namespace appkit

namespace perchly {

/// What a row of "Browser Agent" carries.
struct UserAgentChoice {
    Bookmark bookmark;
    std::optional<std::string> userAgent;
};

/// What a row of "Icon Size" carries.
struct IconSizeChoice {
    Bookmark bookmark;
    double points;
};

struct PinnedBookmarkMenuActions {
    appkit::Action detachWindow;
    appkit::Action toggleReloadOnOpen;
    appkit::Action toggleAlwaysOnTop;
    appkit::Action togglePrefersDetached;
    appkit::Action toggleOpenInSystemBrowser;
    appkit::Action changeUserAgent;
    appkit::Action changeIconSize;
    appkit::Action editCustomIcon;
    appkit::Action togglePinnedStatus;
    appkit::Action removeFromMenubar;
};

/// The menu of a bookmark's status item. Its rows carry the bookmark as it is now.
[[nodiscard]] std::shared_ptr<appkit::Menu> makePinnedBookmarkMenu(
    const Bookmark& bookmark, const PinnedBookmarkMenuActions& actions);

} // namespace perchly
