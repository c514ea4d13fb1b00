#pragma once

#include <vector>

namespace desktop {

/// A column as it was asked for.
struct ColumnWish {
    int width = 0;
    /// Its cells make use of more room and can do with less.
    bool isFlexible = false;
};

/// A column's place, counted from the leading side.
struct ColumnSpan {
    int start = 0;
    int width = 0;
    bool operator==(const ColumnSpan&) const = default;
};

/// Room behind the last column, over which the scroll bar may float, and a cell may reach a little.
inline constexpr auto trailingRoom = 24;

/// What flexible columns are left with where room is scarce.
inline constexpr auto leastFlexibleWidth = 60;

/// The columns side by side. What the available width is more or less than theirs goes to the flexible ones, by their
/// widths; where none is flexible, the surplus to the last column.
[[nodiscard]] std::vector<ColumnSpan> placeColumns(const std::vector<ColumnWish>& columns, int availableWidth);

/// Of all the columns, with the room behind them: as they were asked for, or as they are.
[[nodiscard]] int widthOfColumns(const std::vector<ColumnWish>& columns);
[[nodiscard]] int widthOfColumns(const std::vector<ColumnSpan>& columns);

} // namespace desktop
