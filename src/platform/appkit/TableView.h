#pragma once

#include "platform/appkit/Action.h"
#include "platform/appkit/View.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace appkit {

class TableView;
class TextField;

struct TableColumn {
    std::string identifier;
    /// Shown in the table's header.
    std::string title;
    double width;
};

class TableViewDataSource {
public:
    virtual ~TableViewDataSource() = default;
    [[nodiscard]] virtual std::size_t numberOfRows(const TableView& table) = 0;
};

class TableViewDelegate {
public:
    virtual ~TableViewDelegate() = default;
    /// The same for every row.
    [[nodiscard]] virtual double heightOfRow(const TableView& table, std::size_t row) = 0;
    /// What the row shows in the column, new or reused (makeView); null for nothing.
    [[nodiscard]] virtual std::shared_ptr<View> viewForRow(TableView& table, const TableColumn& column, std::size_t row)
        = 0;
};

/// Rows of views in columns under a header, for a scroll view. Only the rows in sight have views, made as they come
/// into sight; those of rows that left are kept to be reused. The user selects at most one row.
class TableView : public View {
public:
    TableView();

    void addTableColumn(TableColumn column);
    [[nodiscard]] const std::vector<TableColumn>& tableColumns() const { return columns_; }

    void setDataSource(std::weak_ptr<TableViewDataSource> dataSource) { dataSource_ = std::move(dataSource); }
    void setDelegate(std::weak_ptr<TableViewDelegate> delegate) { delegate_ = std::move(delegate); }
    [[nodiscard]] std::shared_ptr<TableViewDataSource> dataSource() const { return dataSource_.lock(); }
    [[nodiscard]] std::shared_ptr<TableViewDelegate> delegate() const { return delegate_.lock(); }

    /// Sent, by the table, at a double click on it.
    void setDoubleAction(Action action) { doubleAction_ = std::move(action); }
    [[nodiscard]] const Action& doubleAction() const { return doubleAction_; }

    /// Asks for everything anew. Nothing is selected afterwards.
    void reloadData();

    [[nodiscard]] std::size_t numberOfRows() const;
    [[nodiscard]] std::optional<std::size_t> selectedRow() const;
    /// None: no row is selected any more.
    void selectRow(std::optional<std::size_t> row);
    void scrollRowToVisible(std::size_t row);

    /// The row that shows the view in one of its cells, however deep inside.
    [[nodiscard]] std::optional<std::size_t> rowForView(const View& view) const;

    /// What the row shows in the column now; null for a row out of sight, unless it is to be made.
    [[nodiscard]] std::shared_ptr<View> viewAt(std::size_t column, std::size_t row, bool makeIfNecessary);

    /// A view of that identifier whose row is out of sight, or null.
    [[nodiscard]] std::shared_ptr<View> makeView(std::string_view identifier);

private:
    std::vector<TableColumn> columns_;
    std::weak_ptr<TableViewDataSource> dataSource_;
    std::weak_ptr<TableViewDelegate> delegate_;
    Action doubleAction_;
};

/// A cell with a text.
class TableCellView : public View {
public:
    using View::View;

    void setTextField(std::shared_ptr<TextField> field) { textField_ = std::move(field); }
    [[nodiscard]] const std::shared_ptr<TextField>& textField() const { return textField_; }

private:
    std::shared_ptr<TextField> textField_;
};

} // namespace appkit
