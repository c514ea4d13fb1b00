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

void StatusBarButton::setImagePosition(ImagePosition position)
{
    imagePosition_ = position;
    native_->button.imagePosition = static_cast<NSCellImagePosition>(position);
}

void StatusBarButton::setFont(const Font& font)
{
    font_ = font;
    native_->button.font = nativeFont(font);
}

void StatusBarButton::setToolTip(std::string_view text)
{
    toolTip_ = text;
    native_->button.toolTip = nativeTextOrNone(text);
}

void StatusBarButton::setTag(std::size_t tag)
{
    tag_ = tag;
    native_->button.tag = static_cast<NSInteger>(tag);
}

void StatusBarButton::sendActionOn(EventMask mask)
{
    actionMask_ = mask;
    [native_->button sendActionOn:static_cast<NSEventMask>(mask)];
}

foundation::Rect StatusBarButton::bounds() const
{
    return rectFrom(native_->button.bounds);
}

} // namespace appkit
