#include "platform/appkit/TableView.h"

#include "platform/macos/appkit/ControlNative.h"
#include "platform/macos/appkit/Conversions.h"

#include <algorithm>

/// What the table has in a cell: a view of the application, which it keeps. So the table's store of views to be reused
/// decides how long they live.
@interface PerchlyTableCell : NSTableCellView
@property (nonatomic, readonly) std::shared_ptr<appkit::View> content;
/// A view that is reused is in its cell still.
+ (instancetype)cellShowing:(const std::shared_ptr<appkit::View>&)content;
@end

/// A table's target, data source and delegate: asks those of the owner.
@interface PerchlyTableHelper : PerchlyActionTarget <NSTableViewDataSource, NSTableViewDelegate>
/// It keeps the helper.
@property (nonatomic) appkit::TableView* owner;
@end

@implementation PerchlyTableCell

+ (instancetype)cellShowing:(const std::shared_ptr<appkit::View>&)content
{
    NSView* view = appkit::nativeView(*content);
    if ([view.superview isKindOfClass:PerchlyTableCell.class])
        return static_cast<PerchlyTableCell*>(view.superview);
    PerchlyTableCell* cell = [[PerchlyTableCell alloc] initWithFrame:view.frame];
    cell->_content = content;
    view.frame = cell.bounds;
    view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [cell addSubview:view];
    return cell;
}

- (void)setBackgroundStyle:(NSBackgroundStyle)style
{
    [super setBackgroundStyle:style];
    // AppKit tells the cell's own subviews only, not those of the view inside, how to stand out from a selected row.
    for (NSView* view in self.subviews.firstObject.subviews) {
        if ([view isKindOfClass:NSControl.class])
            static_cast<NSControl*>(view).cell.backgroundStyle = style;
    }
}

@end

namespace {

const appkit::TableColumn& columnOf(const appkit::TableView& table, NSTableColumn* native)
{
    // Not by its place: the user may have moved it.
    return *std::ranges::find(
        table.tableColumns(), appkit::textFrom(native.identifier), &appkit::TableColumn::identifier);
}

} // namespace

@implementation PerchlyTableHelper

/// Held until the operation has returned, which may take the table away; null for one that is going.
- (std::shared_ptr<appkit::TableView>)heldOwner
{
    return self.owner ? std::static_pointer_cast<appkit::TableView>(self.owner->weak_from_this().lock()) : nullptr;
}

- (NSInteger)numberOfRowsInTableView:(NSTableView*)tableView
{
    const auto owner = [self heldOwner];
    const auto dataSource = owner ? owner->dataSource() : nullptr;
    return dataSource ? static_cast<NSInteger>(dataSource->numberOfRows(*owner)) : 0;
}

- (CGFloat)tableView:(NSTableView*)tableView heightOfRow:(NSInteger)row
{
    const auto owner = [self heldOwner];
    const auto delegate = owner ? owner->delegate() : nullptr;
    return delegate ? delegate->heightOfRow(*owner, static_cast<std::size_t>(row)) : tableView.rowHeight;
}

- (NSView*)tableView:(NSTableView*)tableView viewForTableColumn:(NSTableColumn*)tableColumn row:(NSInteger)row
{
    const auto owner = [self heldOwner];
    const auto delegate = owner ? owner->delegate() : nullptr;
    if (!delegate)
        return nil;
    const auto view = delegate->viewForRow(*owner, columnOf(*owner, tableColumn), static_cast<std::size_t>(row));
    if (!view)
        return nil;
    PerchlyTableCell* cell = [PerchlyTableCell cellShowing:view];
    cell.identifier = appkit::nativeText(view->identifier());
    return cell;
}

@end

namespace appkit {
namespace {

std::unique_ptr<View::Native> makeTable()
{
    // It comes with a header of the usual kind, and with at most one row to be selected.
    NSTableView* table = [[NSTableView alloc] init];
    PerchlyTableHelper* helper = [[PerchlyTableHelper alloc] init];
    table.dataSource = helper;
    table.delegate = helper;
    table.target = helper;
    table.doubleAction = @selector(invoke:);
    return makeNative(table, helper);
}

std::optional<std::size_t> rowFrom(NSInteger native)
{
    return native < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(native));
}

std::shared_ptr<View> contentOf(NSView* cell)
{
    return cell ? static_cast<PerchlyTableCell*>(cell).content : nullptr;
}

} // namespace

TableView::TableView()
    : View(makeTable())
{
    auto* helper = helperOf<PerchlyTableHelper>(*this);
    helper.owner = this;
    helper.handler = actionHandler(*this, doubleAction_);
}

void TableView::addTableColumn(TableColumn column)
{
    NSTableColumn* native = [[NSTableColumn alloc] initWithIdentifier:nativeText(column.identifier)];
    native.title = nativeText(column.title);
    native.width = column.width;
    // AppKit may ask for the column's cells at once.
    columns_.push_back(std::move(column));
    [nativeView<NSTableView>(*this) addTableColumn:native];
}

void TableView::reloadData()
{
    NSTableView* table = nativeView<NSTableView>(*this);
    [table reloadData];
    [table deselectAll:nil];
}

std::size_t TableView::numberOfRows() const
{
    return static_cast<std::size_t>(nativeView<NSTableView>(*this).numberOfRows);
}

std::optional<std::size_t> TableView::selectedRow() const
{
    return rowFrom(nativeView<NSTableView>(*this).selectedRow);
}

void TableView::selectRow(std::optional<std::size_t> row)
{
    NSIndexSet* rows = row ? [NSIndexSet indexSetWithIndex:*row] : [NSIndexSet indexSet];
    [nativeView<NSTableView>(*this) selectRowIndexes:rows byExtendingSelection:NO];
}

void TableView::scrollRowToVisible(std::size_t row)
{
    [nativeView<NSTableView>(*this) scrollRowToVisible:static_cast<NSInteger>(row)];
}

std::optional<std::size_t> TableView::rowForView(const View& view) const
{
    return rowFrom([nativeView<NSTableView>(*this) rowForView:nativeView(view)]);
}

std::shared_ptr<View> TableView::viewAt(std::size_t column, std::size_t row, bool makeIfNecessary)
{
    NSTableView* table = nativeView<NSTableView>(*this);
    return contentOf([table viewAtColumn:[table columnWithIdentifier:nativeText(columns_[column].identifier)]
                                     row:static_cast<NSInteger>(row)
                         makeIfNecessary:makeIfNecessary]);
}

std::shared_ptr<View> TableView::makeView(std::string_view identifier)
{
    return contentOf([nativeView<NSTableView>(*this) makeViewWithIdentifier:nativeText(identifier) owner:nil]);
}

} // namespace appkit
