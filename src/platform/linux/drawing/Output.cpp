#include "platform/linux/drawing/Output.h"

#include "platform/linux/drawing/Painter.h"

#include <cstddef>
#include <cstdint>

namespace drawing {
namespace {

using Bytes = std::vector<unsigned char>;

GVariant* byteArray(const Bytes& bytes)
{
    return g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(), bytes.size(), 1);
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
        const auto* row = reinterpret_cast<const std::uint32_t*>(data + std::ptrdiff_t { y } * stride);
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

GVariant* pixmapsFor(const Request& request)
{
    GVariantBuilder pixmaps;
    g_variant_builder_init(&pixmaps, G_VARIANT_TYPE("a(iiay)"));
    const auto painter = painterFor(request);
    for (const auto size : request.sizes) {
        if (const auto surface = draw(painter, request, size))
            g_variant_builder_add(&pixmaps, "(ii@ay)", size, size, byteArray(straightPixels(surface, size)));
    }
    return g_variant_builder_end(&pixmaps);
}

} // namespace

GVariant* pngOf(const Surface& surface)
{
    Bytes file;
    const auto append = [](void* data, const unsigned char* bytes, unsigned count) {
        auto& appended = *static_cast<Bytes*>(data);
        appended.insert(appended.end(), bytes, bytes + count);
        return CAIRO_STATUS_SUCCESS;
    };
    if (surface && cairo_surface_write_to_png_stream(surface.get(), append, &file) != CAIRO_STATUS_SUCCESS)
        file.clear();
    return byteArray(file);
}

GVariant* answerTo(const Request& request)
{
    if (!request.isPng)
        return pixmapsFor(request);
    return pngOf(draw(painterFor(request), request, request.sizes.front()));
}

} // namespace drawing
