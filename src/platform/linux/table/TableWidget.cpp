#include "platform/linux/table/TableWidget.h"

#include "platform/linux/desktop/Toolkit.h"

namespace desktop {
namespace {

constexpr auto style = R"(
columnview.perchly-table > listview > row > cell { padding: 0; }
columnview.perchly-table > header > button { padding: 0 5px; }
columnview.perchly-table > header > button:dir(rtl) { border-style: none solid solid none; }
columnview.perchly-table > header > button:first-child { border-left-style: none; border-right-style: none; }
columnview.perchly-table row:selected .dim-label { opacity: 0.8; }
columnview.perchly-table row:selected button:focus:focus-visible { outline-color: alpha(@theme_selected_fg_color, 0.8); }
)";

enum Property : guint { HorizontalAdjustment = 1, VerticalAdjustment, HorizontalPolicy, VerticalPolicy };

struct TableWidget {
    GtkWidget widget;
    Table* table;
    GtkScrollablePolicy policies[2];
};

struct ListWidget {
    GtkWidget widget;
};

TableWidget& self(gpointer widget)
{
    return *static_cast<TableWidget*>(widget);
}

gpointer parentClass()
{
    return g_type_class_peek(GTK_TYPE_WIDGET);
}

/// As little as anybody cares to give it: it scrolls.
void measureNothing(
    GtkWidget*, GtkOrientation, int, int* minimum, int* natural, int* minimumBaseline, int* naturalBaseline)
{
    *minimum = *natural = 0;
    *minimumBaseline = *naturalBaseline = -1;
}

void initializeListClass(gpointer instanceClass, gpointer)
{
    auto* widgetClass = GTK_WIDGET_CLASS(instanceClass);
    widgetClass->measure = measureNothing;
    widgetClass->size_allocate
        = [](GtkWidget* list, int width, int, int) { tableOf(gtk_widget_get_parent(list)).allocateRows(width); };
    gtk_widget_class_set_css_name(widgetClass, "listview");
    gtk_widget_class_set_accessible_role(widgetClass, GTK_ACCESSIBLE_ROLE_ROW_GROUP);
}

GtkWidget* makeList()
{
    static const auto type = g_type_register_static_simple(GTK_TYPE_WIDGET, "PerchlyTableList", sizeof(GtkWidgetClass),
        initializeListClass, sizeof(ListWidget), nullptr, static_cast<GTypeFlags>(0));
    auto* list = GTK_WIDGET(g_object_new(type, nullptr));
    // What has no name is called by its type's.
    gtk_accessible_update_property(GTK_ACCESSIBLE(list), GTK_ACCESSIBLE_PROPERTY_LABEL, "", -1);
    gtk_widget_add_css_class(list, "view");
    gtk_widget_add_css_class(list, "separators");
    gtk_widget_set_overflow(list, GTK_OVERFLOW_HIDDEN);
    return list;
}

void measure(GtkWidget* widget, GtkOrientation orientation, int, int* minimum, int* natural, int* minimumBaseline,
    int* naturalBaseline)
{
    *minimum = orientation == GTK_ORIENTATION_VERTICAL ? self(widget).table->headerHeight() : 0;
    *natural = self(widget).table->naturalLength(orientation);
    *minimumBaseline = *naturalBaseline = -1;
}

void getProperty(GObject* object, guint property, GValue* value, GParamSpec* specification)
{
    const auto& widget = self(object);
    switch (property) {
    case HorizontalAdjustment:
        return g_value_set_object(value, widget.table->adjustment(GTK_ORIENTATION_HORIZONTAL));
    case VerticalAdjustment:
        return g_value_set_object(value, widget.table->adjustment(GTK_ORIENTATION_VERTICAL));
    case HorizontalPolicy:
    case VerticalPolicy:
        return g_value_set_enum(value, widget.policies[property - HorizontalPolicy]);
    default:
        G_OBJECT_WARN_INVALID_PROPERTY_ID(object, property, specification);
    }
}

void setProperty(GObject* object, guint property, const GValue* value, GParamSpec* specification)
{
    auto& widget = self(object);
    switch (property) {
    case HorizontalAdjustment:
        return widget.table->setAdjustment(
            GTK_ORIENTATION_HORIZONTAL, static_cast<GtkAdjustment*>(g_value_get_object(value)));
    case VerticalAdjustment:
        return widget.table->setAdjustment(
            GTK_ORIENTATION_VERTICAL, static_cast<GtkAdjustment*>(g_value_get_object(value)));
    case HorizontalPolicy:
    case VerticalPolicy:
        widget.policies[property - HorizontalPolicy] = static_cast<GtkScrollablePolicy>(g_value_get_enum(value));
        return;
    default:
        G_OBJECT_WARN_INVALID_PROPERTY_ID(object, property, specification);
    }
}

void dispose(GObject* object)
{
    self(object).table->dismantle();
    G_OBJECT_CLASS(parentClass())->dispose(object);
}

void finalize(GObject* object)
{
    delete self(object).table;
    G_OBJECT_CLASS(parentClass())->finalize(object);
}

gboolean grabFocus(GtkWidget* widget)
{
    return self(widget).table->focusRow() || GTK_WIDGET_CLASS(parentClass())->grab_focus(widget);
}

void initializeClass(gpointer instanceClass, gpointer)
{
    auto* objectClass = G_OBJECT_CLASS(instanceClass);
    objectClass->get_property = getProperty;
    objectClass->set_property = setProperty;
    objectClass->dispose = dispose;
    objectClass->finalize = finalize;
    g_object_class_override_property(objectClass, HorizontalAdjustment, "hadjustment");
    g_object_class_override_property(objectClass, VerticalAdjustment, "vadjustment");
    g_object_class_override_property(objectClass, HorizontalPolicy, "hscroll-policy");
    g_object_class_override_property(objectClass, VerticalPolicy, "vscroll-policy");
    auto* widgetClass = GTK_WIDGET_CLASS(instanceClass);
    widgetClass->measure = measure;
    widgetClass->size_allocate
        = [](GtkWidget* widget, int width, int height, int) { self(widget).table->allocate(width, height); };
    widgetClass->grab_focus = grabFocus;
    widgetClass->focus = [](GtkWidget* widget, GtkDirectionType direction) -> gboolean {
        return self(widget).table->moveFocus(direction);
    };
    gtk_widget_class_set_css_name(widgetClass, "columnview");
    gtk_widget_class_set_accessible_role(widgetClass, GTK_ACCESSIBLE_ROLE_GRID);
}

void initializeScrollable(gpointer interface, gpointer)
{
    static_cast<GtkScrollableInterface*>(interface)->get_border
        = [](GtkScrollable* scrollable, GtkBorder* border) -> gboolean {
        *border = {};
        border->top = static_cast<gint16>(self(scrollable).table->headerHeight());
        return TRUE;
    };
}

void addKeys(GtkWidget* widget)
{
    auto* keys = gtk_event_controller_key_new();
    connect<gboolean(guint, guint, GdkModifierType)>(keys, "key-pressed",
        [widget](guint key, guint, GdkModifierType state) -> gboolean {
            const auto isPlain = (state & gtk_accelerator_get_default_mod_mask()) == 0;
            return isPlain && self(widget).table->performKey(key);
        })
        .keep();
    gtk_widget_add_controller(widget, keys);
}

/// What is in a row and knows what to do with a click takes it when it ends.
void addClicks(GtkWidget* widget)
{
    auto* click = gtk_gesture_click_new();
    connect<void(int, double, double)>(click, "pressed", [widget](int, double, double y) {
        self(widget).table->beginClick(y);
    }).keep();
    connect<void(int, double, double)>(click, "released", [widget](int count, double, double y) {
        self(widget).table->endClick(y, count);
    }).keep();
    gtk_widget_add_controller(widget, GTK_EVENT_CONTROLLER(click));
}

void initialize(GTypeInstance* instance, gpointer)
{
    auto* widget = reinterpret_cast<GtkWidget*>(instance);
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_PROPERTY_LABEL, "", -1);
    gtk_widget_add_css_class(widget, "view");
    gtk_widget_add_css_class(widget, "perchly-table");
    gtk_widget_set_overflow(widget, GTK_OVERFLOW_HIDDEN);
    gtk_widget_set_focusable(widget, TRUE);
    self(widget).table = new Table(widget, makeList());
    addKeys(widget);
    addClicks(widget);
}

GType registerType()
{
    addStyle(style);
    const auto type = g_type_register_static_simple(GTK_TYPE_WIDGET, "PerchlyTable", sizeof(GtkWidgetClass),
        initializeClass, sizeof(TableWidget), initialize, static_cast<GTypeFlags>(0));
    const GInterfaceInfo scrollable { initializeScrollable, nullptr, nullptr };
    g_type_add_interface_static(type, GTK_TYPE_SCROLLABLE, &scrollable);
    return type;
}

} // namespace

GtkWidget* makeTableWidget()
{
    static const auto type = registerType();
    return GTK_WIDGET(g_object_new(type, nullptr));
}

Table& tableOf(GtkWidget* tableWidget)
{
    return *self(tableWidget).table;
}

} // namespace desktop
