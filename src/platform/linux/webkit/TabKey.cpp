#include "platform/linux/webkit/TabKey.h"

#include "platform/linux/desktop/GObject.h"

namespace webkit {
namespace {

struct TabWatch {
    /// When the key went down that the page was given last.
    guint32 givenToPage = 0;
    desktop::ObjectPointer<GtkEventController> atWindow;
};

bool isTab(guint key)
{
    return key == GDK_KEY_Tab || key == GDK_KEY_ISO_Left_Tab;
}

template <class Handler>
GtkEventController* addKeys(GtkWidget* widget, Handler handler)
{
    auto* keys = gtk_event_controller_key_new();
    gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
    desktop::connect<gboolean(guint, guint, GdkModifierType)>(keys, "key-pressed",
        [keys, handler](guint key, guint, GdkModifierType) -> gboolean {
            return isTab(key) && handler(gtk_event_controller_get_current_event_time(keys));
        })
        .keep();
    gtk_widget_add_controller(widget, keys);
    return keys;
}

void unwatch(TabWatch& watch)
{
    const auto former = std::move(watch.atWindow);
    if (auto* window = former ? gtk_event_controller_get_widget(former.get()) : nullptr)
        gtk_widget_remove_controller(window, former.get());
}

/// At the end of its text the page lets go of the keyboard, and then the engine hands the very key on as unused: the
/// window would make a second step of it.
void watchWindow(GtkWidget* page, TabWatch& watch)
{
    unwatch(watch);
    if (auto* window = gtk_widget_get_root(page))
        watch.atWindow = desktop::retain(addKeys(GTK_WIDGET(window),
            [page, &watch](guint32 time) { return time == watch.givenToPage && !gtk_widget_has_focus(page); }));
}

/// The engine keeps a text view that nobody sees, to learn from it what a key does in a text. Here Tab would stop, and
/// typing go nowhere.
void skipHiddenText(GtkWidget* page)
{
    for (auto* child = gtk_widget_get_first_child(page); child; child = gtk_widget_get_next_sibling(child)) {
        if (GTK_IS_TEXT_VIEW(child))
            gtk_widget_set_can_focus(child, FALSE);
    }
}

} // namespace

void letTabLeave(GtkWidget* page)
{
    skipHiddenText(page);
    const auto watch = std::make_shared<TabWatch>();
    addKeys(page, [watch](guint32 time) {
        watch->givenToPage = time;
        return false;
    });
    desktop::connect<void(GParamSpec*)>(page, "notify::root", [page, watch](GParamSpec*) {
        watchWindow(page, *watch);
    }).keep();
}

} // namespace webkit
