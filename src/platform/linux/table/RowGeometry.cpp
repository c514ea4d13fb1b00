#include "platform/linux/table/RowGeometry.h"

#include <algorithm>
#include <cmath>

namespace desktop {

RowRange RowGeometry::inSight(double top, int frameHeight) const
{
    if (frameHeight <= 0)
        return {};
    const auto rowsTo = [this](double rows) { return std::min(count, static_cast<std::size_t>(std::max(0.0, rows))); };
    return { rowsTo(std::floor(top / rowHeight)), rowsTo(std::ceil((top + frameHeight) / rowHeight)) };
}

std::optional<std::size_t> RowGeometry::at(double place) const
{
    if (place < 0 || place >= height())
        return std::nullopt;
    return static_cast<std::size_t>(place / rowHeight);
}

double RowGeometry::topToShow(std::size_t row, double top, int frameHeight) const
{
    const auto start = startOf(row);
    return std::min(start, std::max(top, start + rowHeight - frameHeight));
}

} // namespace desktop
