#include "platform/linux/popover/FramePicture.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace desktop {
namespace {

bool isSame(const cairo_rectangle_int_t& first, const cairo_rectangle_int_t& second)
{
    return first.x == second.x && first.y == second.y && first.width == second.width && first.height == second.height;
}

std::string lookOf(GskRenderNode* node)
{
    auto* bytes = gsk_render_node_serialize(node);
    gsize length = 0;
    const auto* data = static_cast<const char*>(g_bytes_get_data(bytes, &length));
    std::string look(data, length);
    g_bytes_unref(bytes);
    return look;
}

struct SurfaceDestroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};

using SurfacePointer = std::unique_ptr<cairo_surface_t, SurfaceDestroy>;

SurfacePointer drawPlace(GskRenderNode* node, const cairo_rectangle_int_t& place, int scale)
{
    SurfacePointer image(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, place.width * scale, place.height * scale));
    cairo_surface_set_device_scale(image.get(), scale, scale);
    auto* context = cairo_create(image.get());
    cairo_translate(context, -place.x, -place.y);
    gsk_render_node_draw(node, context);
    cairo_destroy(context);
    cairo_surface_flush(image.get());
    return image;
}

RenderNodePointer pieceAt(GskRenderNode* node, const cairo_rectangle_int_t& place, int scale)
{
    const auto image = drawPlace(node, place, scale);
    const auto bounds = toGraphene(place);
    // Not a texture: one would be copied and converted for each frame that is drawn without a GPU.
    RenderNodePointer piece(gsk_cairo_node_new(&bounds));
    auto* context = gsk_cairo_node_get_draw_context(piece.get());
    cairo_set_source_surface(context, image.get(), place.x, place.y);
    cairo_paint(context);
    cairo_destroy(context);
    return piece;
}

RenderNodePointer fillAt(GskRenderNode* node, const cairo_rectangle_int_t& place)
{
    const auto pixel = drawPlace(node, { place.x + place.width / 2, place.y + place.height / 2, 1, 1 }, 1);
    const auto argb = *reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(pixel.get()));
    const auto part = [argb](int shift) { return static_cast<float>((argb >> shift) & 0xFF); };
    const auto alpha = std::max(part(24), 1.0F); // the others have it in them
    const GdkRGBA color { part(16) / alpha, part(8) / alpha, part(0) / alpha, part(24) / 0xFF };
    const auto bounds = toGraphene(place);
    return RenderNodePointer(gsk_color_node_new(&color, &bounds));
}

RenderNodePointer drawPixels(GskRenderNode* frame, const FrameShape& shape)
{
    auto between = shape.inside;
    between.y += shape.cornerRadius;
    between.height -= 2 * shape.cornerRadius;
    const auto right = between.x + between.width;
    const auto bottom = between.y + between.height;
    // The fill first: it does not read what was there before, so that memory that is new is touched only once.
    const std::array pieces {
        fillAt(frame, between),
        pieceAt(frame, { 0, 0, shape.width, between.y }, shape.scale),
        pieceAt(frame, { 0, between.y, between.x, between.height }, shape.scale),
        pieceAt(frame, { right, between.y, shape.width - right, between.height }, shape.scale),
        pieceAt(frame, { 0, bottom, shape.width, shape.height - bottom }, shape.scale),
    };
    std::array<GskRenderNode*, pieces.size()> children {};
    std::ranges::transform(pieces, children.begin(), &RenderNodePointer::get);
    return RenderNodePointer(gsk_container_node_new(children.data(), children.size()));
}

} // namespace

bool FrameShape::operator==(const FrameShape& other) const
{
    return width == other.width && height == other.height && isSame(inside, other.inside)
        && cornerRadius == other.cornerRadius && scale == other.scale;
}

void FramePicture::append(GtkSnapshot* target, GskRenderNode* frame, const FrameShape& shape)
{
    auto look = lookOf(frame);
    if (shape != shape_ || look != look_) {
        shape_ = shape;
        look_ = std::move(look);
        pixels_.reset();
        return gtk_snapshot_append_node(target, frame);
    }
    if (!pixels_)
        pixels_ = drawPixels(frame, shape);
    gtk_snapshot_append_node(target, pixels_.get());
}

} // namespace desktop
