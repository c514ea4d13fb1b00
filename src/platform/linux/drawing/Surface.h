#pragma once

#include <cairo.h>
#include <glib-object.h>

#include <array>
#include <memory>

/// What perchly-draw is made of.
namespace drawing {

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct DestroyContext {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
struct UnrefObject {
    void operator()(void* object) const { g_object_unref(object); }
};

using Surface = std::unique_ptr<cairo_surface_t, DestroySurface>;
using Context = std::unique_ptr<cairo_t, DestroyContext>;
using Colour = std::array<double, 3>;

/// Transparent. Null where there is no memory for it.
[[nodiscard]] inline Surface squareSurface(int size)
{
    Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size, size));
    return cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS ? std::move(surface) : nullptr;
}

} // namespace drawing
