#include "platform/appkit/StatusBar.h"

#include "platform/foundation/FatalError.h"
#include "platform/linux/appkit/StatusItemNative.h"

namespace appkit {

StatusBar& StatusBar::systemStatusBar()
{
    static StatusBar bar;
    return bar;
}

std::shared_ptr<StatusItem> StatusBar::statusItem()
{
    foundation::assertMainThread();
    // Status areas remember by this id which items their user hides, and where they stand.
    static auto count = 0;
    const auto number = ++count;
    auto id = number == 1 ? std::string("perchly") : "perchly-" + std::to_string(number);
    return std::shared_ptr<StatusItem>(new StatusItem(std::make_unique<StatusItem::Native>(std::move(id))));
}

void StatusBar::removeStatusItem(StatusItem& item)
{
    foundation::assertMainThread();
    item.native_->remove();
}

} // namespace appkit
