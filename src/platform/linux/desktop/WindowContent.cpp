#include "platform/linux/desktop/WindowContent.h"

#include "platform/linux/desktop/FirstResponder.h"

namespace desktop {

namespace {

bool hasFocus(GtkWidget* widget)
{
    auto* root = gtk_widget_get_root(widget);
    auto* focus = root ? gtk_root_get_focus(root) : nullptr;
    return focus && (focus == widget || gtk_widget_is_ancestor(focus, widget));
}

} // namespace

void takeOut(GtkWidget* widget)
{
    auto* parent = gtk_widget_get_parent(widget);
    if (!parent)
        return;
    desktop::rememberFirstResponder(widget);
    // Otherwise the window looks for another widget to focus, and finds one in the content that comes next.
    if (hasFocus(widget))
        gtk_root_set_focus(gtk_widget_get_root(widget), nullptr);
    if (GTK_IS_WINDOW(parent))
        gtk_window_set_child(GTK_WINDOW(parent), nullptr);
    else if (GTK_IS_SCROLLED_WINDOW(parent))
        gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(parent), nullptr);
    else if (GTK_IS_VIEWPORT(parent))
        gtk_viewport_set_child(GTK_VIEWPORT(parent), nullptr);
    else
        gtk_widget_unparent(widget);
}

WindowContent::WindowContent(GtkWindow* window, Place place)
    : window_(window)
    , place_(std::move(place))
{
}

void WindowContent::set(GtkWidget* content)
{
    auto* before = entering_ ? entering_.get() : place_.current();
    if (before == content)
        return;
    entrance_.reset();
    entering_.reset();
    if (place_.current())
        leave();
    if (!content)
        return;
    const auto isOnScreen = gtk_widget_get_mapped(content);
    entering_ = retain(content);
    takeOut(content);
    // A page that goes from one window on the screen to another within one turn of the main loop can stay blank.
    if (isOnScreen)
        entrance_ = callAfter(0, [this] { enter(); });
    else
        enter();
}

void WindowContent::leave()
{
    rememberFirstResponder();
    gtk_window_set_focus(window_, nullptr);
    place_.put(nullptr);
}

void WindowContent::enter()
{
    const auto content = std::exchange(entering_, nullptr);
    // Another window was quicker.
    if (gtk_widget_get_parent(content.get()))
        return;
    place_.put(content.get());
    if (gtk_widget_get_mapped(GTK_WIDGET(window_)))
        restoreFirstResponder();
}

void WindowContent::leaveAtClose()
{
    entrance_.reset();
    entering_.reset();
    rememberFirstResponder();
}

void WindowContent::rememberFirstResponder() const
{
    if (auto* content = place_.current())
        desktop::rememberFirstResponder(content);
}

void WindowContent::restoreFirstResponder() const
{
    if (auto* content = place_.current())
        desktop::restoreFirstResponder(content);
}

} // namespace desktop
