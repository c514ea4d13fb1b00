#include "platform/appkit/Button.h"

#include "platform/linux/appkit/ImageNative.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/SymbolPaintable.h"

namespace appkit {
namespace {

GtkWidget* makeButton()
{
    auto* button = gtk_button_new();
    gtk_widget_set_valign(button, GTK_ALIGN_CENTER);
    // Who types and clicks goes on typing where he did.
    gtk_widget_set_focus_on_click(button, FALSE);
    return button;
}

constexpr auto symbolSize = 16;

void showPicture(GtkButton* button, const Image& image)
{
    const auto scale = gtk_widget_get_scale_factor(GTK_WIDGET(button));
    const auto picture = desktop::makeSymbolPaintable(image.native().path, symbolSize, scale);
    auto* view = gtk_image_new_from_paintable(picture.get());
    // A picture fills its view, so the view must not be larger than the picture.
    gtk_widget_set_halign(view, GTK_ALIGN_CENTER);
    gtk_widget_set_valign(view, GTK_ALIGN_CENTER);
    gtk_button_set_child(button, view);
}

} // namespace

Button::Button(Action action)
    : View(makeNative(makeButton))
    , action_(std::move(action))
{
    native().connections.push_back(desktop::connect<void()>(widgetOf(*this), "clicked", [this] {
        // Held until the operation has returned, which may take the button away.
        if (const auto self = weak_from_this().lock())
            action_.send(*this);
    }));
    // On a screen of another scale the picture is drawn anew, to stay crisp.
    native().connections.push_back(desktop::connect<void(GParamSpec*)>(
        widgetOf(*this), "notify::scale-factor", [this](GParamSpec*) { setImage(image_); }));
}

std::shared_ptr<Button> Button::withImage(std::shared_ptr<Image> image, Action action)
{
    auto button = std::shared_ptr<Button>(new Button(std::move(action)));
    button->setImage(std::move(image));
    return button;
}

void Button::setBezelStyle(BezelStyle style)
{
    if (style == BezelStyle::TexturedRounded)
        gtk_widget_add_css_class(widgetOf(*this), "textured-rounded");
    else
        gtk_widget_remove_css_class(widgetOf(*this), "textured-rounded");
}

void Button::setImage(std::shared_ptr<Image> image)
{
    image_ = std::move(image);
    auto* button = GTK_BUTTON(widgetOf(*this));
    if (!image_) {
        gtk_button_set_child(button, nullptr);
        return;
    }
    showPicture(button, *image_);
    gtk_widget_add_css_class(widgetOf(*this), "image-button");
    const auto& description = image_->accessibilityDescription();
    if (!description.empty())
        gtk_accessible_update_property(GTK_ACCESSIBLE(button), GTK_ACCESSIBLE_PROPERTY_LABEL, description.c_str(), -1);
}

void Button::setEnabled(bool enabled)
{
    gtk_widget_set_sensitive(widgetOf(*this), enabled);
}

bool Button::isEnabled() const
{
    return gtk_widget_get_sensitive(widgetOf(*this));
}

void Button::performClick()
{
    if (isEnabled())
        action_.send(*this);
}

} // namespace appkit
