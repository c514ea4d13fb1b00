#include "platform/linux/popover/RoundedContent.h"

#include <initializer_list>

namespace desktop {
namespace {

void appendWithin(GtkSnapshot* target, GskRenderNode* node, const graphene_rect_t& area);

void appendTranslated(GtkSnapshot* target, GskRenderNode* node, const graphene_rect_t& area)
{
    auto* transform = gsk_transform_node_get_transform(node);
    if (gsk_transform_get_category(transform) < GSK_TRANSFORM_CATEGORY_2D_TRANSLATE)
        return gtk_snapshot_append_node(target, node);
    graphene_point_t offset;
    gsk_transform_to_translate(transform, &offset.x, &offset.y);
    graphene_rect_t areaOfChild;
    graphene_rect_offset_r(&area, -offset.x, -offset.y, &areaOfChild);
    gtk_snapshot_save(target);
    gtk_snapshot_translate(target, &offset);
    appendWithin(target, gsk_transform_node_get_child(node), areaOfChild);
    gtk_snapshot_restore(target);
}

/// Leaves out what is not in the area: a clip alone would have it drawn in vain.
void appendWithin(GtkSnapshot* target, GskRenderNode* node, const graphene_rect_t& area)
{
    graphene_rect_t bounds;
    gsk_render_node_get_bounds(node, &bounds);
    if (!graphene_rect_intersection(&bounds, &area, nullptr))
        return;
    switch (gsk_render_node_get_node_type(node)) {
    case GSK_TRANSFORM_NODE:
        return appendTranslated(target, node, area);
    case GSK_CONTAINER_NODE:
        for (guint index = 0; index < gsk_container_node_get_n_children(node); ++index)
            appendWithin(target, gsk_container_node_get_child(node, index), area);
        return;
    default:
        gtk_snapshot_append_node(target, node);
    }
}

graphene_rect_t rows(const graphene_rect_t& area, float top, float height)
{
    return { { area.origin.x, area.origin.y + top }, { area.size.width, height } };
}

} // namespace

void appendRounded(GtkSnapshot* target, GskRenderNode* content, const graphene_rect_t& area, float cornerRadius)
{
    GskRoundedRect rounded;
    gsk_rounded_rect_init_from_rect(&rounded, &area, cornerRadius);
    for (const auto top : { 0.0F, area.size.height - cornerRadius }) {
        const auto withCorners = rows(area, top, cornerRadius);
        gtk_snapshot_push_clip(target, &withCorners);
        gtk_snapshot_push_rounded_clip(target, &rounded);
        appendWithin(target, content, withCorners);
        gtk_snapshot_pop(target);
        gtk_snapshot_pop(target);
    }
    const auto between = rows(area, cornerRadius, area.size.height - 2 * cornerRadius);
    gtk_snapshot_push_clip(target, &between);
    appendWithin(target, content, between);
    gtk_snapshot_pop(target);
}

} // namespace desktop
