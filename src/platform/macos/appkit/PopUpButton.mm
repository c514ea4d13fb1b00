#include "platform/appkit/PopUpButton.h"

#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/ViewNative.h"

namespace appkit {

PopUpButton::PopUpButton()
    : View(makeNative([[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO]))
{
}

void PopUpButton::addItem(std::string_view title)
{
    itemTitles_.emplace_back(title);
    NSPopUpButton* button = nativeView<NSPopUpButton>(*this);
    // addItemWithTitle: of the button itself would take away a row of the same title.
    [button.menu addItemWithTitle:nativeText(title) action:nil keyEquivalent:@""];
    [button synchronizeTitleAndSelectedItem];
}

void PopUpButton::selectItemAt(std::size_t index)
{
    [nativeView<NSPopUpButton>(*this) selectItemAtIndex:static_cast<NSInteger>(index)];
}

std::size_t PopUpButton::indexOfSelectedItem() const
{
    return static_cast<std::size_t>(nativeView<NSPopUpButton>(*this).indexOfSelectedItem);
}

} // namespace appkit
