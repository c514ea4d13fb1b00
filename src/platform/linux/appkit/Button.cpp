#include "platform/appkit/Button.h"

#include "platform/linux/appkit/ColorNative.h"
#include "platform/linux/appkit/FontNative.h"
#include "platform/linux/appkit/ImageNative.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/SymbolPaintable.h"

namespace appkit {
namespace {

GtkWidget* prepared(GtkWidget* button)
{
    gtk_widget_set_valign(button, GTK_ALIGN_CENTER);
    // Who types and clicks goes on typing where he did.
    gtk_widget_set_focus_on_click(button, FALSE);
    return button;
}

/// Its title, where it has one, or null.
GtkWidget* labelIn(GtkWidget* button)
{
    auto* child = gtk_widget_get_first_child(button);
    while (child && !GTK_IS_LABEL(child))
        child = gtk_widget_get_next_sibling(child);
    return child;
}

constexpr auto recessed = "recessed";
constexpr auto borderless = "borderless";

/// Marks the button or not. Neither of these has a frame, but a light ground under the pointer.
void setFrameless(GtkWidget* button, const char* mark, bool isFrameless)
{
    if (!GTK_IS_BUTTON(button))
        return;
    if (isFrameless)
        gtk_widget_add_css_class(button, mark);
    else
        gtk_widget_remove_css_class(button, mark);
    const auto isFramed = !gtk_widget_has_css_class(button, recessed) && !gtk_widget_has_css_class(button, borderless);
    gtk_button_set_has_frame(GTK_BUTTON(button), isFramed);
}

constexpr auto symbolSize = 16;

/// Null: one of the same size with nothing on it.
void showPicture(GtkButton* button, const Image* image)
{
    auto* view = gtk_image_new();
    if (image) {
        const auto scale = gtk_widget_get_scale_factor(GTK_WIDGET(button));
        const auto picture = desktop::makeSymbolPaintable(image->native().path, symbolSize, scale);
        gtk_image_set_from_paintable(GTK_IMAGE(view), picture.get());
    }
    // A picture fills its view, so the view must not be larger than the picture.
    gtk_widget_set_halign(view, GTK_ALIGN_CENTER);
    gtk_widget_set_valign(view, GTK_ALIGN_CENTER);
    gtk_button_set_child(button, view);
}

/// GTK's own mark of a button that a key has pressed: it acts a moment later, and nothing can stop it.
constexpr auto pressedByKey = "keyboard-activating";

struct Press {
    /// Of a key.
    bool isDropped = false;
    /// It is over, and what it stands for is being done.
    bool isSent = false;
};

} // namespace

Button::Button(std::unique_ptr<Native> native, Action action)
    : View(std::move(native))
    , action_(std::move(action))
{
    auto* widget = widgetOf(*this);
    const auto press = std::make_shared<Press>();
    this->native().helper = press;
    const auto* signal = GTK_IS_CHECK_BUTTON(widget) ? "toggled" : "clicked";
    this->native().connections.push_back(desktop::connect<void()>(widget, signal, [this, press] {
        if (std::exchange(press->isDropped, false))
            return;
        // Held until the operation has returned, which may take the button away.
        const auto self = weak_from_this().lock();
        if (!self)
            return;
        press->isSent = true;
        action_.send(*this);
        press->isSent = false;
    }));
}

std::shared_ptr<Button> Button::withImage(std::shared_ptr<Image> image, Action action)
{
    const auto make = [] { return prepared(gtk_button_new()); };
    auto button = std::shared_ptr<Button>(new Button(makeNative(make), std::move(action)));
    button->setImage(std::move(image));
    // On a screen of another scale the picture is drawn anew, to stay crisp.
    button->native().connections.push_back(
        desktop::connect<void(GParamSpec*)>(widgetOf(*button), "notify::scale-factor",
            [self = button.get()](GParamSpec*) { showPicture(GTK_BUTTON(widgetOf(*self)), self->image().get()); }));
    return button;
}

std::shared_ptr<Button> Button::withTitle(std::string_view title, Action action)
{
    const std::string text(title);
    const auto make = [&text] { return prepared(gtk_button_new_with_label(text.c_str())); };
    auto button = std::shared_ptr<Button>(new Button(makeNative(make), std::move(action)));
    button->title_ = text;
    return button;
}

std::shared_ptr<Button> Button::checkbox(std::string_view title, Action action)
{
    const std::string text(title);
    const auto make = [&text] { return prepared(gtk_check_button_new_with_label(text.c_str())); };
    auto button = std::shared_ptr<Button>(new Button(makeNative(make), std::move(action)));
    button->title_ = text;
    return button;
}

void Button::setBezelStyle(BezelStyle style)
{
    if (style == BezelStyle::TexturedRounded)
        gtk_widget_add_css_class(widgetOf(*this), "textured-rounded");
    else
        gtk_widget_remove_css_class(widgetOf(*this), "textured-rounded");
    setFrameless(widgetOf(*this), recessed, style == BezelStyle::Recessed);
}

void Button::setBordered(bool bordered)
{
    setFrameless(widgetOf(*this), borderless, !bordered);
}

void Button::setContentTintColor(Color color)
{
    setTextColor(widgetOf(*this), color);
}

void Button::setFont(const Font& font)
{
    if (auto* label = labelIn(widgetOf(*this)))
        gtk_label_set_attributes(GTK_LABEL(label), attributesOf(font).get());
}

void Button::setState(ControlState state)
{
    if (auto* widget = widgetOf(*this); GTK_IS_CHECK_BUTTON(widget)) {
        const desktop::SignalBlock nobodyClicked(native().connections.front());
        gtk_check_button_set_active(GTK_CHECK_BUTTON(widget), state == ControlState::On);
    }
}

ControlState Button::state() const
{
    auto* widget = widgetOf(*this);
    const auto isOn = GTK_IS_CHECK_BUTTON(widget) && gtk_check_button_get_active(GTK_CHECK_BUTTON(widget));
    return isOn ? ControlState::On : ControlState::Off;
}

void Button::setImage(std::shared_ptr<Image> image)
{
    image_ = std::move(image);
    showPicture(GTK_BUTTON(widgetOf(*this)), image_.get());
    gtk_widget_add_css_class(widgetOf(*this), "image-button");
    if (image_ && !image_->accessibilityDescription().empty())
        setAccessibilityLabel(image_->accessibilityDescription());
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
    if (!isEnabled())
        return;
    const auto self = weak_from_this().lock();
    if (auto* widget = widgetOf(*this); GTK_IS_CHECK_BUTTON(widget))
        gtk_check_button_set_active(GTK_CHECK_BUTTON(widget), !gtk_check_button_get_active(GTK_CHECK_BUTTON(widget)));
    else
        action_.send(*this);
}

void Button::dropPress()
{
    auto* widget = widgetOf(*this);
    auto& press = *static_cast<Press*>(native().helper.get());
    // Without its gesture the release that is under way would be a click on what is below.
    if (press.isSent)
        return;
    const auto controllers = desktop::adopt(gtk_widget_observe_controllers(widget));
    for (guint index = 0; index < g_list_model_get_n_items(controllers.get()); ++index) {
        const auto controller
            = desktop::adopt(static_cast<GtkEventController*>(g_list_model_get_item(controllers.get(), index)));
        if (GTK_IS_GESTURE(controller.get()))
            gtk_event_controller_reset(controller.get());
    }
    press.isDropped = gtk_widget_has_css_class(widget, pressedByKey);
}

} // namespace appkit
