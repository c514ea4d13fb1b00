#include "platform/linux/table/ColumnLayout.h"

#include <algorithm>
#include <numeric>

namespace desktop {
namespace {

int flexibleWidthOf(const std::vector<ColumnWish>& columns)
{
    return std::accumulate(columns.begin(), columns.end(), 0,
        [](int sum, const ColumnWish& column) { return column.isFlexible ? sum + column.width : sum; });
}

/// Shares a width out among the flexible columns, each of which gets where its own part ends less where it begins, so
/// that no rounding adds up.
class FlexibleWidths {
public:
    FlexibleWidths(int wished, int available)
        : wished_(wished)
        , available_(available)
    {
    }

    [[nodiscard]] int next(int width)
    {
        const auto begin = scaled(before_);
        before_ += width;
        return std::max(scaled(before_) - begin, std::min(width, leastFlexibleWidth));
    }

private:
    [[nodiscard]] int scaled(int width) const
    {
        return wished_ == 0 ? 0 : static_cast<int>(static_cast<long long>(width) * available_ / wished_);
    }

    int wished_;
    int available_;
    int before_ = 0;
};

} // namespace

std::vector<ColumnSpan> placeColumns(const std::vector<ColumnWish>& columns, int availableWidth)
{
    std::vector<ColumnSpan> spans;
    spans.reserve(columns.size());
    const auto surplus = availableWidth - widthOfColumns(columns);
    const auto flexible = flexibleWidthOf(columns);
    FlexibleWidths flexibleWidths(flexible, flexible + surplus);
    auto start = 0;
    for (const auto& column : columns) {
        const auto width = column.isFlexible ? flexibleWidths.next(column.width) : column.width;
        spans.push_back({ start, width });
        start += width;
    }
    if (flexible == 0 && !spans.empty())
        spans.back().width += std::max(0, surplus);
    return spans;
}

int widthOfColumns(const std::vector<ColumnWish>& columns)
{
    return std::accumulate(columns.begin(), columns.end(), trailingRoom,
        [](int sum, const ColumnWish& column) { return sum + column.width; });
}

int widthOfColumns(const std::vector<ColumnSpan>& columns)
{
    return columns.empty() ? trailingRoom : columns.back().start + columns.back().width + trailingRoom;
}

} // namespace desktop
