// perchly-draw FORMAT KIND SUBJECT COLOUR SIZE...
// Draws a small square picture in each of the sizes and writes the result to standard output.
//   FORMAT  pixmaps: a serialised a(iiay) of ARGB32, network order, straight alpha; png: a PNG file of the first size
//   KIND    file: SUBJECT is the path of a drawing; text: SUBJECT is the text
//   COLOUR  #rrggbb paints a drawing's coverage, or a text's letters, in that colour; own keeps a drawing's colours

#include <glib.h>
#include <librsvg/rsvg.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

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
using Bytes = std::vector<unsigned char>;
using Colour = std::array<double, 3>;

constexpr int smallestSize = 1;
constexpr int largestSize = 512;

struct Request {
    bool isPng = false;
    bool isText = false;
    std::string subject;
    std::optional<Colour> colour;
    std::vector<int> sizes;
};

std::optional<Colour> parseColour(const char* text)
{
    unsigned red = 0;
    unsigned green = 0;
    unsigned blue = 0;
    if (std::sscanf(text, "#%2x%2x%2x", &red, &green, &blue) != 3)
        return std::nullopt;
    return Colour { red / 255.0, green / 255.0, blue / 255.0 };
}

std::optional<Request> parse(int count, char** arguments)
{
    if (count < 6)
        return std::nullopt;
    Request request;
    request.isPng = std::string_view(arguments[1]) == "png";
    request.isText = std::string_view(arguments[2]) == "text";
    request.subject = arguments[3];
    request.colour = parseColour(arguments[4]);
    for (auto index = 5; index < count; ++index) {
        const auto size = std::atoi(arguments[index]);
        if (size < smallestSize || size > largestSize)
            return std::nullopt;
        request.sizes.push_back(size);
    }
    return request;
}

bool drawFile(cairo_t* context, const std::string& path, int size)
{
    std::unique_ptr<RsvgHandle, UnrefObject> drawing(rsvg_handle_new_from_file(path.c_str(), nullptr));
    if (!drawing)
        return false;
    const RsvgRectangle whole { 0, 0, static_cast<double>(size), static_cast<double>(size) };
    return rsvg_handle_render_document(drawing.get(), context, &whole, nullptr);
}

/// As large as the square allows, centred by what is inked. Emoji keep their own colours.
bool drawText(cairo_t* context, const Request& request, int size)
{
    const auto colour = request.colour.value_or(Colour {});
    cairo_set_source_rgb(context, colour[0], colour[1], colour[2]);
    std::unique_ptr<PangoLayout, UnrefObject> layout(pango_cairo_create_layout(context));
    auto* font = pango_font_description_from_string("Sans Medium");
    pango_font_description_set_absolute_size(font, size * 0.9 * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), font);
    pango_font_description_free(font);
    pango_layout_set_text(layout.get(), request.subject.c_str(), -1);

    PangoRectangle ink;
    pango_layout_get_pixel_extents(layout.get(), &ink, nullptr);
    if (ink.width <= 0 || ink.height <= 0)
        return false;
    const auto scale = std::min({ 1.0, static_cast<double>(size) / ink.width, static_cast<double>(size) / ink.height });
    cairo_translate(context, size / 2.0, size / 2.0);
    cairo_scale(context, scale, scale);
    cairo_translate(context, -(ink.x + ink.width / 2.0), -(ink.y + ink.height / 2.0));
    pango_cairo_show_layout(context, layout.get());
    return true;
}

Surface recoloured(const Surface& drawn, const Colour& colour, int size)
{
    Surface painted(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size, size));
    const Context context(cairo_create(painted.get()));
    cairo_set_source_rgb(context.get(), colour[0], colour[1], colour[2]);
    cairo_mask_surface(context.get(), drawn.get(), 0, 0);
    return painted;
}

Surface draw(const Request& request, int size)
{
    Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size, size));
    const Context context(cairo_create(surface.get()));
    const bool drawn
        = request.isText ? drawText(context.get(), request, size) : drawFile(context.get(), request.subject, size);
    if (!drawn)
        return nullptr;
    cairo_surface_flush(surface.get());
    if (request.colour && !request.isText)
        return recoloured(surface, *request.colour, size);
    return surface;
}

/// Cairo holds premultiplied pixels as words; the bus takes straight ones as bytes A, R, G, B.
Bytes straightPixels(const Surface& surface, int size)
{
    cairo_surface_flush(surface.get());
    const auto stride = cairo_image_surface_get_stride(surface.get());
    const auto* data = cairo_image_surface_get_data(surface.get());
    Bytes bytes;
    bytes.reserve(static_cast<std::size_t>(size) * static_cast<std::size_t>(size) * 4);
    for (auto y = 0; y < size; ++y) {
        const auto* row = reinterpret_cast<const guint32*>(data + static_cast<std::ptrdiff_t>(y) * stride);
        for (auto x = 0; x < size; ++x) {
            const auto alpha = row[x] >> 24U;
            bytes.push_back(static_cast<unsigned char>(alpha));
            for (const auto shift : { 16U, 8U, 0U }) {
                const auto channel = (row[x] >> shift) & 0xffU;
                bytes.push_back(static_cast<unsigned char>(alpha ? (channel * 255 + alpha / 2) / alpha : 0));
            }
        }
    }
    return bytes;
}

bool writeAll(const void* data, std::size_t size)
{
    return std::fwrite(data, 1, size, stdout) == size && std::fflush(stdout) == 0;
}

bool writePixmaps(const Request& request)
{
    GVariantBuilder pixmaps;
    g_variant_builder_init(&pixmaps, G_VARIANT_TYPE("a(iiay)"));
    for (const auto size : request.sizes) {
        const auto surface = draw(request, size);
        if (!surface)
            return false;
        const auto pixels = straightPixels(surface, size);
        g_variant_builder_add(&pixmaps, "(ii@ay)", size, size,
            g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, pixels.data(), pixels.size(), 1));
    }
    auto* value = g_variant_ref_sink(g_variant_builder_end(&pixmaps));
    const bool written = writeAll(g_variant_get_data(value), g_variant_get_size(value));
    g_variant_unref(value);
    return written;
}

bool writePng(const Request& request)
{
    const auto surface = draw(request, request.sizes.front());
    if (!surface)
        return false;
    const auto write = [](void*, const unsigned char* data, unsigned size) {
        return writeAll(data, size) ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
    };
    return cairo_surface_write_to_png_stream(surface.get(), write, nullptr) == CAIRO_STATUS_SUCCESS;
}

} // namespace

int main(int count, char** arguments)
{
    const auto request = parse(count, arguments);
    if (!request) {
        std::fputs("usage: perchly-draw pixmaps|png file|text SUBJECT #rrggbb|own SIZE...\n", stderr);
        return 2;
    }
    const bool written = request->isPng ? writePng(*request) : writePixmaps(*request);
    // At once: all is written, and the font libraries' tidying up is of no use to a process that ends.
    std::_Exit(written ? 0 : 1);
}
