#include "platform/appkit/Image.h"

#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/ImageNative.h"

namespace appkit {

Image::Image(std::string_view name, std::string_view accessibilityDescription, std::unique_ptr<Native> native)
    : name_(name)
    , accessibilityDescription_(accessibilityDescription)
    , isTemplate_([native->image isTemplate])
    , native_(std::move(native))
{
}

Image::~Image() = default;

std::shared_ptr<Image> Image::imageNamed(std::string_view name)
{
    NSImage* image = [NSImage imageNamed:nativeText(name)];
    if (!image)
        return nullptr;
    return std::shared_ptr<Image>(new Image(name, {}, std::make_unique<Native>(Native { image })));
}

std::shared_ptr<Image> Image::systemSymbol(std::string_view name, std::string_view accessibilityDescription)
{
    NSImage* image = [NSImage imageWithSystemSymbolName:nativeText(name)
                               accessibilityDescription:nativeTextOrNone(accessibilityDescription)];
    if (!image)
        return nullptr;
    return std::shared_ptr<Image>(
        new Image(name, accessibilityDescription, std::make_unique<Native>(Native { image })));
}

void Image::setTemplate(bool isTemplate)
{
    isTemplate_ = isTemplate;
    [native_->image setTemplate:isTemplate];
}

} // namespace appkit
