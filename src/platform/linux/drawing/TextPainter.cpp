#include "platform/linux/drawing/TextPainter.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace drawing {
namespace {

/// More letters than that could not be told from each other, and many more could not be seen at all.
constexpr glong mostCharacters = 12;

using Layout = std::unique_ptr<PangoLayout, UnrefObject>;

struct Ink {
    double width;
    double height;
};

std::string drawable(const std::string& text)
{
    auto* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    auto* shortened = g_utf8_substring(valid, 0, std::min(g_utf8_strlen(valid, -1), mostCharacters));
    std::string result(shortened);
    g_free(shortened);
    g_free(valid);
    return result;
}

/// Stems and bars fall on whole rows of pixels, widths stay the font's own.
Layout layoutOf(cairo_t* context, const std::string& text)
{
    Layout layout(pango_cairo_create_layout(context));
    auto* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(pango_layout_get_context(layout.get()), options);
    cairo_font_options_destroy(options);
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    return layout;
}

Ink inkOf(PangoLayout* layout)
{
    PangoRectangle ink;
    pango_layout_get_extents(layout, &ink, nullptr);
    const auto pixels = [](int units) { return units / static_cast<double>(PANGO_SCALE); };
    return { pixels(ink.width), pixels(ink.height) };
}

void setFont(PangoLayout* layout, double size, int weight)
{
    auto* font = pango_font_description_from_string("Sans");
    pango_font_description_set_weight(font, static_cast<PangoWeight>(weight));
    pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
    pango_layout_set_font_description(layout, font);
    pango_font_description_free(font);
}

/// Measured once for all sizes: every new size of a font takes its time. Nothing for a text without ink.
Ink inkOfUnit(const std::string& text, int weight)
{
    constexpr auto unit = 64.0;
    const auto surface = squareSurface(1);
    const Context context(cairo_create(surface.get()));
    const auto layout = layoutOf(context.get(), text);
    setFont(layout.get(), unit, weight);
    const auto ink = inkOf(layout.get());
    return { ink.width / unit, ink.height / unit };
}

/// No wider than the room and no higher than the font's size: emoji are larger than that, and than anything else that
/// is drawn at it.
double fontSizeFor(const Ink& unit, double wanted, double room)
{
    return std::min({ wanted, room / unit.width, std::min(wanted, room) / unit.height });
}

/// Draws the text with its beginning a square away from the edges of a surface of three squares by three, where
/// nothing cuts it off.
Surface freelyDrawn(PangoLayout* layout, const Colour& colour, int size)
{
    auto surface = squareSurface(3 * size);
    if (!surface)
        return nullptr;
    const Context context(cairo_create(surface.get()));
    cairo_set_source_rgb(context.get(), colour[0], colour[1], colour[2]);
    cairo_move_to(context.get(), size, size);
    pango_cairo_show_layout(context.get(), layout);
    cairo_surface_flush(surface.get());
    return surface;
}

struct Box {
    int left;
    int top;
    int right;
    int bottom;
    [[nodiscard]] int width() const { return right - left; }
    [[nodiscard]] int height() const { return bottom - top; }
};

/// Where glyphs ended up: hinting and whole pixels make that differ from what the font says.
Box drawnBox(const Surface& surface)
{
    const auto side = cairo_image_surface_get_width(surface.get());
    const auto stride = cairo_image_surface_get_stride(surface.get());
    const auto* data = cairo_image_surface_get_data(surface.get());
    Box box { side, side, 0, 0 };
    for (auto y = 0; y < side; ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(data + std::ptrdiff_t { y } * stride);
        for (auto x = 0; x < side; ++x) {
            if (row[x] >> 24U)
                box = { std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), y + 1 };
        }
    }
    return box;
}

bool paint(cairo_t* context, const Request& request, const std::string& text, const Ink& unit, int size)
{
    if (unit.width <= 0 || unit.height <= 0)
        return false;
    const auto layout = layoutOf(context, text);
    // A pixel on either side stays free: what touches the edge looks cut off.
    const auto most = std::max(1, size - 2);
    auto fontSize = fontSizeFor(unit, size * request.percent / 100.0, most);
    Surface drawn;
    Box box {};
    for (auto isFitting = false; !isFitting;) {
        setFont(layout.get(), fontSize, request.weight);
        drawn = freelyDrawn(layout.get(), request.colour.value_or(Colour {}), size);
        if (!drawn)
            return false;
        box = drawnBox(drawn);
        isFitting = box.width() <= most && box.height() <= most;
        fontSize *= 0.96;
    }
    // By whole pixels, so that everything stays as sharp as it is.
    const auto left = (size - box.width()) / 2 - box.left;
    const auto top = (size - box.height()) / 2 - box.top;
    cairo_set_source_surface(context, drawn.get(), left, top);
    cairo_paint(context);
    return box.width() > 0 && cairo_status(context) == CAIRO_STATUS_SUCCESS;
}

} // namespace

Painter painterForText(const Request& request)
{
    const auto text = drawable(request.value);
    return [request, text, unit = inkOfUnit(text, request.weight)](
               cairo_t* context, int size) { return paint(context, request, text, unit, size); };
}

} // namespace drawing
