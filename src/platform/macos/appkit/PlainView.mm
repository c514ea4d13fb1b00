#import "platform/macos/appkit/PlainView.h"

#include "platform/appkit/Event.h"
#include "platform/appkit/View.h"
#include "platform/foundation/FatalError.h"

#include <algorithm>
#include <vector>

namespace {

struct KeyAction {
    appkit::KeyEquivalent key;
    appkit::Action action;
};

bool isPressed(const appkit::KeyEquivalent& key, NSEvent* event)
{
    // The other flags come with the key itself (a function key, the keypad) or with Caps Lock.
    constexpr auto modifiers = NSEventModifierFlagCommand | NSEventModifierFlagControl | NSEventModifierFlagOption
        | NSEventModifierFlagShift;
    if ((event.modifierFlags & modifiers) != (key.withCommand ? NSEventModifierFlagCommand : 0))
        return false;
    NSString* characters = event.charactersIgnoringModifiers;
    return characters.length == 1 && [characters characterAtIndex:0] == key.character;
}

} // namespace

@implementation PerchlyPlainView {
    std::vector<KeyAction> _keyActions;
}

- (instancetype)initWithFrame:(NSRect)frame
{
    return [super initWithFrame:frame];
}

- (instancetype)initWithCoder:(NSCoder*)coder
{
    foundation::fatalError("init(coder:) has not been implemented");
}

- (void)addKeyEquivalent:(const appkit::KeyEquivalent&)key action:(appkit::Action)action
{
    _keyActions.push_back({ key, std::move(action) });
}

/// Held until the operation has returned, which may take the view away; null for one that is going.
- (std::shared_ptr<appkit::View>)heldOwner
{
    return self.owner ? self.owner->weak_from_this().lock() : nullptr;
}

- (BOOL)performKeyEquivalent:(NSEvent*)event
{
    const auto found
        = std::ranges::find_if(_keyActions, [event](const KeyAction& each) { return isPressed(each.key, event); });
    const auto owner = [self heldOwner];
    if (!owner || found == _keyActions.end())
        return [super performKeyEquivalent:event];
    found->action.send(*owner);
    return YES;
}

- (void)mouseDown:(NSEvent*)event
{
    if (!self.handlesMouse)
        [super mouseDown:event];
    else if (const auto owner = [self heldOwner])
        owner->mouseDown({ appkit::EventType::LeftMouseDown });
}

- (void)mouseDragged:(NSEvent*)event
{
    if (!self.handlesMouse)
        [super mouseDragged:event];
    else if (const auto owner = [self heldOwner])
        owner->mouseDragged({ appkit::EventType::LeftMouseDragged });
}

- (void)resetCursorRects
{
    if (!self.handlesMouse)
        [super resetCursorRects];
    else if (const auto owner = [self heldOwner])
        owner->resetCursorRects();
}

@end
