#include "platform/appkit/GridView.h"

#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/StackContainer.h"

#include <algorithm>

namespace appkit {
namespace {

/// Set on a cell whose column has a placement of its own.
constexpr auto ownXPlacement = "perchly-own-x-placement";

void setHasOwnXPlacement(GtkWidget* cell)
{
    g_object_set_data(G_OBJECT(cell), ownXPlacement, GINT_TO_POINTER(1));
}

bool hasOwnXPlacement(GtkWidget* cell)
{
    return g_object_get_data(G_OBJECT(cell), ownXPlacement) != nullptr;
}

GtkAlign nativePlacement(GridXPlacement placement)
{
    return placement == GridXPlacement::Leading ? GTK_ALIGN_START : GTK_ALIGN_END;
}

GtkAlign nativePlacement(GridYPlacement placement)
{
    return placement == GridYPlacement::Top ? GTK_ALIGN_START : GTK_ALIGN_CENTER;
}

/// What fills several columns is placed by none of them.
bool isMerged(GtkWidget* cell)
{
    return gtk_widget_get_halign(cell) == GTK_ALIGN_FILL;
}

guint pixels(double points)
{
    return static_cast<guint>(points);
}

std::size_t columnsOf(const std::vector<GridView::Row>& rows)
{
    std::size_t columns = 0;
    for (const auto& row : rows)
        columns = std::max(columns, row.size());
    return columns;
}

/// Puts a child of a grid there.
void put(GtkWidget* cell, std::size_t row, std::size_t column, std::size_t columns)
{
    auto* layout = gtk_widget_get_layout_manager(gtk_widget_get_parent(cell));
    g_object_set(gtk_layout_manager_get_layout_child(layout, cell), "row", static_cast<int>(row), "column",
        static_cast<int>(column), "column-span", static_cast<int>(columns), nullptr);
}

/// A widget that only takes room.
GtkWidget* attachRoom(GtkGrid* grid, std::size_t column)
{
    auto* room = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
    gtk_widget_set_can_target(room, FALSE);
    gtk_grid_attach(grid, room, static_cast<int>(column), 0, 1, 1);
    return room;
}

bool isStack(GtkWidget* widget, GtkOrientation orientation)
{
    return desktop::isStackContainer(widget) && desktop::orientationOf(widget) == orientation;
}

/// The part of the cell that its first line of text is in.
GtkWidget* firstLineOf(GtkWidget* cell)
{
    while (isStack(cell, GTK_ORIENTATION_VERTICAL) && gtk_widget_get_first_child(cell))
        cell = gtk_widget_get_first_child(cell);
    return cell;
}

bool hasALine(GtkWidget* widget)
{
    return isStack(widget, GTK_ORIENTATION_HORIZONTAL) || GTK_IS_LABEL(widget) || GTK_IS_BUTTON(widget)
        || GTK_IS_CHECK_BUTTON(widget) || GTK_IS_EDITABLE(widget) || GTK_IS_DROP_DOWN(widget);
}

/// Controls differ in height, and their texts stand in the middle: with one height for all, the first lines of a row's
/// cells stand beside each other.
void alignFirstLines(const GridView::Row& row)
{
    const auto group = desktop::adopt(gtk_size_group_new(GTK_SIZE_GROUP_VERTICAL));
    for (const auto& cell : row) {
        auto* first = cell ? firstLineOf(widgetOf(*cell)) : nullptr;
        if (first && hasALine(first))
            gtk_size_group_add_widget(group.get(), first);
    }
}

template <class Change>
void forEachCell(const std::vector<GridView::Row>& rows, Change change)
{
    for (const auto& row : rows) {
        for (const auto& cell : row) {
            if (cell)
                change(widgetOf(*cell));
        }
    }
}

} // namespace

GridView::GridView(const std::vector<Row>& rows)
    : View(makeNative(gtk_grid_new))
    , rows_(rows)
{
    auto* grid = GTK_GRID(widgetOf(*this));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < rows[row].size(); ++column) {
            const auto& cell = rows[row][column];
            if (!cell)
                continue;
            addSubview(cell);
            put(widgetOf(*cell), row, column, 1);
        }
        alignFirstLines(rows[row]);
    }
    setXPlacement(GridXPlacement::Leading);
    setYPlacement(GridYPlacement::Top);
    // Where the grid is wider than it needs to be, its last column is.
    if (const auto columns = columnsOf(rows); columns > 0)
        gtk_widget_set_hexpand(attachRoom(grid, columns - 1), TRUE);
    gtk_widget_set_hexpand(widgetOf(*this), FALSE);
}

void GridView::setRowSpacing(double spacing)
{
    gtk_grid_set_row_spacing(GTK_GRID(widgetOf(*this)), pixels(spacing));
}

void GridView::setColumnSpacing(double spacing)
{
    gtk_grid_set_column_spacing(GTK_GRID(widgetOf(*this)), pixels(spacing));
}

void GridView::setXPlacement(GridXPlacement placement)
{
    forEachCell(rows_, [placement](GtkWidget* cell) {
        if (!hasOwnXPlacement(cell))
            gtk_widget_set_halign(cell, nativePlacement(placement));
    });
}

void GridView::setYPlacement(GridYPlacement placement)
{
    forEachCell(rows_, [placement](GtkWidget* cell) { gtk_widget_set_valign(cell, nativePlacement(placement)); });
}

void GridView::setColumnWidth(std::size_t column, double width)
{
    gtk_widget_set_size_request(attachRoom(GTK_GRID(widgetOf(*this)), column), static_cast<int>(width), -1);
}

void GridView::setColumnXPlacement(std::size_t column, GridXPlacement placement)
{
    for (const auto& row : rows_) {
        if (column >= row.size() || !row[column])
            continue;
        auto* cell = widgetOf(*row[column]);
        if (isMerged(cell))
            continue;
        setHasOwnXPlacement(cell);
        gtk_widget_set_halign(cell, nativePlacement(placement));
    }
}

void GridView::mergeCells(std::size_t row)
{
    const auto& cells = rows_.at(row);
    const auto first = std::ranges::find_if(cells, [](const auto& cell) { return cell != nullptr; });
    if (first == cells.end())
        return;
    auto* cell = widgetOf(**first);
    put(cell, row, 0, columnsOf(rows_));
    setHasOwnXPlacement(cell);
    gtk_widget_set_halign(cell, GTK_ALIGN_FILL);
}

} // namespace appkit
