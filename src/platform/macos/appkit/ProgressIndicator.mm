#include "platform/appkit/ProgressIndicator.h"

#include "platform/macos/appkit/ViewNative.h"

namespace appkit {

ProgressIndicator::ProgressIndicator()
    : View(makeNative([[NSProgressIndicator alloc] init]))
{
}

void ProgressIndicator::setStyle(ProgressIndicatorStyle style)
{
    nativeView<NSProgressIndicator>(*this).style = static_cast<NSProgressIndicatorStyle>(style);
}

void ProgressIndicator::setControlSize(ControlSize size)
{
    nativeView<NSProgressIndicator>(*this).controlSize
        = size == ControlSize::Small ? NSControlSizeSmall : NSControlSizeRegular;
}

void ProgressIndicator::setDisplayedWhenStopped(bool displayed)
{
    isDisplayedWhenStopped_ = displayed;
    nativeView<NSProgressIndicator>(*this).displayedWhenStopped = displayed;
}

void ProgressIndicator::startAnimation()
{
    [nativeView<NSProgressIndicator>(*this) startAnimation:nil];
}

void ProgressIndicator::stopAnimation()
{
    [nativeView<NSProgressIndicator>(*this) stopAnimation:nil];
}

} // namespace appkit
