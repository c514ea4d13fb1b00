#include "platform/appkit/Box.h"

#include "platform/macos/appkit/ViewNative.h"

namespace appkit {

std::shared_ptr<Box> Box::separator()
{
    // AppKit draws the line along the longer side.
    NSBox* box = [[NSBox alloc] initWithFrame:NSMakeRect(0, 0, 2, 1)];
    box.boxType = NSBoxSeparator;
    return std::shared_ptr<Box>(new Box(makeNative(box)));
}

} // namespace appkit
