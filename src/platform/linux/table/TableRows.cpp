#include "platform/linux/table/TableRows.h"

#include "platform/linux/table/TableStrip.h"

#include <algorithm>

namespace desktop {
namespace {

/// For screen readers, which do not learn that a widget is left out.
void setHidden(GtkWidget* widget, bool isHidden)
{
    gtk_accessible_update_state(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_STATE_HIDDEN, isHidden, -1);
}

} // namespace

void TableRows::show(RowRange range, bool anew, std::size_t columnCount, TableRowFiller& filler)
{
    releaseOutside(range, filler);
    for (auto index = range.begin; index < range.end; ++index) {
        auto* row = find(index);
        const auto isFilled = row != nullptr;
        if (!row) {
            row = &spareRow();
            bind(*row, index);
        }
        if (!isFilled || anew)
            fill(*row, columnCount, filler);
        gtk_widget_set_child_visible(row->widget.get(), TRUE);
    }
}

TableRow& TableRows::make(std::size_t index, std::size_t columnCount, TableRowFiller& filler)
{
    if (auto* row = find(index))
        return *row;
    auto& row = spareRow();
    bind(row, index);
    fill(row, columnCount, filler);
    return row;
}

TableRow* TableRows::find(std::size_t index) const
{
    const auto found = std::ranges::find(rows_, std::optional(index), [](const auto& row) { return row->index; });
    return found == rows_.end() ? nullptr : found->get();
}

TableRow* TableRows::holding(GtkWidget* widget) const
{
    for (; widget; widget = gtk_widget_get_parent(widget)) {
        if (gtk_widget_get_parent(widget) != list_)
            continue;
        const auto found = std::ranges::find(rows_, widget, [](const auto& row) { return row->widget.get(); });
        return found == rows_.end() ? nullptr : found->get();
    }
    return nullptr;
}

void TableRows::clear()
{
    for (const auto& row : rows_)
        gtk_widget_unparent(row->widget.get());
    rows_.clear();
}

void TableRows::releaseOutside(RowRange range, TableRowFiller& filler)
{
    for (const auto& row : rows_) {
        if (row->index && !range.contains(*row->index))
            release(*row, filler);
    }
}

void TableRows::release(TableRow& row, TableRowFiller& filler)
{
    auto* widget = row.widget.get();
    row.index.reset();
    // The keyboard must not go on to whatever the row will show next.
    if (auto* focus = gtk_root_get_focus(gtk_widget_get_root(widget)); focus && holding(focus) == &row)
        gtk_widget_grab_focus(gtk_widget_get_parent(list_));
    gtk_widget_set_child_visible(widget, FALSE);
    setHidden(widget, true);
    filler.emptyRow(row);
}

TableRow& TableRows::spareRow()
{
    const auto isSpare = [](const auto& row) { return !row->index; };
    if (const auto found = std::ranges::find_if(rows_, isSpare); found != rows_.end())
        return **found;
    auto* widget = makeRowStrip(spans_);
    rows_.push_back(std::make_unique<TableRow>(TableRow { .widget = retain(widget), .cells = {} }));
    gtk_widget_set_child_visible(widget, FALSE);
    gtk_widget_set_parent(widget, list_);
    return *rows_.back();
}

void TableRows::bind(TableRow& row, std::size_t index)
{
    row.index = index;
    setHidden(row.widget.get(), false);
    // In the order of their rows: so a screen reader finds them.
    TableRow* before = nullptr;
    for (const auto& other : rows_) {
        if (other->index && *other->index < index && (!before || *other->index > *before->index))
            before = other.get();
    }
    auto* previous = before ? before->widget.get() : nullptr;
    if (gtk_widget_get_prev_sibling(row.widget.get()) != previous)
        gtk_widget_insert_after(row.widget.get(), list_, previous);
    gtk_accessible_update_relation(
        GTK_ACCESSIBLE(row.widget.get()), GTK_ACCESSIBLE_RELATION_ROW_INDEX, static_cast<int>(index) + 1, -1);
}

void TableRows::fill(TableRow& row, std::size_t columnCount, TableRowFiller& filler)
{
    while (row.cells.size() < columnCount)
        row.cells.push_back(addCell(row.widget.get()));
    filler.fillRow(row);
}

} // namespace desktop
