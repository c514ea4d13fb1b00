#pragma once

#include "platform/appkit/TableView.h"
#include "platform/linux/table/Table.h"

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace appkit {

/// The views in a table's cells, and those that wait to be used again. Asks the table's delegates, unless the table is
/// about to go.
class TableCells : public desktop::TableClient {
public:
    explicit TableCells(TableView& view);
    ~TableCells() override;
    TableCells(const TableCells&) = delete;
    TableCells& operator=(const TableCells&) = delete;

    [[nodiscard]] desktop::Table& table() const { return table_; }

    /// Out of those that wait, the one that is where it is wanted, if it can be; null where none waits.
    [[nodiscard]] std::shared_ptr<View> take(std::string_view identifier);
    [[nodiscard]] std::shared_ptr<View> viewIn(const desktop::TableRow& row, std::size_t column) const;

private:
    using Views = std::vector<std::shared_ptr<View>>;

    [[nodiscard]] std::size_t rowCount() override;
    [[nodiscard]] double heightOfRows() override;
    void performDoubleAction() override;
    void fillRow(desktop::TableRow& row) override;
    void emptyRow(desktop::TableRow& row) override;

    [[nodiscard]] std::shared_ptr<View> keepView() const;
    [[nodiscard]] Views askForViews(const desktop::TableRow& row);
    void fillCell(GtkWidget* cell, std::size_t column, const std::shared_ptr<View>& view);
    void enqueue(Views& views);
    void learnFlexibleColumns(const Views& views);

    TableView& view_;
    desktop::Table& table_;
    std::unordered_map<const desktop::TableRow*, Views> views_;
    /// Those whose rows left last are at the end.
    Views waiting_;
    const desktop::TableRow* filling_ = nullptr;
    bool knowsFlexibleColumns_ = false;
};

} // namespace appkit
