#include "platform/linux/appkit/StatusBarButtonNative.h"

#include "platform/appkit/Image.h"

namespace appkit {

StatusBarButton::StatusBarButton(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

StatusBarButton::~StatusBarButton() = default;

void StatusBarButton::setImage(std::shared_ptr<Image> image)
{
    image_ = std::move(image);
    native_->tellOfChange();
}

void StatusBarButton::setTitle(std::string_view title)
{
    title_ = title;
    native_->tellOfChange();
}

void StatusBarButton::setImagePosition(ImagePosition position)
{
    imagePosition_ = position;
    native_->tellOfChange();
}

void StatusBarButton::setFont(const Font& font)
{
    font_ = font;
    native_->tellOfChange();
}

void StatusBarButton::setToolTip(std::string_view text)
{
    toolTip_ = text;
    native_->tellOfChange();
}

void StatusBarButton::setTag(std::size_t tag)
{
    tag_ = tag;
    native_->tellOfChange();
}

void StatusBarButton::sendActionOn(EventMask mask)
{
    actionMask_ = mask;
    native_->tellOfChange();
}

/// The side of an icon in common status areas: they tell nobody where they put it.
foundation::Rect StatusBarButton::bounds() const
{
    constexpr auto side = 22.0;
    return { {}, { side, side } };
}

} // namespace appkit
