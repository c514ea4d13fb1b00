#include "platform/macos/appkit/MenuNative.h"

#import "platform/macos/appkit/ActionTarget.h"
#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/ImageNative.h"

namespace appkit {
namespace {

/// A row without a target goes to the first responder under the operation's own name.
SEL selectorOf(const Action& action)
{
    if (action.hasTarget())
        return @selector(invoke:);
    return action ? NSSelectorFromString(nativeText(action.name())) : nullptr;
}

void setTarget(NSMenuItem* row, const std::shared_ptr<MenuItem>& item)
{
    PerchlyActionTarget* target = [[PerchlyActionTarget alloc] init];
    target.handler = ^{ item->performAction(); };
    row.target = target;
    // The row keeps the target, which AppKit holds weakly.
    row.representedObject = target;
}

NSMenuItem* makeRow(const std::shared_ptr<MenuItem>& item)
{
    if (item->isSeparator())
        return [NSMenuItem separatorItem];
    NSMenuItem* row = [[NSMenuItem alloc] initWithTitle:nativeText(item->title())
                                                 action:selectorOf(item->action())
                                          keyEquivalent:nativeText(item->keyEquivalent())];
    if (item->action().hasTarget())
        setTarget(row, item);
    row.identifier = nativeText(item->identifier());
    row.image = nativeImage(item->image());
    if (item->submenu())
        row.submenu = makeNativeMenu(*item->submenu());
    row.enabled = item->isEnabled();
    row.state = item->isOn() ? NSControlStateValueOn : NSControlStateValueOff;
    return row;
}

void fill(NSMenu* native, const Menu& menu)
{
    native.autoenablesItems = NO;
    [native removeAllItems];
    for (const auto& item : menu.items())
        [native addItem:makeRow(item)];
}

} // namespace

NSMenu* makeNativeMenu(const Menu& menu)
{
    NSMenu* native = [[NSMenu alloc] initWithTitle:nativeText(menu.title())];
    fill(native, menu);
    return native;
}

} // namespace appkit

@implementation PerchlyMenuSource

- (void)menuNeedsUpdate:(NSMenu*)native
{
    appkit::fill(native, *self.menu);
}

@end
