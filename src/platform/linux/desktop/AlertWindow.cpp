#include "platform/linux/desktop/AlertWindow.h"

#include "platform/linux/desktop/FirstResponder.h"
#include "platform/linux/desktop/FrontWindow.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/ShownText.h"
#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/desktop/X11Window.h"

namespace desktop {
namespace {

constexpr auto margin = 24;
constexpr auto widestLine = 48; // characters
/// What a window has room for on any screen.
constexpr TextLimit longestText { .characters = 500, .lines = 10 };

GtkWidget* makeLabel(const std::string& text, const char* styleClass)
{
    auto* label = gtk_label_new(shownText(text, longestText).c_str());
    gtk_label_set_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
    gtk_label_set_max_width_chars(GTK_LABEL(label), widestLine);
    gtk_label_set_justify(GTK_LABEL(label), GTK_JUSTIFY_CENTER);
    gtk_widget_add_css_class(label, styleClass);
    return label;
}

/// Connects for the life of the emitter.
template <class Signature, class Handler>
void connectForGood(gpointer emitter, const char* signal, Handler handler)
{
    connect<Signature>(emitter, signal, std::move(handler)).keep();
}

// The button that confirms stands at the end of the row.
GtkWidget* makeButtons(GtkWindow* window, const AlertContent& content, const std::function<void(std::size_t)>& answer)
{
    const auto& titles = content.buttonTitles;
    auto* row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, margin / 4);
    gtk_box_set_homogeneous(GTK_BOX(row), TRUE);
    gtk_widget_set_margin_top(row, margin / 2);
    for (auto index = titles.size(); index-- > 0;) {
        auto* button = gtk_button_new_with_label(titles[index].c_str());
        gtk_widget_set_hexpand(button, TRUE);
        connectForGood<void()>(button, "clicked", [answer, index] { answer(index); });
        gtk_box_append(GTK_BOX(row), button);
        if (index > 0)
            continue;
        gtk_widget_add_css_class(button, content.isDestructive ? "destructive-action" : "suggested-action");
        gtk_window_set_default_widget(window, button);
    }
    return row;
}

void declineOnEscape(GtkWindow* window, const std::function<void()>& decline)
{
    auto* keys = gtk_event_controller_key_new();
    connectForGood<gboolean(guint, guint, GdkModifierType)>(
        keys, "key-pressed", [decline](guint key, guint, GdkModifierType) -> gboolean {
            if (key != GDK_KEY_Escape)
                return FALSE;
            decline();
            return TRUE;
        });
    gtk_widget_add_controller(GTK_WIDGET(window), keys);
    connectForGood<gboolean()>(window, "close-request", [decline]() -> gboolean {
        decline();
        return TRUE; // whoever asked takes the window away
    });
}

/// Where the window, with its shadow, is in the middle of the parent.
PixelPoint middlePlace(GtkWindow* window, GtkWindow* parent)
{
    GtkRequisition size;
    gtk_widget_get_preferred_size(GTK_WIDGET(window), nullptr, &size);
    auto shadowLeft = 0.0;
    auto shadowTop = 0.0;
    gtk_native_get_surface_transform(GTK_NATIVE(window), &shadowLeft, &shadowTop);
    const auto left = (gtk_widget_get_width(GTK_WIDGET(parent)) - size.width) / 2 - static_cast<int>(shadowLeft);
    const auto top = (gtk_widget_get_height(GTK_WIDGET(parent)) - size.height) / 2 - static_cast<int>(shadowTop);
    const auto scale = gtk_widget_get_scale_factor(GTK_WIDGET(parent));
    const auto corner = X11Window(GTK_WIDGET(parent)).position();
    return { corner.x + left * scale, corner.y + top * scale };
}

} // namespace

GtkWindow* makeAlertWindow(
    const AlertContent& content, GtkWindow* parent, const std::function<void(std::size_t)>& answer)
{
    auto* window = makeWindow();
    gtk_window_set_title(window, shownText(content.message, longestText).c_str());
    gtk_window_set_resizable(window, FALSE);
    gtk_window_set_modal(window, TRUE);
    gtk_window_set_transient_for(window, parent);
    // An empty title bar of its own: a frame and a shadow, and nothing to press but the buttons.
    gtk_window_set_titlebar(window, gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0));
    gtk_widget_add_css_class(GTK_WIDGET(window), "alert");

    auto* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, margin / 3);
    gtk_widget_set_margin_start(box, margin);
    gtk_widget_set_margin_end(box, margin);
    gtk_widget_set_margin_top(box, margin);
    gtk_widget_set_margin_bottom(box, margin);
    gtk_box_append(GTK_BOX(box), makeLabel(content.message, "title-4"));
    if (!content.details.empty())
        gtk_box_append(GTK_BOX(box), makeLabel(content.details, "body"));
    if (content.accessory) {
        gtk_widget_set_halign(content.accessory, GTK_ALIGN_CENTER);
        gtk_box_append(GTK_BOX(box), content.accessory);
    }
    gtk_window_set_child(window, box);
    gtk_box_append(GTK_BOX(box), makeButtons(window, content, answer));
    // Only now is the button in the window, and can have its keyboard.
    gtk_window_set_focus(window, gtk_window_get_default_widget(window));
    if (content.accessory)
        restoreFirstResponder(content.accessory);
    declineOnEscape(window, [answer, last = content.buttonTitles.size() - 1] { answer(last); });
    return window;
}

void presentAbove(GtkWindow* window)
{
    if (!isX11())
        return gtk_window_present(window);
    gtk_widget_realize(GTK_WIDGET(window));
    X11Window x11(GTK_WIDGET(window));
    // The click that led here may have gone to a panel, so GTK knows no recent enough time of its own.
    gtk_window_present_with_time(window, x11.takeUserTime());
    x11.setAbove(true);
}

void presentOver(GtkWindow* window, GtkWindow* parent)
{
    if (!isX11() || !gtk_widget_get_mapped(GTK_WIDGET(parent)))
        return gtk_window_present(window);
    gtk_widget_realize(GTK_WIDGET(window));
    X11Window x11(GTK_WIDGET(window));
    const auto place = middlePlace(window, parent);
    x11.hintPosition(place);
    gtk_window_present_with_time(window, x11.takeUserTime());
    // Showing it, the toolkit has written its own hints over ours.
    x11.hintPosition(place);
}

} // namespace desktop
