#pragma once

#include "platform/appkit/Menu.h"
#include "platform/linux/statusarea/MenuTree.h"

#include <functional>
#include <vector>

namespace appkit {

/// The menu as the desktop shows it. The rows hold the items, so that a late click still finds its own.
///
/// Desktop menus only ever open a submenu and never send the click on its row. The submenu of a row that acts as well
/// therefore begins with a row "Open" that does what the row itself does.
[[nodiscard]] std::vector<desktop::MenuRow> menuRows(const Menu& menu);

[[nodiscard]] desktop::MenuRow separatorRow();

/// The row that stands for a click which the desktop does not send.
[[nodiscard]] desktop::MenuRow openRow(std::function<void()> activate);

} // namespace appkit
