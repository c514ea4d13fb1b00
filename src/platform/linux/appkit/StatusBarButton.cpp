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
    if (native_->changed)
        native_->changed();
}

void StatusBarButton::setTitle(std::string_view title)
{
    title_ = title;
    if (native_->changed)
        native_->changed();
}

/// The side of an icon in common status areas: they tell nobody where they put it.
foundation::Rect StatusBarButton::bounds() const
{
    constexpr auto side = 22.0;
    return { {}, { side, side } };
}

} // namespace appkit
