#pragma once

#include <memory>

namespace appkit {

class Menu;
class StatusBarButton;
struct Event;

/// Shows the menu for the event at the button. Where the desktop shows the menus of status items itself, it is handed
/// over to be shown there.
void popUpContextMenu(std::shared_ptr<Menu> menu, const Event& event, StatusBarButton& view);

} // namespace appkit
