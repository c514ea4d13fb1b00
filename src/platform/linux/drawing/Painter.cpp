#include "platform/linux/drawing/Painter.h"

#include "platform/linux/drawing/PictureFile.h"
#include "platform/linux/drawing/TextPainter.h"

#include <librsvg/rsvg.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace drawing {
namespace {

/// A whole number of pixels, with as many left over on either side: edges that fall on pixels in the drawing do so in
/// the picture.
int drawnSide(int size, int percent)
{
    const auto exact = size * percent / 100.0;
    const auto side = static_cast<int>(std::lround((exact - size) / 2)) * 2 + size;
    return std::clamp(side, std::min(2 - size % 2, size), size);
}

Painter painterForFile(const Request& request)
{
    const std::shared_ptr<RsvgHandle> drawing(
        rsvg_handle_new_from_file(request.value.c_str(), nullptr), [](RsvgHandle* handle) {
            if (handle)
                g_object_unref(handle);
        });
    if (!drawing)
        return nullptr;
    return [drawing, percent = request.percent](cairo_t* context, int size) {
        const double side = drawnSide(size, percent);
        const auto margin = (size - side) / 2;
        const RsvgRectangle place { margin, margin, side, side };
        return rsvg_handle_render_document(drawing.get(), context, &place, nullptr) != FALSE;
    };
}

/// A picture of pixels is sharpest as it is, so it stays that where this makes no great difference.
double scaleFor(int pictureSide, int size, int percent)
{
    constexpr auto unnoticed = 0.15;
    const double side = drawnSide(size, percent);
    if (pictureSide <= size && std::abs(pictureSide - side) <= side * unnoticed)
        return 1;
    return side / pictureSide;
}

Painter painterForData(const Request& request)
{
    const std::shared_ptr<cairo_surface_t> picture(
        decodedPicture(request.value).release(), [](cairo_surface_t* surface) { cairo_surface_destroy(surface); });
    if (!picture)
        return nullptr;
    const auto smallest = request.sizes.empty() ? 0 : std::ranges::min(request.sizes);
    return [picture, smallest, percent = request.percent](cairo_t* context, int size) {
        const auto side = cairo_image_surface_get_width(picture.get());
        // Enlarged so much it would be but a blur, and take its room in every message.
        constexpr auto mostEnlarged = 2;
        if (size > smallest && drawnSide(size, percent) > mostEnlarged * side)
            return false;
        const auto scale = scaleFor(side, size, percent);
        const auto margin = (size - side * scale) / 2;
        cairo_translate(context, scale == 1 ? std::floor(margin) : margin, scale == 1 ? std::floor(margin) : margin);
        cairo_scale(context, scale, scale);
        cairo_set_source_surface(context, picture.get(), 0, 0);
        cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_GOOD);
        // Without it the edges would fade.
        cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
        cairo_rectangle(context, 0, 0, side, side);
        cairo_fill(context);
        return cairo_status(context) == CAIRO_STATUS_SUCCESS;
    };
}

Surface recoloured(const Surface& drawn, const Colour& colour, int size)
{
    auto painted = squareSurface(size);
    const Context context(cairo_create(painted.get()));
    cairo_set_source_rgb(context.get(), colour[0], colour[1], colour[2]);
    cairo_mask_surface(context.get(), drawn.get(), 0, 0);
    return painted;
}

} // namespace

Painter painterFor(const Request& request)
{
    switch (request.kind) {
    case Request::Kind::File:
        return painterForFile(request);
    case Request::Kind::Data:
        return painterForData(request);
    case Request::Kind::Text:
        break;
    }
    return painterForText(request);
}

Surface draw(const Painter& painter, const Request& request, int size)
{
    auto surface = squareSurface(size);
    if (!surface || !painter)
        return nullptr;
    const Context context(cairo_create(surface.get()));
    if (!painter(context.get(), size))
        return nullptr;
    cairo_surface_flush(surface.get());
    // A text's letters have the colour already, and what it has beside letters keeps its own.
    if (request.colour && request.kind != Request::Kind::Text)
        return recoloured(surface, *request.colour, size);
    return surface;
}

} // namespace drawing
