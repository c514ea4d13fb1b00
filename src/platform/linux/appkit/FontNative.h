#pragma once

#include "platform/appkit/Font.h"

#include <memory>
#include <pango/pango.h>

namespace appkit {

struct UnrefAttributes {
    void operator()(PangoAttrList* list) const { pango_attr_list_unref(list); }
};

using FontAttributes = std::unique_ptr<PangoAttrList, UnrefAttributes>;

/// The font as text attributes: sizes are relative to the theme's own, for which the usual size of a system font
/// stands.
[[nodiscard]] FontAttributes attributesOf(const Font& font);

} // namespace appkit
