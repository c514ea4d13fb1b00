#pragma once

#include "platform/appkit/Menu.h"

namespace appkit {

/// A key equivalent as a keyboard has it: pressed with Control, which stands for Command.
struct MenuKey {
    char32_t character = 0;
    bool needsShift = false;
    bool operator==(const MenuKey&) const = default;
};

using MenuKeyMatcher = std::function<bool(const MenuKey&)>;

/// The first item of the menu or of its submenus that can be chosen and whose key matches; null where there is none.
/// Items without a target are left out: what the widgets do with such keys is what they would do.
[[nodiscard]] std::shared_ptr<MenuItem> itemForKey(const Menu& menu, const MenuKeyMatcher& matches);

/// The same in the main menu and then in the menus of the status items.
[[nodiscard]] std::shared_ptr<MenuItem> itemForKey(const MenuKeyMatcher& matches);

} // namespace appkit
