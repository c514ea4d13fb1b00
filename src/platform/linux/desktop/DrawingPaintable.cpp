#include "platform/linux/desktop/DrawingPaintable.h"

#include <cmath>
#include <string>

namespace desktop {
namespace {

/// What C++ objects the paintable has.
struct Drawing {
    std::string path;
    int size = 0;
    int scale = 1;
    /// As it was last drawn, for the length of its longer side in device pixels.
    ObjectPointer<GdkTexture> texture;
    int drawnLength = 0;
};

struct DrawingPaintable {
    GObject parent;
    Drawing* drawing;
};

Drawing& drawingOf(gpointer instance)
{
    return *static_cast<DrawingPaintable*>(instance)->drawing;
}

void initialize(GTypeInstance* instance, gpointer)
{
    reinterpret_cast<DrawingPaintable*>(instance)->drawing = new Drawing;
}

void finalize(GObject* object)
{
    delete &drawingOf(object);
    G_OBJECT_CLASS(g_type_class_peek(G_TYPE_OBJECT))->finalize(object);
}

void initializeClass(gpointer instanceClass, gpointer)
{
    G_OBJECT_CLASS(instanceClass)->finalize = finalize;
}

void drawFor(Drawing& drawing, int length)
{
    if (drawing.drawnLength == length)
        return;
    drawing.drawnLength = length;
    const auto pixels = adopt(gdk_pixbuf_new_from_file_at_size(drawing.path.c_str(), length, length, nullptr));
    drawing.texture.reset(pixels ? gdk_texture_new_for_pixbuf(pixels.get()) : nullptr);
}

void snapshot(GdkPaintable* instance, GdkSnapshot* snapshot, double width, double height)
{
    auto& drawing = drawingOf(instance);
    drawFor(drawing, static_cast<int>(std::ceil(std::max(width, height) * drawing.scale)));
    if (drawing.texture)
        gdk_paintable_snapshot(GDK_PAINTABLE(drawing.texture.get()), snapshot, width, height);
}

void initializePaintable(gpointer interface, gpointer)
{
    auto& paintable = *static_cast<GdkPaintableInterface*>(interface);
    paintable.snapshot = snapshot;
    paintable.get_intrinsic_width = [](GdkPaintable* instance) { return drawingOf(instance).size; };
    paintable.get_intrinsic_height = [](GdkPaintable* instance) { return drawingOf(instance).size; };
}

GType drawingPaintableType()
{
    static const auto type = [] {
        const auto made = g_type_register_static_simple(G_TYPE_OBJECT, "PerchlyDrawingPaintable", sizeof(GObjectClass),
            initializeClass, sizeof(DrawingPaintable), initialize, static_cast<GTypeFlags>(0));
        const GInterfaceInfo paintable { initializePaintable, nullptr, nullptr };
        g_type_add_interface_static(made, GDK_TYPE_PAINTABLE, &paintable);
        return made;
    }();
    return type;
}

} // namespace

ObjectPointer<GdkPaintable> makeDrawingPaintable(const std::filesystem::path& drawing, int size, int scale)
{
    auto made = adopt(static_cast<GdkPaintable*>(g_object_new(drawingPaintableType(), nullptr)));
    auto& itself = drawingOf(made.get());
    itself.path = drawing.string();
    itself.size = size;
    itself.scale = scale;
    return made;
}

} // namespace desktop
