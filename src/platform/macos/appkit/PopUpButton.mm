#include "platform/appkit/PopUpButton.h"

#include "platform/macos/appkit/ControlNative.h"
#include "platform/macos/appkit/Conversions.h"

namespace appkit {
namespace {

std::unique_ptr<View::Native> makePopUp()
{
    NSPopUpButton* button = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
    return makeNativeControl(button, [[PerchlyActionTarget alloc] init]);
}

} // namespace

PopUpButton::PopUpButton()
    : View(makePopUp())
{
    helperOf<PerchlyActionTarget>(*this).handler = actionHandler(*this, action_);
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

void PopUpButton::selectItemWithTitle(std::string_view title)
{
    NSPopUpButton* button = nativeView<NSPopUpButton>(*this);
    // AppKit would choose nothing at all instead of a title that isn't there.
    if (NSMenuItem* item = [button itemWithTitle:nativeText(title)])
        [button selectItem:item];
}

std::string PopUpButton::titleOfSelectedItem() const
{
    return textFrom(nativeView<NSPopUpButton>(*this).titleOfSelectedItem);
}

std::size_t PopUpButton::indexOfSelectedItem() const
{
    return static_cast<std::size_t>(nativeView<NSPopUpButton>(*this).indexOfSelectedItem);
}

} // namespace appkit
