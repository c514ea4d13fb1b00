#include "platform/linux/desktop/ConstraintView.h"

namespace desktop {
namespace {

void unparentChildren(GObject* object)
{
    while (auto* child = gtk_widget_get_first_child(GTK_WIDGET(object)))
        gtk_widget_unparent(child);
    auto* parentClass = g_type_class_peek(GTK_TYPE_WIDGET);
    G_OBJECT_CLASS(parentClass)->dispose(object);
}

void initializeClass(gpointer instanceClass, gpointer)
{
    G_OBJECT_CLASS(instanceClass)->dispose = unparentChildren;
    gtk_widget_class_set_layout_manager_type(GTK_WIDGET_CLASS(instanceClass), GTK_TYPE_CONSTRAINT_LAYOUT);
}

GType constraintViewType()
{
    static const auto type = g_type_register_static_simple(GTK_TYPE_WIDGET, "PerchlyConstraintView",
        sizeof(GtkWidgetClass), initializeClass, sizeof(GtkWidget), nullptr, static_cast<GTypeFlags>(0));
    return type;
}

} // namespace

GtkWidget* makeConstraintView()
{
    return GTK_WIDGET(g_object_new(constraintViewType(), nullptr));
}

GtkConstraintLayout* constraintLayoutOf(GtkWidget* widget)
{
    auto* layout = gtk_widget_get_layout_manager(widget);
    return layout && GTK_IS_CONSTRAINT_LAYOUT(layout) ? GTK_CONSTRAINT_LAYOUT(layout) : nullptr;
}

} // namespace desktop
