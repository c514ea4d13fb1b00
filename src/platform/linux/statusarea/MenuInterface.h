#pragma once

#include "platform/linux/statusarea/MenuTree.h"

#include <gio/gio.h>

#include <array>
#include <string_view>

/// The words of com.canonical.dbusmenu.
namespace desktop {

[[nodiscard]] GDBusInterfaceInfo* menuInterface();

inline constexpr const char* iconProperty = "icon-data";

/// All properties that a row may have.
inline constexpr std::array menuPropertyNames { "type", "label", "enabled", "visible", "toggle-type", "toggle-state",
    "children-display", "shortcut", iconProperty };

[[nodiscard]] const char* menuPropertyName(MenuProperty property);

/// The value, or null where the row has none. The icon is not known here.
[[nodiscard]] GVariant* menuPropertyValue(const MenuRow& row, std::string_view name);

/// How the hosts of this desktop spell keys.
enum class ShortcutSpelling { None, Gtk, Qt };

/// Given XDG_CURRENT_DESKTOP. Hosts outside the desktops listed there may be broken by a shortcut, and get none.
[[nodiscard]] ShortcutSpelling shortcutSpellingOn(std::string_view desktops);

/// The shortcut of that character with Control as an aas.
[[nodiscard]] GVariant* shortcutValue(const std::string& key, ShortcutSpelling spelling);

} // namespace desktop
