#include "platform/appkit/ImageView.h"

#include "platform/macos/appkit/ImageNative.h"
#include "platform/macos/appkit/ViewNative.h"

namespace appkit {
namespace {

NSImageView* makeImageView(NSImage* image)
{
    NSImageView* view = [[NSImageView alloc] init];
    view.imageScaling = NSImageScaleProportionallyDown;
    view.image = image;
    return view;
}

} // namespace

ImageView::ImageView(std::shared_ptr<Image> image)
    : View(makeNative(makeImageView(nativeImage(image))))
    , image_(std::move(image))
{
}

} // namespace appkit
