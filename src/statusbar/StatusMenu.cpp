#include "statusbar/StatusMenu.h"

#include "bookmarks/Bookmark.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/Menu.h"

namespace perchly {
namespace {

constexpr auto openInSystemBrowser = "Open in System Browser";

void addPinnedBookmark(appkit::Menu& menu, const Bookmark& bookmark, const StatusMenuActions& actions)
{
    auto& item = menu.addItem(bookmark.title, actions.pinnedBookmarkClicked);
    item.setIdentifier(bookmark.id);
    item.setRepresentedObject(bookmark);

    auto submenu = std::make_shared<appkit::Menu>();
    auto& elsewhere = submenu->addItem(openInSystemBrowser, actions.openInSystemBrowserClicked);
    elsewhere.setRepresentedObject(bookmark);
    elsewhere.setImage(appkit::Image::systemSymbol("safari", openInSystemBrowser));
    item.setSubmenu(std::move(submenu));
}

void addPinnedSection(appkit::Menu& menu, const std::vector<Bookmark>& bookmarks, const StatusMenuActions& actions)
{
    auto hasCaption = false;
    for (const auto& bookmark : bookmarks) {
        if (!bookmark.isPinned)
            continue;
        if (!std::exchange(hasCaption, true))
            menu.addItem("Pinned Quick Access:", {});
        addPinnedBookmark(menu, bookmark, actions);
    }
    if (!hasCaption)
        menu.addItem("No Pinned Bookmarks", {}).setEnabled(false);
}

} // namespace

std::shared_ptr<appkit::Menu> makeStatusMenu(const std::vector<Bookmark>& bookmarks, const StatusMenuActions& actions)
{
    auto menu = std::make_shared<appkit::Menu>();
    menu->addItem("Open Browser", actions.showBrowserWindow, "b");
    menu->addItem("Bookmarks Manager", actions.showBookmarkList, "m");
    menu->addSeparator();
    addPinnedSection(*menu, bookmarks, actions);
    menu->addSeparator();
    menu->addItem("Settings...", actions.showSettings, ",");
    menu->addItem("About", actions.showAbout);
    menu->addSeparator();
    menu->addItem("Quit", actions.quitApp, "q");
    return menu;
}

} // namespace perchly
