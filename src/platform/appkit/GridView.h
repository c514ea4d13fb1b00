#pragma once

#include "platform/appkit/View.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace appkit {

enum class GridXPlacement { Leading, Trailing };
enum class GridYPlacement { Top, Center };

/// Rows and columns of views, each column as wide as its widest cell, each row as high as its highest.
class GridView : public View {
public:
    using Row = std::vector<std::shared_ptr<View>>;

    /// Cells without a view are null.
    explicit GridView(const std::vector<Row>& rows);

    void setRowSpacing(double spacing);
    void setColumnSpacing(double spacing);

    /// Where in its cell a view stands, unless its column says otherwise.
    void setXPlacement(GridXPlacement placement);
    void setYPlacement(GridYPlacement placement);

    void setColumnWidth(std::size_t column, double width);
    void setColumnXPlacement(std::size_t column, GridXPlacement placement);

    /// One cell across all columns, which its view fills.
    void mergeCells(std::size_t row);

private:
    std::vector<Row> rows_;
};

} // namespace appkit
