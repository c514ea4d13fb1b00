#pragma once

#include "platform/linux/desktop/GObject.h"
#include "platform/linux/table/ColumnLayout.h"
#include "platform/linux/table/RowGeometry.h"

#include <gtk/gtk.h>

#include <memory>
#include <optional>
#include <vector>

namespace desktop {

/// The widgets of one row, which stands for one row of the table after another.
struct TableRow {
    desktop::ObjectPointer<GtkWidget> widget;
    std::vector<GtkWidget*> cells;
    /// None while it waits to be used again.
    std::optional<std::size_t> index {};
};

/// Who knows what is in the rows.
class TableRowFiller {
public:
    virtual ~TableRowFiller() = default;
    /// Puts into the cells what the row now shows.
    virtual void fillRow(TableRow& row) = 0;
    /// The row is out of sight; what its cells hold may be used elsewhere.
    virtual void emptyRow(TableRow& row) = 0;
};

/// The rows that have widgets: those in sight and, until the next change, those that somebody asked for.
class TableRows {
public:
    /// The rows become children of the list; it and the spans must outlive this.
    TableRows(GtkWidget* list, const std::vector<ColumnSpan>& spans)
        : list_(list)
        , spans_(spans)
    {
    }

    /// Has each of these rows filled that isn't, or every one; the others are emptied.
    void show(RowRange range, bool anew, std::size_t columnCount, TableRowFiller& filler);

    /// The row, filled now if it has no widgets.
    TableRow& make(std::size_t index, std::size_t columnCount, TableRowFiller& filler);

    [[nodiscard]] TableRow* find(std::size_t index) const;
    /// The row that the widget is in, however deep.
    [[nodiscard]] TableRow* holding(GtkWidget* widget) const;

    [[nodiscard]] const std::vector<std::unique_ptr<TableRow>>& all() const { return rows_; }

    /// Forgets the widgets, which leave the list.
    void clear();

private:
    void releaseOutside(RowRange range, TableRowFiller& filler);
    void release(TableRow& row, TableRowFiller& filler);
    TableRow& spareRow();
    void bind(TableRow& row, std::size_t index);
    void fill(TableRow& row, std::size_t columnCount, TableRowFiller& filler);

    GtkWidget* list_;
    const std::vector<ColumnSpan>& spans_;
    std::vector<std::unique_ptr<TableRow>> rows_;
};

} // namespace desktop
