#pragma once

#include <gtk/gtk.h>

#include <memory>

namespace desktop {

struct RenderNodeUnref {
    void operator()(GskRenderNode* node) const { gsk_render_node_unref(node); }
};

/// Owns one reference to what is to be drawn.
using RenderNodePointer = std::unique_ptr<GskRenderNode, RenderNodeUnref>;

[[nodiscard]] inline graphene_rect_t toGraphene(const cairo_rectangle_int_t& rect)
{
    return { { static_cast<float>(rect.x), static_cast<float>(rect.y) },
        { static_cast<float>(rect.width), static_cast<float>(rect.height) } };
}

} // namespace desktop
