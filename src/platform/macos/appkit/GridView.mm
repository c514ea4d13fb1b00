#include "platform/appkit/GridView.h"

#include "platform/macos/appkit/ViewNative.h"

namespace appkit {
namespace {

NSArray<NSView*>* nativeRow(const GridView::Row& row)
{
    NSMutableArray<NSView*>* natives = [NSMutableArray array];
    for (const auto& view : row)
        [natives addObject:view ? nativeView(*view) : NSGridCell.emptyContentView];
    return natives;
}

NSGridView* makeGrid(const std::vector<GridView::Row>& rows)
{
    NSMutableArray<NSArray<NSView*>*>* natives = [NSMutableArray array];
    for (const auto& row : rows)
        [natives addObject:nativeRow(row)];
    return [NSGridView gridViewWithViews:natives];
}

NSGridCellPlacement nativePlacement(GridXPlacement placement)
{
    return placement == GridXPlacement::Trailing ? NSGridCellPlacementTrailing : NSGridCellPlacementLeading;
}

NSGridCellPlacement nativePlacement(GridYPlacement placement)
{
    return placement == GridYPlacement::Center ? NSGridCellPlacementCenter : NSGridCellPlacementTop;
}

NSGridColumn* columnOf(const GridView& grid, std::size_t column)
{
    return [nativeView<NSGridView>(grid) columnAtIndex:static_cast<NSInteger>(column)];
}

NSGridRow* rowOf(const GridView& grid, std::size_t row)
{
    return [nativeView<NSGridView>(grid) rowAtIndex:static_cast<NSInteger>(row)];
}

} // namespace

GridView::GridView(const std::vector<Row>& rows)
    : View(makeNative(makeGrid(rows)))
    , rows_(rows)
{
}

void GridView::setRowSpacing(double spacing)
{
    nativeView<NSGridView>(*this).rowSpacing = spacing;
}

void GridView::setColumnSpacing(double spacing)
{
    nativeView<NSGridView>(*this).columnSpacing = spacing;
}

void GridView::setXPlacement(GridXPlacement placement)
{
    nativeView<NSGridView>(*this).xPlacement = nativePlacement(placement);
}

void GridView::setYPlacement(GridYPlacement placement)
{
    nativeView<NSGridView>(*this).yPlacement = nativePlacement(placement);
}

void GridView::setColumnWidth(std::size_t column, double width)
{
    columnOf(*this, column).width = width;
}

void GridView::setColumnXPlacement(std::size_t column, GridXPlacement placement)
{
    columnOf(*this, column).xPlacement = nativePlacement(placement);
}

void GridView::mergeCells(std::size_t row)
{
    NSGridRow* native = rowOf(*this, row);
    [native mergeCellsInRange:NSMakeRange(0, static_cast<NSUInteger>(native.numberOfCells))];
    [native cellAtIndex:0].xPlacement = NSGridCellPlacementFill;
}

} // namespace appkit
