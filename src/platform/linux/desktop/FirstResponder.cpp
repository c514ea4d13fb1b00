#include "platform/linux/desktop/FirstResponder.h"

namespace desktop {
namespace {

constexpr auto key = "perchly-first-responder";

void freeReference(gpointer reference)
{
    g_weak_ref_clear(static_cast<GWeakRef*>(reference));
    g_free(reference);
}

/// With a reference for the caller, or null.
GtkWidget* rememberedIn(GtkWidget* content)
{
    auto* reference = static_cast<GWeakRef*>(g_object_get_data(G_OBJECT(content), key));
    return reference ? GTK_WIDGET(g_weak_ref_get(reference)) : nullptr;
}

bool isInside(GtkWidget* widget, GtkWidget* content)
{
    return widget && (widget == content || gtk_widget_is_ancestor(widget, content));
}

GtkWidget* firstTextField(GtkWidget* widget)
{
    if (!gtk_widget_get_visible(widget) || !gtk_widget_get_can_focus(widget) || !gtk_widget_get_sensitive(widget))
        return nullptr;
    if (GTK_IS_TEXT(widget))
        return widget;
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
        if (auto* field = firstTextField(child))
            return field;
    }
    return nullptr;
}

bool restoreRemembered(GtkWidget* content)
{
    auto* widget = rememberedIn(content);
    if (!widget)
        return false;
    const auto isRestored = isInside(widget, content)
        && (GTK_IS_TEXT(widget) ? gtk_text_grab_focus_without_selecting(GTK_TEXT(widget))
                                : gtk_widget_grab_focus(widget));
    g_object_unref(widget);
    return isRestored;
}

} // namespace

void rememberFirstResponder(GtkWidget* content)
{
    auto* root = gtk_widget_get_root(content);
    auto* focus = root ? gtk_root_get_focus(root) : nullptr;
    if (!isInside(focus, content))
        return;
    setFirstResponder(content, focus);
}

void setFirstResponder(GtkWidget* content, GtkWidget* widget)
{
    auto* reference = g_new0(GWeakRef, 1);
    g_weak_ref_init(reference, widget);
    g_object_set_data_full(G_OBJECT(content), key, reference, freeReference);
}

void restoreFirstResponder(GtkWidget* content)
{
    auto* root = gtk_widget_get_root(content);
    if (!root || isInside(gtk_root_get_focus(root), content) || restoreRemembered(content))
        return;
    auto* field = firstTextField(content);
    if (field && gtk_widget_grab_focus(field))
        gtk_editable_select_region(GTK_EDITABLE(field), 0, -1);
}

} // namespace desktop
