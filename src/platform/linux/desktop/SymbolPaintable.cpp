#include "platform/linux/desktop/SymbolPaintable.h"

#include <cmath>
#include <cstddef>
#include <map>
#include <system_error>
#include <tuple>

namespace desktop {
namespace {

struct SymbolPaintable {
    GObject parent;
    GdkPixbuf* coverage; // null for a drawing that cannot be read: nothing is painted
    GdkTexture* texture; // in the colour that was last asked for; null before
    GdkRGBA color;
    int size;
};

SymbolPaintable& self(gpointer instance)
{
    return *static_cast<SymbolPaintable*>(instance);
}

void finalize(GObject* object)
{
    g_clear_object(&self(object).coverage);
    g_clear_object(&self(object).texture);
    G_OBJECT_CLASS(g_type_class_peek(G_TYPE_OBJECT))->finalize(object);
}

void initializeClass(gpointer instanceClass, gpointer)
{
    G_OBJECT_CLASS(instanceClass)->finalize = finalize;
}

/// The colour wherever the drawing is, weakened by its coverage there.
GdkTexture* colored(GdkPixbuf* coverage, const GdkRGBA& color)
{
    const auto width = gdk_pixbuf_get_width(coverage);
    const auto height = gdk_pixbuf_get_height(coverage);
    const auto rowLength = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(coverage));
    const auto* pixels = gdk_pixbuf_read_pixels(coverage);
    constexpr std::size_t channels = 4;
    auto* bytes = g_byte_array_new();
    g_byte_array_set_size(bytes, static_cast<guint>(channels * static_cast<std::size_t>(width * height)));
    auto* target = bytes->data;
    for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y) {
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x) {
            const auto alpha = color.alpha * static_cast<float>(pixels[y * rowLength + channels * x + 3]);
            for (const auto part : { color.red, color.green, color.blue, 1.0F })
                *target++ = static_cast<guint8>(std::lround(alpha * part));
        }
    }
    auto* contents = g_byte_array_free_to_bytes(bytes);
    auto* texture = gdk_memory_texture_new(
        width, height, GDK_MEMORY_R8G8B8A8_PREMULTIPLIED, contents, channels * static_cast<std::size_t>(width));
    g_bytes_unref(contents);
    return texture;
}

void paint(SymbolPaintable& symbol, GdkSnapshot* snapshot, double width, double height, const GdkRGBA& color)
{
    if (!symbol.coverage)
        return;
    if (!symbol.texture || !gdk_rgba_equal(&symbol.color, &color)) {
        g_clear_object(&symbol.texture);
        symbol.texture = colored(symbol.coverage, color);
        symbol.color = color;
    }
    const graphene_rect_t bounds { { 0, 0 }, { static_cast<float>(width), static_cast<float>(height) } };
    gtk_snapshot_append_texture(snapshot, symbol.texture, &bounds);
}

void initializePaintable(gpointer interface, gpointer)
{
    auto& paintable = *static_cast<GdkPaintableInterface*>(interface);
    paintable.snapshot = [](GdkPaintable* instance, GdkSnapshot* snapshot, double width, double height) {
        paint(self(instance), snapshot, width, height, { 0, 0, 0, 1 });
    };
    paintable.get_intrinsic_width = [](GdkPaintable* instance) { return self(instance).size; };
    paintable.get_intrinsic_height = [](GdkPaintable* instance) { return self(instance).size; };
}

void initializeSymbolicPaintable(gpointer interface, gpointer)
{
    auto& paintable = *static_cast<GtkSymbolicPaintableInterface*>(interface);
    paintable.snapshot_symbolic = [](GtkSymbolicPaintable* instance, GdkSnapshot* snapshot, double width, double height,
                                      const GdkRGBA* colors, gsize count) {
        paint(self(instance), snapshot, width, height, count > 0 ? colors[GTK_SYMBOLIC_COLOR_FOREGROUND] : GdkRGBA {});
    };
}

GType symbolPaintableType()
{
    static const auto type = [] {
        const auto made = g_type_register_static_simple(G_TYPE_OBJECT, "PerchlySymbolPaintable", sizeof(GObjectClass),
            initializeClass, sizeof(SymbolPaintable), nullptr, static_cast<GTypeFlags>(0));
        const GInterfaceInfo paintable { initializePaintable, nullptr, nullptr };
        g_type_add_interface_static(made, GDK_TYPE_PAINTABLE, &paintable);
        const GInterfaceInfo symbolic { initializeSymbolicPaintable, nullptr, nullptr };
        g_type_add_interface_static(made, GTK_TYPE_SYMBOLIC_PAINTABLE, &symbolic);
        return made;
    }();
    return type;
}

ObjectPointer<GdkPaintable> readSymbolPaintable(const std::filesystem::path& drawing, int size, int scale)
{
    auto made = adopt(static_cast<GdkPaintable*>(g_object_new(symbolPaintableType(), nullptr)));
    auto& symbol = self(made.get());
    symbol.size = size;
    symbol.coverage = gdk_pixbuf_new_from_file_at_size(drawing.c_str(), size * scale, size * scale, nullptr);
    return made;
}

} // namespace

ObjectPointer<GdkPaintable> makeSymbolPaintable(const std::filesystem::path& drawing, int size, int scale)
{
    using Key = std::tuple<std::filesystem::path, std::filesystem::file_time_type, int, int>;
    // Far more than buttons of one window show. Reading a drawing takes longer than all else that a button does.
    constexpr std::size_t enough = 64;
    static std::map<Key, ObjectPointer<GdkPaintable>> known;
    std::error_code ignored;
    const Key key(drawing, std::filesystem::last_write_time(drawing, ignored), size, scale);
    auto found = known.find(key);
    if (found == known.end()) {
        if (known.size() == enough)
            known.clear();
        found = known.emplace(key, readSymbolPaintable(drawing, size, scale)).first;
    }
    return retain(found->second.get());
}

} // namespace desktop
