#include "platform/linux/appkit/MenuKeys.h"

#include "platform/appkit/Application.h"
#include "platform/linux/appkit/StatusItemNative.h"

namespace appkit {
namespace {

MenuKey keyOf(const std::string& keyEquivalent)
{
    const auto character = g_utf8_get_char(keyEquivalent.c_str());
    return { g_unichar_tolower(character), g_unichar_isupper(character) != FALSE };
}

bool isChosenBy(const MenuItem& item, const MenuKeyMatcher& matches)
{
    return item.action().hasTarget() && !item.keyEquivalent().empty() && matches(keyOf(item.keyEquivalent()));
}

} // namespace

std::shared_ptr<MenuItem> itemForKey(const Menu& menu, const MenuKeyMatcher& matches)
{
    for (const auto& item : menu.items()) {
        if (!item->isEnabled())
            continue;
        if (isChosenBy(*item, matches))
            return item;
        if (auto found = item->submenu() ? itemForKey(*item->submenu(), matches) : nullptr)
            return found;
    }
    return nullptr;
}

std::shared_ptr<MenuItem> itemForKey(const MenuKeyMatcher& matches)
{
    auto menus = StatusItem::Native::attachedMenus();
    if (const auto& mainMenu = Application::sharedApplication().mainMenu())
        menus.insert(menus.begin(), mainMenu);
    for (const auto& menu : menus) {
        if (auto item = itemForKey(*menu, matches))
            return item;
    }
    return nullptr;
}

} // namespace appkit
