#pragma once

#include <gtk/gtk.h>

namespace desktop {

/// Draws the content in the area, whose corners are rounded; the area is higher than two of them. It takes about as
/// long as through a straight clip: what shows through a rounded one costs far more, so that only the rows with the
/// corners are drawn so.
void appendRounded(GtkSnapshot* target, GskRenderNode* content, const graphene_rect_t& area, float cornerRadius);

} // namespace desktop
