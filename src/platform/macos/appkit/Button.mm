#include "platform/appkit/Button.h"

#import "platform/macos/appkit/ActionTarget.h"
#include "platform/macos/appkit/ImageNative.h"
#include "platform/macos/appkit/ViewNative.h"

namespace appkit {
namespace {

std::unique_ptr<View::Native> makeButton()
{
    PerchlyActionTarget* target = [[PerchlyActionTarget alloc] init];
    NSImage* blank = [[NSImage alloc] init];
    return makeNative([NSButton buttonWithImage:blank target:target action:@selector(invoke:)], target);
}

} // namespace

Button::Button(Action action)
    : View(makeButton())
    , action_(std::move(action))
{
    helperOf<PerchlyActionTarget>(*this).handler = ^{
        // Held until the operation has returned, which may take the button away.
        if (const auto self = weak_from_this().lock())
            action_.send(*this);
    };
}

std::shared_ptr<Button> Button::withImage(std::shared_ptr<Image> image, Action action)
{
    auto button = std::shared_ptr<Button>(new Button(std::move(action)));
    button->setImage(std::move(image));
    return button;
}

void Button::setBezelStyle(BezelStyle style)
{
    nativeView<NSButton>(*this).bezelStyle = static_cast<NSBezelStyle>(style);
}

void Button::setImage(std::shared_ptr<Image> image)
{
    image_ = std::move(image);
    nativeView<NSButton>(*this).image = nativeImage(image_);
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

} // namespace appkit
