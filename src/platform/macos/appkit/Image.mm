#include "platform/appkit/Image.h"

#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/ImageNative.h"

namespace appkit {

Image::Image(std::string_view name, std::string_view accessibilityDescription, std::unique_ptr<Native> native)
    : name_(name)
    , accessibilityDescription_(accessibilityDescription)
    , isTemplate_([native->image isTemplate])
    , size_(sizeFrom(native->image.size))
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

std::shared_ptr<Image> Image::withData(std::string_view data)
{
    NSImage* image = [[NSImage alloc] initWithData:[NSData dataWithBytes:data.data() length:data.size()]];
    if (!image)
        return nullptr;
    return std::shared_ptr<Image>(new Image({}, {}, std::make_unique<Native>(Native { image })));
}

std::shared_ptr<Image> Image::withSymbolConfiguration(const SymbolConfiguration& configuration) const
{
    NSImageSymbolConfiguration* native =
        [NSImageSymbolConfiguration configurationWithPointSize:configuration.pointSize
                                                        weight:nativeWeight(configuration.weight)];
    NSImage* image = [native_->image imageWithSymbolConfiguration:native];
    // What is no symbol stays as it is.
    if (!image)
        image = [native_->image copy];
    return std::shared_ptr<Image>(
        new Image(name_, accessibilityDescription_, std::make_unique<Native>(Native { image })));
}

void Image::setTemplate(bool isTemplate)
{
    isTemplate_ = isTemplate;
    [native_->image setTemplate:isTemplate];
}

void Image::setSize(foundation::Size size)
{
    size_ = size;
    native_->image.size = nativeSize(size);
}

} // namespace appkit
