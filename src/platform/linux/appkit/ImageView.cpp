#include "platform/appkit/ImageView.h"

#include "platform/linux/appkit/ImageNative.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/DrawingPaintable.h"
#include "platform/linux/desktop/SymbolPaintable.h"

namespace appkit {
namespace {

/// What an image is drawn at that has no size of its own.
constexpr auto usualSize = 16;

int sizeOf(const Image& image)
{
    const auto size = static_cast<int>(std::max(image.size().width, image.size().height));
    return size > 0 ? size : usualSize;
}

desktop::ObjectPointer<GdkPaintable> textureFrom(const std::string& data)
{
    auto* bytes = g_bytes_new(data.data(), data.size());
    auto* texture = gdk_texture_new_from_bytes(bytes, nullptr);
    g_bytes_unref(bytes);
    return desktop::ObjectPointer<GdkPaintable>(texture ? GDK_PAINTABLE(texture) : nullptr);
}

desktop::ObjectPointer<GdkPaintable> paintableOf(const Image& image, int scale)
{
    const auto& native = image.native();
    if (!native.data.empty())
        return textureFrom(native.data);
    return image.isTemplate() ? desktop::makeSymbolPaintable(native.path, sizeOf(image), scale)
                              : desktop::makeDrawingPaintable(native.path, sizeOf(image), scale);
}

/// Only this one of the toolkit's two widgets for pictures paints a template in the colour of its surroundings.
GtkWidget* makeTemplateView()
{
    auto* view = gtk_image_new();
    gtk_widget_set_halign(view, GTK_ALIGN_CENTER);
    gtk_widget_set_valign(view, GTK_ALIGN_CENTER);
    return view;
}

GtkWidget* makeView(bool isTemplate)
{
    if (isTemplate)
        return makeTemplateView();
    auto* view = gtk_picture_new();
    gtk_picture_set_content_fit(GTK_PICTURE(view), GTK_CONTENT_FIT_SCALE_DOWN);
    return view;
}

void show(const ImageView& view)
{
    const auto& image = view.image();
    if (!image)
        return;
    auto* widget = widgetOf(view);
    const auto paintable = paintableOf(*image, gtk_widget_get_scale_factor(widget));
    if (GTK_IS_PICTURE(widget))
        gtk_picture_set_paintable(GTK_PICTURE(widget), paintable.get());
    else
        gtk_image_set_from_paintable(GTK_IMAGE(widget), paintable.get());
}

} // namespace

ImageView::ImageView(std::shared_ptr<Image> image)
    : View(makeNative([&image] { return makeView(image && image->isTemplate()); }))
    , image_(std::move(image))
{
    show(*this);
    // On a screen of another scale the picture is drawn anew, to stay crisp.
    native().connections.push_back(desktop::connect<void(GParamSpec*)>(
        widgetOf(*this), "notify::scale-factor", [this](GParamSpec*) { show(*this); }));
    if (image_ && !image_->accessibilityDescription().empty())
        setAccessibilityLabel(image_->accessibilityDescription());
    else
        g_object_set(widgetOf(*this), "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr);
}

} // namespace appkit
