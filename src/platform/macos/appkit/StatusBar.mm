#include "platform/appkit/StatusBar.h"

#include "platform/macos/appkit/StatusItemNative.h"

namespace appkit {

StatusBar& StatusBar::systemStatusBar()
{
    static StatusBar statusBar;
    return statusBar;
}

std::shared_ptr<StatusItem> StatusBar::statusItem()
{
    NSStatusItem* item = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
    auto native = std::make_unique<StatusItem::Native>(StatusItem::Native { item, nullptr, nil });
    return std::shared_ptr<StatusItem>(new StatusItem(std::move(native)));
}

void StatusBar::removeStatusItem(StatusItem& item)
{
    item.native_->remove();
}

} // namespace appkit
