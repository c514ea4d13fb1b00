#include "platform/appkit/ContextMenu.h"

#include "platform/linux/appkit/StatusBarButtonNative.h"

namespace appkit {

void popUpContextMenu(std::shared_ptr<Menu> menu, const Event& /*event*/, StatusBarButton& view)
{
    // The status area shows it, which is also where the event came from.
    view.native().contextMenu = std::move(menu);
}

} // namespace appkit
