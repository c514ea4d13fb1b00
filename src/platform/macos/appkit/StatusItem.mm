#include "platform/appkit/StatusItem.h"

#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/MenuNative.h"
#include "platform/macos/appkit/StatusBarButtonNative.h"
#include "platform/macos/appkit/StatusItemNative.h"

namespace appkit {

StatusItem::StatusItem(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
    NSStatusBarButton* nativeButton = native_->item.button;
    if (!nativeButton)
        return;
    auto buttonNative = std::make_unique<StatusBarButton::Native>(StatusBarButton::Native { nativeButton });
    native_->button.reset(new StatusBarButton(std::move(buttonNative)));
    const std::weak_ptr<StatusBarButton> weakButton = native_->button;
    native_->button->native().target.handler = ^{
        // Held until the operation has returned, which may take the item away.
        if (const auto button = weakButton.lock())
            button->performClick();
    };
}

StatusItem::~StatusItem()
{
    native_->remove();
}

void StatusItem::setAutosaveName(std::string_view name)
{
    native_->item.autosaveName = nativeText(name);
}

std::shared_ptr<StatusBarButton> StatusItem::button() const
{
    return native_->button;
}

void StatusItem::setMenu(std::shared_ptr<Menu> menu)
{
    NSMenu* native = nil;
    native_->menuSource = nil;
    if (menu) {
        native = [[NSMenu alloc] init];
        native_->menuSource = [[PerchlyMenuSource alloc] init];
        native_->menuSource.menu = std::move(menu);
        native.delegate = native_->menuSource;
    }
    native_->item.menu = native;
}

std::shared_ptr<Menu> StatusItem::menu() const
{
    return native_->menuSource ? native_->menuSource.menu : nullptr;
}

} // namespace appkit
