#include "platform/appkit/TableView.h"

#include "platform/linux/appkit/TableCells.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/table/TableWidget.h"

namespace appkit {
namespace {

TableCells& cellsOf(const TableView& view)
{
    return *static_cast<TableCells*>(view.native().helper.get());
}

desktop::Table& tableOf(const TableView& view)
{
    return cellsOf(view).table();
}

} // namespace

TableView::TableView()
    : View(makeNative(desktop::makeTableWidget))
{
    native().helper = std::make_shared<TableCells>(*this);
}

void TableView::addTableColumn(TableColumn column)
{
    tableOf(*this).addColumn(column.title, column.width);
    columns_.push_back(std::move(column));
}

void TableView::reloadData()
{
    tableOf(*this).reload();
}

std::size_t TableView::numberOfRows() const
{
    return tableOf(*this).rowCount();
}

std::optional<std::size_t> TableView::selectedRow() const
{
    return tableOf(*this).selectedRow();
}

void TableView::selectRow(std::optional<std::size_t> row)
{
    tableOf(*this).select(row);
}

void TableView::scrollRowToVisible(std::size_t row)
{
    tableOf(*this).scrollToVisible(row);
}

std::optional<std::size_t> TableView::rowForView(const View& view) const
{
    const auto* row = tableOf(*this).rows().holding(widgetOf(view));
    return row ? row->index : std::nullopt;
}

std::shared_ptr<View> TableView::viewAt(std::size_t column, std::size_t row, bool makeIfNecessary)
{
    auto& table = tableOf(*this);
    const auto* shown = makeIfNecessary ? table.makeRow(row) : table.rows().find(row);
    return shown ? cellsOf(*this).viewIn(*shown, column) : nullptr;
}

std::shared_ptr<View> TableView::makeView(std::string_view identifier)
{
    return cellsOf(*this).take(identifier);
}

} // namespace appkit
