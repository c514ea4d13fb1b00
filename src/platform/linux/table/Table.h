#pragma once

#include "platform/linux/desktop/GObject.h"
#include "platform/linux/table/ColumnLayout.h"
#include "platform/linux/table/RowGeometry.h"
#include "platform/linux/table/TableRows.h"

#include <gtk/gtk.h>

#include <optional>
#include <string>
#include <vector>

namespace desktop {

/// Who owns what the table shows.
class TableClient : public TableRowFiller {
public:
    [[nodiscard]] virtual std::size_t rowCount() = 0;
    [[nodiscard]] virtual double heightOfRows() = 0;
    virtual void performDoubleAction() = 0;
};

/// What is behind a table's widget: which rows it shows and where, and which of them is selected.
class Table : private TableRowFiller {
public:
    /// The header and the list become children of the widget.
    Table(GtkWidget* widget, GtkWidget* list);
    ~Table() override;
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    /// Null when the client goes.
    void setClient(TableClient* client) { client_ = client; }

    void addColumn(const std::string& title, double width);
    /// By columns: which can use more room than was asked for, and can do with less.
    void setFlexibleColumns(const std::vector<bool>& areFlexible);

    /// Asks the client for everything anew. Nothing is selected afterwards.
    void reload();
    [[nodiscard]] std::size_t rowCount() const { return geometry_.count; }

    void select(std::optional<std::size_t> row);
    [[nodiscard]] std::optional<std::size_t> selectedRow() const { return selectedRow_; }
    void scrollToVisible(std::size_t row);

    [[nodiscard]] const TableRows& rows() const { return rows_; }
    /// The row's widgets, even if it is out of sight. Null for no row of the table.
    [[nodiscard]] TableRow* makeRow(std::size_t row);

    // What the user does.
    // Places are the widget's own.
    void beginClick(double y);
    void endClick(double y, int count);
    /// False: not a key of the table's.
    bool performKey(guint key);

    // What the toolkit asks of the widget.
    [[nodiscard]] GtkAdjustment* adjustment(GtkOrientation orientation) const;
    void setAdjustment(GtkOrientation orientation, GtkAdjustment* adjustment);
    [[nodiscard]] int naturalLength(GtkOrientation orientation) const;
    [[nodiscard]] int headerHeight() const;
    void allocate(int width, int height);
    void allocateRows(int width);
    /// Before the widget goes.
    void dismantle();
    bool moveFocus(GtkDirectionType direction);
    /// To the row that had the keyboard last. False while it is out of sight.
    bool focusRow();

private:
    struct Scrolling {
        ObjectPointer<GtkAdjustment> adjustment;
        SignalConnection valueChange;
    };
    struct KeyboardPlace {
        std::size_t row;
        std::vector<int> path;
    };

    [[nodiscard]] Scrolling& scrolling(GtkOrientation orientation);
    [[nodiscard]] GtkAdjustment* vertical() const { return vertical_.adjustment.get(); }
    [[nodiscard]] GtkAdjustment* horizontal() const { return horizontal_.adjustment.get(); }

    void fillRow(TableRow& row) override;
    void emptyRow(TableRow& row) override;
    void load();
    void configureScrolling();
    void placeColumnsAnew();
    void update(bool anew);
    void didScroll();
    [[nodiscard]] RowRange rowsInSight() const;
    [[nodiscard]] int contentWidth() const;
    /// Where what is as wide as all columns begins.
    [[nodiscard]] int contentStart(int width) const;
    [[nodiscard]] std::optional<std::size_t> rowAt(double y) const;
    void showSelection(const TableRow& row) const;

    void moveTo(std::size_t row);
    bool confirmRow(bool performs);
    [[nodiscard]] std::optional<std::size_t> rowAfterKey(guint key) const;
    [[nodiscard]] TableRow* enteredRow() const;
    [[nodiscard]] std::optional<std::size_t> keyboardIndex() const;
    [[nodiscard]] std::optional<KeyboardPlace> keyboardPlace() const;
    void giveKeyboard(const KeyboardPlace& place);
    [[nodiscard]] GtkWidget* focusWidget() const;

    GtkWidget* widget_;
    GtkWidget* header_;
    GtkWidget* list_;
    TableClient* client_ = nullptr;
    std::vector<ColumnWish> columns_;
    std::vector<ColumnSpan> spans_;
    RowGeometry geometry_;
    TableRows rows_;
    std::optional<std::size_t> selectedRow_;
    /// Where the keyboard was last.
    std::optional<std::size_t> cursor_;
    std::optional<std::size_t> clickedRow_;
    Scrolling horizontal_;
    Scrolling vertical_;
    int width_ = 0;
    int frameHeight_ = 0;
    bool isLoaded_ = false;
    bool isUpdating_ = false;
    bool isOutdated_ = false;
    SourceHandle laterReload_;
};

} // namespace desktop
