#include "platform/linux/desktop/SymbolPaintable.h"

#include <cstddef>
#include <map>
#include <system_error>
#include <tuple>

namespace desktop {
namespace {

struct SymbolPaintable {
    GObject parent;
    GdkTexture* coverage; // null for a drawing that cannot be read: nothing is painted
    int size;
};

SymbolPaintable& self(gpointer instance)
{
    return *static_cast<SymbolPaintable*>(instance);
}

void finalize(GObject* object)
{
    g_clear_object(&self(object).coverage);
    G_OBJECT_CLASS(g_type_class_peek(G_TYPE_OBJECT))->finalize(object);
}

void initializeClass(gpointer instanceClass, gpointer)
{
    G_OBJECT_CLASS(instanceClass)->finalize = finalize;
}

void paint(SymbolPaintable& symbol, GdkSnapshot* snapshot, double width, double height, const GdkRGBA& color)
{
    if (!symbol.coverage)
        return;
    // Every pixel gets the colour; its own alpha, weakened by the colour's, stays.
    graphene_matrix_t keepAlpha;
    const float values[16] = { 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, color.alpha };
    graphene_matrix_init_from_float(&keepAlpha, values);
    graphene_vec4_t setColor;
    graphene_vec4_init(&setColor, color.red, color.green, color.blue, 0);
    const graphene_rect_t bounds { { 0, 0 }, { static_cast<float>(width), static_cast<float>(height) } };
    gtk_snapshot_push_color_matrix(snapshot, &keepAlpha, &setColor);
    gtk_snapshot_append_texture(snapshot, symbol.coverage, &bounds);
    gtk_snapshot_pop(snapshot);
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
    const auto pixels = adopt(gdk_pixbuf_new_from_file_at_size(drawing.c_str(), size * scale, size * scale, nullptr));
    if (pixels)
        symbol.coverage = gdk_texture_new_for_pixbuf(pixels.get());
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
