#include "platform/appkit/ContextMenu.h"

#include "platform/macos/appkit/MenuNative.h"
#include "platform/macos/appkit/StatusBarButtonNative.h"

namespace appkit {

void popUpContextMenu(std::shared_ptr<Menu> menu, const Event& /*event*/, StatusBarButton& view)
{
    // It was made of this one, and has more to tell.
    if (NSEvent* event = NSApp.currentEvent)
        [NSMenu popUpContextMenu:makeNativeMenu(*menu) withEvent:event forView:view.native().button];
}

} // namespace appkit
