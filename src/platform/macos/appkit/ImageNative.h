#pragma once

#include "platform/appkit/Image.h"

#import <AppKit/AppKit.h>

namespace appkit {

struct Image::Native {
    NSImage* image;
};

/// Nil for null.
[[nodiscard]] inline NSImage* nativeImage(const std::shared_ptr<Image>& image)
{
    return image ? image->native().image : nil;
}

} // namespace appkit
