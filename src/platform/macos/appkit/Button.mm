#include "platform/appkit/Button.h"

#include "platform/macos/appkit/ControlNative.h"
#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/ImageNative.h"

/// A button whose press can be dropped while the mouse is down.
@interface PerchlyButton : NSButton
- (void)dropPress;
@end

@implementation PerchlyButton {
    BOOL _isPressed;
    BOOL _isDropped;
}

- (void)mouseDown:(NSEvent*)event
{
    // Held: the action may take the button away. It has been sent when the mouse is up.
    PerchlyButton* held = self;
    held->_isPressed = YES;
    [super mouseDown:event];
    held->_isPressed = NO;
    held->_isDropped = NO;
}

- (BOOL)sendAction:(SEL)action to:(id)target
{
    return !_isDropped && [super sendAction:action to:target];
}

- (void)dropPress
{
    _isDropped = _isPressed;
}

@end

namespace appkit {
namespace {

std::unique_ptr<View::Native> makeButton(NSButton* button)
{
    return makeNativeControl(button, [[PerchlyActionTarget alloc] init]);
}

} // namespace

Button::Button(std::unique_ptr<Native> native, Action action)
    : View(std::move(native))
    , action_(std::move(action))
{
    helperOf<PerchlyActionTarget>(*this).handler = actionHandler(*this, action_);
}

std::shared_ptr<Button> Button::withImage(std::shared_ptr<Image> image, Action action)
{
    PerchlyButton* native = [PerchlyButton buttonWithImage:[[NSImage alloc] init] target:nil action:nil];
    auto button = std::shared_ptr<Button>(new Button(makeButton(native), std::move(action)));
    button->setImage(std::move(image));
    return button;
}

std::shared_ptr<Button> Button::withTitle(std::string_view title, Action action)
{
    PerchlyButton* native = [PerchlyButton buttonWithTitle:nativeText(title) target:nil action:nil];
    auto button = std::shared_ptr<Button>(new Button(makeButton(native), std::move(action)));
    button->title_ = title;
    return button;
}

std::shared_ptr<Button> Button::checkbox(std::string_view title, Action action)
{
    PerchlyButton* native = [PerchlyButton checkboxWithTitle:nativeText(title) target:nil action:nil];
    auto button = std::shared_ptr<Button>(new Button(makeButton(native), std::move(action)));
    button->title_ = title;
    return button;
}

void Button::setBezelStyle(BezelStyle style)
{
    nativeView<NSButton>(*this).bezelStyle = static_cast<NSBezelStyle>(style);
}

void Button::setBordered(bool bordered)
{
    nativeView<NSButton>(*this).bordered = bordered;
}

void Button::setContentTintColor(Color color)
{
    nativeView<NSButton>(*this).contentTintColor = nativeColor(color);
}

void Button::setFont(const Font& font)
{
    nativeView<NSButton>(*this).font = nativeFont(font);
}

void Button::setState(ControlState state)
{
    nativeView<NSButton>(*this).state = state == ControlState::On ? NSControlStateValueOn : NSControlStateValueOff;
}

ControlState Button::state() const
{
    return nativeView<NSButton>(*this).state == NSControlStateValueOn ? ControlState::On : ControlState::Off;
}

void Button::setImage(std::shared_ptr<Image> image)
{
    image_ = std::move(image);
    nativeView<NSButton>(*this).image = image_ ? nativeImage(image_) : [[NSImage alloc] init];
}

void Button::setEnabled(bool enabled)
{
    nativeView<NSButton>(*this).enabled = enabled;
}

bool Button::isEnabled() const
{
    return nativeView<NSButton>(*this).isEnabled;
}

void Button::performClick()
{
    [nativeView<NSButton>(*this) performClick:nil];
}

void Button::dropPress()
{
    [nativeView<PerchlyButton>(*this) dropPress];
}

} // namespace appkit
