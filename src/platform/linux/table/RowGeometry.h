#pragma once

#include <cstddef>
#include <optional>

namespace desktop {

/// Rows one after another, without the one at the end.
struct RowRange {
    std::size_t begin = 0;
    std::size_t end = 0;

    [[nodiscard]] bool contains(std::size_t row) const { return row >= begin && row < end; }
    bool operator==(const RowRange&) const = default;
};

/// Rows of one height below each other, seen through a frame. The top is what has been scrolled away above it.
struct RowGeometry {
    std::size_t count = 0;
    int rowHeight = 1;

    [[nodiscard]] double height() const { return static_cast<double>(count) * rowHeight; }
    [[nodiscard]] double startOf(std::size_t row) const { return static_cast<double>(row) * rowHeight; }

    /// Those of which at least a part is seen.
    [[nodiscard]] RowRange inSight(double top, int frameHeight) const;
    [[nodiscard]] std::optional<std::size_t> at(double place) const;

    /// The top nearest to the present one at which the frame has the whole row.
    [[nodiscard]] double topToShow(std::size_t row, double top, int frameHeight) const;
};

} // namespace desktop
