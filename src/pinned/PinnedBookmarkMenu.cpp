#include "pinned/PinnedBookmarkMenu.h"

#include "bookmarks/BookmarkPresets.h"
#include "platform/appkit/Menu.h"

namespace perchly {
namespace {

using appkit::Action;
using appkit::Menu;

appkit::MenuItem& addRow(Menu& menu, std::string title, const Action& action, const Bookmark& bookmark)
{
    auto& row = menu.addItem(std::move(title), action);
    row.setRepresentedObject(bookmark);
    return row;
}

void addToggle(Menu& menu, std::string title, const Action& action, const Bookmark& bookmark, bool Bookmark::*flag)
{
    addRow(menu, std::move(title), action, bookmark).setOn(bookmark.*flag);
}

std::shared_ptr<Menu> makeUserAgentMenu(const Bookmark& bookmark, const Action& action)
{
    auto menu = std::make_shared<Menu>();
    for (const auto& preset : pinnedMenuUserAgentPresets) {
        auto& row = menu->addItem(std::string(preset.title), action);
        UserAgentChoice choice { bookmark, std::nullopt };
        if (preset.value)
            choice.userAgent = *preset.value;
        row.setRepresentedObject(std::move(choice));
        row.setOn(isCurrentUserAgent(preset, bookmark));
    }
    return menu;
}

std::shared_ptr<Menu> makeIconSizeMenu(const Bookmark& bookmark, const Action& action)
{
    auto menu = std::make_shared<Menu>();
    for (const auto& preset : iconSizePresets) {
        auto& row = menu->addItem(std::string(preset.menuTitle), action);
        row.setRepresentedObject(IconSizeChoice { bookmark, preset.points });
        row.setOn(isCurrentIconSize(preset.points, bookmark));
    }
    return menu;
}

} // namespace

std::shared_ptr<Menu> makePinnedBookmarkMenu(const Bookmark& bookmark, const PinnedBookmarkMenuActions& actions)
{
    auto menu = std::make_shared<Menu>();
    addRow(*menu, "Detach Window", actions.detachWindow, bookmark);
    menu->addSeparator();
    addToggle(*menu, "Reload on Every Open", actions.toggleReloadOnOpen, bookmark, &Bookmark::shouldReloadOnOpen);
    addToggle(*menu, "Always on Top", actions.toggleAlwaysOnTop, bookmark, &Bookmark::isAlwaysOnTop);
    addToggle(*menu, "Always Open in Window", actions.togglePrefersDetached, bookmark, &Bookmark::prefersDetached);
    addToggle(
        *menu, "Open in System Browser", actions.toggleOpenInSystemBrowser, bookmark, &Bookmark::openInSystemBrowser);
    menu->addItem("Browser Agent", {}).setSubmenu(makeUserAgentMenu(bookmark, actions.changeUserAgent));
    menu->addItem("Icon Size", {}).setSubmenu(makeIconSizeMenu(bookmark, actions.changeIconSize));
    addRow(*menu, "Change Custom Icon...", actions.editCustomIcon, bookmark);
    menu->addSeparator();
    addToggle(*menu, "Pin to Quick Access", actions.togglePinnedStatus, bookmark, &Bookmark::isPinned);
    addRow(*menu, "Remove from Menubar", actions.removeFromMenubar, bookmark);
    return menu;
}

} // namespace perchly
