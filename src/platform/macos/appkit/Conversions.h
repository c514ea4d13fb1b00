#pragma once

#include "platform/appkit/Color.h"
#include "platform/appkit/Font.h"
#include "platform/foundation/Geometry.h"
#include "platform/macos/foundation/Conversions.h"

#import <AppKit/AppKit.h>

namespace appkit {

using foundation::nativeText;
using foundation::textFrom;

/// Nil, AppKit's "none", for the empty text.
[[nodiscard]] inline NSString* nativeTextOrNone(std::string_view text)
{
    return text.empty() ? nil : nativeText(text);
}

[[nodiscard]] inline foundation::Point pointFrom(NSPoint native)
{
    return { native.x, native.y };
}

[[nodiscard]] inline NSSize nativeSize(foundation::Size size)
{
    return NSMakeSize(size.width, size.height);
}

[[nodiscard]] inline foundation::Size sizeFrom(NSSize native)
{
    return { native.width, native.height };
}

[[nodiscard]] inline NSRect nativeRect(foundation::Rect rect)
{
    return NSMakeRect(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

[[nodiscard]] inline foundation::Rect rectFrom(NSRect native)
{
    return { pointFrom(native.origin), sizeFrom(native.size) };
}

[[nodiscard]] inline NSFontWeight nativeWeight(FontWeight weight)
{
    switch (weight) {
    case FontWeight::Regular:
        return NSFontWeightRegular;
    case FontWeight::Medium:
        return NSFontWeightMedium;
    case FontWeight::Bold:
        return NSFontWeightBold;
    }
}

[[nodiscard]] inline NSFont* nativeFont(const Font& font)
{
    return [NSFont systemFontOfSize:font.pointSize weight:nativeWeight(font.weight)];
}

[[nodiscard]] inline NSColor* nativeColor(Color color)
{
    switch (color) {
    case Color::Label:
        return NSColor.labelColor;
    case Color::SecondaryLabel:
        return NSColor.secondaryLabelColor;
    case Color::Link:
        return NSColor.linkColor;
    case Color::SystemRed:
        return NSColor.systemRedColor;
    }
}

} // namespace appkit
