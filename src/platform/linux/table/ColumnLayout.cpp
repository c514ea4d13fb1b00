#include "platform/linux/table/ColumnLayout.h"

#include <algorithm>
#include <numeric>

namespace desktop {
namespace {

int sumOfWidths(const std::vector<ColumnWish>& columns, bool flexibleOnly)
{
    return std::accumulate(columns.begin(), columns.end(), 0, [flexibleOnly](int sum, const ColumnWish& column) {
        return flexibleOnly && !column.isFlexible ? sum : sum + column.width;
    });
}

int stretched(int width, int from, int to)
{
    return static_cast<int>(static_cast<long long>(width) * to / from);
}

} // namespace

std::vector<ColumnSpan> placeColumns(const std::vector<ColumnWish>& columns, int availableWidth)
{
    std::vector<ColumnSpan> spans;
    if (columns.empty())
        return spans;
    spans.reserve(columns.size());
    const auto surplus = availableWidth - trailingRoom - sumOfWidths(columns, false);
    const auto flexible = sumOfWidths(columns, true);
    auto before = 0; // the flexible columns', so that no rounding adds up
    auto start = 0;
    for (const auto& column : columns) {
        auto width = column.width;
        if (column.isFlexible) {
            width = stretched(before + column.width, flexible, flexible + surplus)
                - stretched(before, flexible, flexible + surplus);
            width = std::max(width, std::min(column.width, leastFlexibleWidth));
            before += column.width;
        }
        spans.push_back({ start, width });
        start += width;
    }
    if (flexible == 0)
        spans.back().width += std::max(0, surplus);
    return spans;
}

int widthOfColumns(const std::vector<ColumnSpan>& columns)
{
    return columns.empty() ? 0 : columns.back().start + columns.back().width + trailingRoom;
}

} // namespace desktop
