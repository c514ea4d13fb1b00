#pragma once

#include "platform/appkit/Action.h"

#include <memory>
#include <vector>

namespace appkit {
class Menu;
}

namespace perchly {

struct Bookmark;

/// What the rows of the main status item's menu do.
struct StatusMenuActions {
    appkit::Action showBrowserWindow;
    appkit::Action showBookmarkList;
    appkit::Action showSettings;
    appkit::Action showAbout;
    appkit::Action quitApp;
    appkit::Action pinnedBookmarkClicked;
    appkit::Action openInSystemBrowserClicked;
};

/// The main status item's menu for these bookmarks, of which it lists the pinned ones.
[[nodiscard]] std::shared_ptr<appkit::Menu> makeStatusMenu(
    const std::vector<Bookmark>& bookmarks, const StatusMenuActions& actions);

} // namespace perchly
