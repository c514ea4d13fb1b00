#include "platform/appkit/StatusBarButton.h"

#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/ImageNative.h"
#include "platform/macos/appkit/StatusBarButtonNative.h"

namespace appkit {

StatusBarButton::StatusBarButton(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
    native_->button.target = native_->target;
    native_->button.action = @selector(invoke:);
}

StatusBarButton::~StatusBarButton() = default;

void StatusBarButton::setImage(std::shared_ptr<Image> image)
{
    image_ = std::move(image);
    native_->button.image = nativeImage(image_);
}

void StatusBarButton::setTitle(std::string_view title)
{
    title_ = title;
    native_->button.title = nativeText(title);
}

foundation::Rect StatusBarButton::bounds() const
{
    return rectFrom(native_->button.bounds);
}

} // namespace appkit
