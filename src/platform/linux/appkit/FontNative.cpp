#include "platform/linux/appkit/FontNative.h"

namespace appkit {
namespace {

constexpr Font usualFont {};

PangoWeight nativeWeight(FontWeight weight)
{
    switch (weight) {
    case FontWeight::Regular:
        return PANGO_WEIGHT_NORMAL;
    case FontWeight::Medium:
        return PANGO_WEIGHT_MEDIUM;
    case FontWeight::Bold:
        break;
    }
    return PANGO_WEIGHT_BOLD;
}

} // namespace

FontAttributes attributesOf(const Font& font)
{
    FontAttributes attributes(pango_attr_list_new());
    pango_attr_list_insert(attributes.get(), pango_attr_scale_new(font.pointSize / usualFont.pointSize));
    pango_attr_list_insert(attributes.get(), pango_attr_weight_new(nativeWeight(font.weight)));
    return attributes;
}

} // namespace appkit
