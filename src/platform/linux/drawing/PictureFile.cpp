#include "platform/linux/drawing/PictureFile.h"

#include "platform/linux/drawing/IconFile.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <librsvg/rsvg.h>
#include <webp/decode.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace drawing {
namespace {

using namespace std::string_view_literals;
using Pixels = std::unique_ptr<GdkPixbuf, UnrefObject>;

/// Of the file: more would not decode within the memory that there is.
constexpr std::int64_t mostPixels = 40'000'000;

bool isTooLarge(int width, int height)
{
    return std::int64_t { width } * height > mostPixels;
}

/// The loader for files that begin so. Only these: there may be loaders about that nobody has thought of here.
const char* loaderFor(std::string_view bytes)
{
    constexpr std::pair<std::string_view, const char*> loaders[] = {
        { "\x89PNG\r\n\x1a\n"sv, "png" },
        { "\xff\xd8\xff"sv, "jpeg" },
        { "GIF8"sv, "gif" },
        { "\0\0\1\0"sv, "ico" },
        { "BM"sv, "bmp" },
    };
    for (const auto& [beginning, loader] : loaders) {
        if (bytes.starts_with(beginning))
            return loader;
    }
    return nullptr;
}

bool isWebP(std::string_view bytes)
{
    return bytes.starts_with("RIFF") && bytes.substr(std::min<std::size_t>(8, bytes.size())).starts_with("WEBP");
}

/// Zero makes the loader give up before it takes memory for the pixels.
void refuseTooLarge(GdkPixbufLoader* loader, int width, int height, gpointer)
{
    if (isTooLarge(width, height))
        gdk_pixbuf_loader_set_size(loader, 0, 0);
}

Pixels loadedPixels(const std::string& bytes, const char* type)
{
    const std::unique_ptr<GdkPixbufLoader, UnrefObject> loader(gdk_pixbuf_loader_new_with_type(type, nullptr));
    if (!loader)
        return nullptr;
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(refuseTooLarge), nullptr);
    const bool isWritten
        = gdk_pixbuf_loader_write(loader.get(), reinterpret_cast<const guchar*>(bytes.data()), bytes.size(), nullptr);
    const bool isWhole = gdk_pixbuf_loader_close(loader.get(), nullptr);
    auto* pixels = isWritten && isWhole ? gdk_pixbuf_loader_get_pixbuf(loader.get()) : nullptr;
    return Pixels(pixels ? gdk_pixbuf_apply_embedded_orientation(pixels) : nullptr);
}

Pixels webPPixels(const std::string& bytes)
{
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    int width = 0;
    int height = 0;
    if (!WebPGetInfo(data, bytes.size(), &width, &height) || isTooLarge(width, height))
        return nullptr;
    auto* pixels = WebPDecodeRGBA(data, bytes.size(), &width, &height);
    if (!pixels)
        return nullptr;
    const auto release = +[](guchar* memory, gpointer) { WebPFree(memory); };
    return Pixels(
        gdk_pixbuf_new_from_data(pixels, GDK_COLORSPACE_RGB, TRUE, 8, width, height, width * 4, release, nullptr));
}

Pixels reduced(Pixels pixels)
{
    const auto width = gdk_pixbuf_get_width(pixels.get());
    const auto height = gdk_pixbuf_get_height(pixels.get());
    const auto longest = std::max(width, height);
    if (longest <= largestPicture)
        return pixels;
    const auto shorten
        = [&](int side) { return std::max(1, static_cast<int>(std::int64_t { side } * largestPicture / longest)); };
    return Pixels(gdk_pixbuf_scale_simple(pixels.get(), shorten(width), shorten(height), GDK_INTERP_BILINEAR));
}

/// Premultiplied, as Cairo holds them.
std::uint32_t word(const guchar* pixel, bool hasAlpha)
{
    const std::uint32_t alpha = hasAlpha ? pixel[3] : 255;
    const auto channel = [&](int index) { return (pixel[index] * alpha + 127) / 255; };
    return alpha << 24U | channel(0) << 16U | channel(1) << 8U | channel(2);
}

/// In the middle of a square.
Surface squared(const Pixels& pixels)
{
    const auto width = gdk_pixbuf_get_width(pixels.get());
    const auto height = gdk_pixbuf_get_height(pixels.get());
    const auto side = std::max(width, height);
    auto surface = squareSurface(side);
    if (!surface)
        return nullptr;
    const bool hasAlpha = gdk_pixbuf_get_has_alpha(pixels.get());
    const auto* source = gdk_pixbuf_read_pixels(pixels.get());
    const auto sourceStride = gdk_pixbuf_get_rowstride(pixels.get());
    auto* target = cairo_image_surface_get_data(surface.get());
    const auto targetStride = cairo_image_surface_get_stride(surface.get());
    for (auto y = 0; y < height; ++y) {
        const auto* from = source + std::ptrdiff_t { y } * sourceStride;
        auto* row
            = reinterpret_cast<std::uint32_t*>(target + std::ptrdiff_t { y + (side - height) / 2 } * targetStride);
        for (auto x = 0; x < width; ++x)
            row[(side - width) / 2 + x] = word(from + std::ptrdiff_t { x } * (hasAlpha ? 4 : 3), hasAlpha);
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

/// Without a base address a drawing can refer to nothing but itself.
Surface renderedDrawing(const std::string& bytes)
{
    const std::unique_ptr<RsvgHandle, UnrefObject> drawing(
        rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(bytes.data()), bytes.size(), nullptr));
    auto surface = squareSurface(largestPicture);
    if (!drawing || !surface)
        return nullptr;
    const Context context(cairo_create(surface.get()));
    const RsvgRectangle whole { 0, 0, largestPicture, largestPicture };
    if (!rsvg_handle_render_document(drawing.get(), context.get(), &whole, nullptr))
        return nullptr;
    return surface;
}

} // namespace

bool isDrawing(const std::string& bytes)
{
    std::string_view text(bytes);
    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
    const auto start = text.find_first_not_of(" \t\r\n");
    return start != std::string_view::npos && text[start] == '<';
}

Surface halved(const Surface& picture)
{
    const auto side = cairo_image_surface_get_width(picture.get());
    auto half = squareSurface(std::max(1, side / 2));
    if (!half)
        return nullptr;
    const Context context(cairo_create(half.get()));
    cairo_scale(context.get(), 0.5, 0.5);
    cairo_set_source_surface(context.get(), picture.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(context.get()), CAIRO_FILTER_GOOD);
    cairo_paint(context.get());
    cairo_surface_flush(half.get());
    return half;
}

Surface decodedPicture(const std::string& bytes)
{
    if (isDrawing(bytes))
        return renderedDrawing(bytes);
    if (const auto inner = embeddedPicture(bytes))
        return decodedPicture(*inner);
    const auto* loader = loaderFor(bytes);
    if (!loader && !isWebP(bytes))
        return nullptr;
    auto pixels = loader ? loadedPixels(bytes, loader) : webPPixels(bytes);
    if (pixels)
        pixels = reduced(std::move(pixels));
    return pixels ? squared(pixels) : nullptr;
}

} // namespace drawing
