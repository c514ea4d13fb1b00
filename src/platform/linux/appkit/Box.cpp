#include "platform/appkit/Box.h"

#include "platform/linux/appkit/ViewNative.h"

namespace appkit {

std::shared_ptr<Box> Box::separator()
{
    return std::shared_ptr<Box>(new Box(makeNative([] { return gtk_separator_new(GTK_ORIENTATION_HORIZONTAL); })));
}

} // namespace appkit
