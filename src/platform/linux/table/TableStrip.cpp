#include "platform/linux/table/TableStrip.h"

#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/WindowContent.h"

#include <algorithm>

namespace desktop {
namespace {

struct Strip {
    GtkWidget widget;
    const std::vector<ColumnSpan>* spans;
    bool isHeader;
};

Strip& self(gpointer widget)
{
    return *static_cast<Strip*>(widget);
}

gpointer parentClass()
{
    return g_type_class_peek(GTK_TYPE_WIDGET);
}

void disposeChildren(GObject* object)
{
    while (auto* child = gtk_widget_get_first_child(GTK_WIDGET(object)))
        gtk_widget_unparent(child);
    G_OBJECT_CLASS(parentClass())->dispose(object);
}

int naturalHeightOfChildren(GtkWidget* widget)
{
    auto height = 0;
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
        auto natural = 0;
        gtk_widget_measure(child, GTK_ORIENTATION_VERTICAL, -1, nullptr, &natural, nullptr, nullptr);
        height = std::max(height, natural);
    }
    return height;
}

void measureStrip(GtkWidget* widget, GtkOrientation orientation, int, int* minimum, int* natural, int* minimumBaseline,
    int* naturalBaseline)
{
    const auto isHeight = orientation == GTK_ORIENTATION_VERTICAL;
    *minimum = *natural = isHeight && self(widget).isHeader ? naturalHeightOfChildren(widget) : 0;
    *minimumBaseline = *naturalBaseline = -1;
}

/// Widgets must be measured before they are given a place, whatever they ask for.
void place(GtkWidget* widget, const GtkAllocation& allocation)
{
    gtk_widget_measure(widget, GTK_ORIENTATION_HORIZONTAL, -1, nullptr, nullptr, nullptr, nullptr);
    gtk_widget_size_allocate(widget, &allocation, -1);
}

/// The last title reaches to the end, and so does the line below it.
ColumnSpan spanOf(const Strip& strip, std::size_t column, int width)
{
    auto span = (*strip.spans)[column];
    if (strip.isHeader && column + 1 == strip.spans->size())
        span.width = width - span.start;
    return span;
}

void allocateStrip(GtkWidget* widget, int width, int height, int)
{
    const auto isMirrored = gtk_widget_get_direction(widget) == GTK_TEXT_DIR_RTL;
    auto* child = gtk_widget_get_first_child(widget);
    for (std::size_t column = 0; child && column < self(widget).spans->size(); ++column) {
        const auto span = spanOf(self(widget), column, width);
        place(child, { isMirrored ? width - span.start - span.width : span.start, 0, span.width, height });
        child = gtk_widget_get_next_sibling(child);
    }
}

void initializeStripClass(gpointer instanceClass, gpointer)
{
    G_OBJECT_CLASS(instanceClass)->dispose = disposeChildren;
    auto* widgetClass = GTK_WIDGET_CLASS(instanceClass);
    widgetClass->measure = measureStrip;
    widgetClass->size_allocate = allocateStrip;
    gtk_widget_class_set_accessible_role(widgetClass, GTK_ACCESSIBLE_ROLE_ROW);
}

GType stripType()
{
    static const auto type = g_type_register_static_simple(GTK_TYPE_WIDGET, "PerchlyTableStrip", sizeof(GtkWidgetClass),
        initializeStripClass, sizeof(Strip), nullptr, static_cast<GTypeFlags>(0));
    return type;
}

GtkWidget* makeStrip(const char* name, const std::vector<ColumnSpan>& spans, bool isHeader)
{
    auto* strip = GTK_WIDGET(g_object_new(stripType(), "css-name", name, nullptr));
    self(strip).spans = &spans;
    // What has no name is called by its type's.
    gtk_accessible_update_property(GTK_ACCESSIBLE(strip), GTK_ACCESSIBLE_PROPERTY_LABEL, "", -1);
    self(strip).isHeader = isHeader;
    return strip;
}

void measureCell(
    GtkWidget*, GtkOrientation, int, int* minimum, int* natural, int* minimumBaseline, int* naturalBaseline)
{
    *minimum = *natural = 0;
    *minimumBaseline = *naturalBaseline = -1;
}

void allocateCell(GtkWidget* cell, int width, int height, int)
{
    if (auto* content = gtk_widget_get_first_child(cell); content && gtk_widget_should_layout(content))
        place(content, { 0, 0, width, height });
}

void initializeCellClass(gpointer instanceClass, gpointer)
{
    G_OBJECT_CLASS(instanceClass)->dispose = disposeChildren;
    auto* widgetClass = GTK_WIDGET_CLASS(instanceClass);
    widgetClass->measure = measureCell;
    widgetClass->size_allocate = allocateCell;
    gtk_widget_class_set_css_name(widgetClass, "cell");
    gtk_widget_class_set_accessible_role(widgetClass, GTK_ACCESSIBLE_ROLE_GRID_CELL);
}

GType cellType()
{
    static const auto type = g_type_register_static_simple(GTK_TYPE_WIDGET, "PerchlyTableCell", sizeof(GtkWidgetClass),
        initializeCellClass, sizeof(GtkWidget), nullptr, static_cast<GTypeFlags>(0));
    return type;
}

void tellColumn(GtkWidget* widget)
{
    auto index = 0;
    for (auto* before = widget; before; before = gtk_widget_get_prev_sibling(before))
        ++index;
    gtk_accessible_update_relation(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_RELATION_COL_INDEX, index, -1);
}

} // namespace

GtkWidget* makeRowStrip(const std::vector<ColumnSpan>& spans)
{
    auto* row = makeStrip("row", spans, false);
    gtk_widget_add_css_class(row, "activatable");
    gtk_widget_set_focusable(row, TRUE);
    return row;
}

GtkWidget* makeHeaderStrip(const std::vector<ColumnSpan>& spans)
{
    return makeStrip("header", spans, true);
}

void addHeaderTitle(GtkWidget* header, const char* title)
{
    auto* button = GTK_WIDGET(g_object_new(
        GTK_TYPE_BOX, "css-name", "button", "accessible-role", GTK_ACCESSIBLE_ROLE_COLUMN_HEADER, nullptr));
    // A title only looks like the buttons that sort other tables.
    gtk_widget_set_can_target(button, FALSE);
    auto* label = gtk_label_new(title);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
    gtk_box_append(GTK_BOX(button), label);
    gtk_widget_insert_before(button, header, nullptr);
    gtk_accessible_update_property(GTK_ACCESSIBLE(button), GTK_ACCESSIBLE_PROPERTY_LABEL, title, -1);
    tellColumn(button);
}

GtkWidget* addCell(GtkWidget* row)
{
    auto* cell = GTK_WIDGET(g_object_new(cellType(), nullptr));
    gtk_widget_set_overflow(cell, GTK_OVERFLOW_HIDDEN);
    gtk_widget_insert_before(cell, row, nullptr);
    tellColumn(cell);
    return cell;
}

void setCellContent(GtkWidget* cell, GtkWidget* content)
{
    auto* before = gtk_widget_get_first_child(cell);
    if (before == content)
        return;
    if (before)
        takeOut(before);
    if (!content)
        return;
    const auto kept = retain(content);
    takeOut(content);
    gtk_widget_set_parent(content, cell);
}

} // namespace desktop
