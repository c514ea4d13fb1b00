#include "platform/linux/table/Table.h"

#include "platform/linux/table/TableStrip.h"

#include <algorithm>
#include <cmath>

namespace desktop {
namespace {

/// How often rows are filled anew because filling them has scrolled the table.
constexpr auto patience = 3;

void place(GtkWidget* widget, const GtkAllocation& allocation)
{
    gtk_widget_measure(widget, GTK_ORIENTATION_HORIZONTAL, -1, nullptr, nullptr, nullptr, nullptr);
    gtk_widget_size_allocate(widget, &allocation, -1);
}

} // namespace

Table::Table(GtkWidget* widget, GtkWidget* list)
    : widget_(widget)
    , header_(makeHeaderStrip(spans_))
    , list_(list)
    , rows_(list, spans_)
{
    gtk_widget_set_parent(header_, widget);
    gtk_widget_set_parent(list, widget);
    setAdjustment(GTK_ORIENTATION_HORIZONTAL, nullptr);
    setAdjustment(GTK_ORIENTATION_VERTICAL, nullptr);
}

Table::~Table() = default;

void Table::dismantle()
{
    laterReload_.reset();
    horizontal_.valueChange.disconnect();
    vertical_.valueChange.disconnect();
    rows_.clear();
    g_clear_pointer(&list_, gtk_widget_unparent);
    g_clear_pointer(&header_, gtk_widget_unparent);
}

void Table::addColumn(const std::string& title, double width)
{
    columns_.push_back({ static_cast<int>(std::lround(width)), false });
    addHeaderTitle(header_, title.c_str());
    gtk_accessible_update_relation(
        GTK_ACCESSIBLE(widget_), GTK_ACCESSIBLE_RELATION_COL_COUNT, static_cast<int>(columns_.size()), -1);
    placeColumnsAnew();
}

void Table::setFlexibleColumns(const std::vector<bool>& areFlexible)
{
    for (std::size_t column = 0; column < std::min(columns_.size(), areFlexible.size()); ++column)
        columns_[column].isFlexible = areFlexible[column];
    placeColumnsAnew();
}

void Table::placeColumnsAnew()
{
    auto spans = placeColumns(columns_, width_);
    if (spans == spans_)
        return;
    spans_ = std::move(spans);
    gtk_widget_queue_allocate(header_);
    for (const auto& row : rows_.all())
        gtk_widget_queue_allocate(row->widget.get());
}

void Table::load()
{
    isLoaded_ = true;
    geometry_.count = client_ ? client_->rowCount() : 0;
    if (geometry_.count > 0)
        geometry_.rowHeight = std::max(1, static_cast<int>(std::lround(client_->heightOfRows())));
    if (cursor_ && *cursor_ >= geometry_.count)
        cursor_.reset();
    selectedRow_.reset();
    gtk_accessible_update_relation(
        GTK_ACCESSIBLE(widget_), GTK_ACCESSIBLE_RELATION_ROW_COUNT, static_cast<int>(geometry_.count), -1);
    configureScrolling();
}

void Table::reload()
{
    // The rows are asked for anew when those that are being asked for are there.
    if (isUpdating_) {
        laterReload_ = callAfter(0, [this] { reload(); });
        return;
    }
    const auto kept = retain(widget_);
    const auto keyboard = keyboardPlace();
    load();
    update(true);
    gtk_widget_queue_allocate(list_);
    if (keyboard)
        giveKeyboard(*keyboard);
}

/// The scroll bars tell of the new state; the rows must be brought in line with it afterwards.
void Table::configureScrolling()
{
    const auto wasUpdating = std::exchange(isUpdating_, true);
    const auto configure = [](GtkAdjustment* adjustment, double length, int frameLength, double step) {
        const auto upper = std::max(length, static_cast<double>(frameLength));
        gtk_adjustment_configure(adjustment, std::min(gtk_adjustment_get_value(adjustment), upper - frameLength), 0,
            upper, step, frameLength, frameLength);
    };
    configure(vertical(), geometry_.height(), frameHeight_, geometry_.rowHeight);
    configure(horizontal(), contentWidth(), width_, geometry_.rowHeight);
    isUpdating_ = wasUpdating;
}

void Table::update(bool anew)
{
    isOutdated_ = true;
    if (isUpdating_)
        return;
    const auto kept = retain(widget_);
    if (const auto* row = enteredRow(); row && *row->index < geometry_.count)
        cursor_ = row->index;
    isUpdating_ = true;
    for (auto attempt = 0; isOutdated_ && attempt < patience; ++attempt) {
        isOutdated_ = false;
        rows_.show(rowsInSight(), anew && attempt == 0, columns_.size(), *this);
    }
    isUpdating_ = false;
    for (const auto& row : rows_.all())
        showSelection(*row);
    if (focusWidget() == widget_)
        focusRow();
}

void Table::didScroll()
{
    update(false);
    gtk_widget_queue_allocate(list_);
}

void Table::fillRow(TableRow& row)
{
    if (client_)
        client_->fillRow(row);
}

void Table::emptyRow(TableRow& row)
{
    if (client_)
        client_->emptyRow(row);
}

void Table::select(std::optional<std::size_t> row)
{
    selectedRow_ = row && *row < geometry_.count ? row : std::nullopt;
    for (const auto& shown : rows_.all())
        showSelection(*shown);
}

void Table::showSelection(const TableRow& row) const
{
    auto* widget = row.widget.get();
    const auto isSelected = row.index && row.index == selectedRow_;
    if (isSelected == ((gtk_widget_get_state_flags(widget) & GTK_STATE_FLAG_SELECTED) != 0))
        return;
    if (isSelected)
        gtk_widget_set_state_flags(widget, GTK_STATE_FLAG_SELECTED, FALSE);
    else
        gtk_widget_unset_state_flags(widget, GTK_STATE_FLAG_SELECTED);
    gtk_accessible_update_state(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_STATE_SELECTED, isSelected, -1);
}

void Table::scrollToVisible(std::size_t row)
{
    if (row >= geometry_.count || frameHeight_ == 0)
        return;
    const auto top = gtk_adjustment_get_value(vertical());
    gtk_adjustment_set_value(vertical(), geometry_.topToShow(row, top, frameHeight_));
}

TableRow* Table::makeRow(std::size_t row)
{
    if (row >= geometry_.count)
        return nullptr;
    return &rows_.make(row, columns_.size(), *this);
}

RowRange Table::rowsInSight() const
{
    return geometry_.inSight(gtk_adjustment_get_value(vertical()), frameHeight_);
}

std::optional<std::size_t> Table::rowAt(double y) const
{
    const auto insideList = y - headerHeight();
    if (insideList < 0)
        return std::nullopt;
    return geometry_.at(gtk_adjustment_get_value(vertical()) + insideList);
}

Table::Scrolling& Table::scrolling(GtkOrientation orientation)
{
    return orientation == GTK_ORIENTATION_HORIZONTAL ? horizontal_ : vertical_;
}

GtkAdjustment* Table::adjustment(GtkOrientation orientation) const
{
    return orientation == GTK_ORIENTATION_HORIZONTAL ? horizontal() : vertical();
}

void Table::setAdjustment(GtkOrientation orientation, GtkAdjustment* adjustment)
{
    auto& scrolling = this->scrolling(orientation);
    if (adjustment && adjustment == scrolling.adjustment.get())
        return;
    scrolling.valueChange.disconnect();
    scrolling.adjustment = retain(adjustment ? adjustment : gtk_adjustment_new(0, 0, 0, 0, 0, 0));
    scrolling.valueChange = connect<void()>(scrolling.adjustment.get(), "value-changed", [this, orientation] {
        if (orientation == GTK_ORIENTATION_VERTICAL)
            didScroll();
        else
            gtk_widget_queue_allocate(widget_);
    });
    gtk_widget_queue_allocate(widget_);
}

int Table::contentWidth() const
{
    return std::max(width_, widthOfColumns(spans_));
}

int Table::contentStart(int width) const
{
    const auto scrolled = static_cast<int>(gtk_adjustment_get_value(horizontal()));
    const auto isMirrored = gtk_widget_get_direction(widget_) == GTK_TEXT_DIR_RTL;
    return isMirrored ? width - contentWidth() + scrolled : -scrolled;
}

int Table::naturalLength(GtkOrientation orientation) const
{
    if (orientation == GTK_ORIENTATION_HORIZONTAL)
        return widthOfColumns(columns_);
    return headerHeight() + static_cast<int>(std::min(geometry_.height(), 10.0 * geometry_.rowHeight));
}

int Table::headerHeight() const
{
    auto height = 0;
    gtk_widget_measure(header_, GTK_ORIENTATION_VERTICAL, -1, nullptr, &height, nullptr, nullptr);
    return height;
}

void Table::allocate(int width, int height)
{
    width_ = width;
    frameHeight_ = std::max(0, height - headerHeight());
    placeColumnsAnew();
    if (isLoaded_ || !client_)
        configureScrolling();
    else
        load();
    update(false);
    // Their first cells may have told which columns are flexible.
    configureScrolling();
    const auto headerHeight = height - frameHeight_;
    place(header_, { contentStart(width), 0, contentWidth(), headerHeight });
    place(list_, { 0, headerHeight, width, frameHeight_ });
}

void Table::allocateRows(int width)
{
    const auto top = gtk_adjustment_get_value(vertical());
    for (const auto& row : rows_.all()) {
        auto* widget = row->widget.get();
        if (!row->index || !gtk_widget_should_layout(widget))
            continue;
        const auto y = static_cast<int>(geometry_.startOf(*row->index) - std::floor(top));
        place(widget, { contentStart(width), y, contentWidth(), geometry_.rowHeight });
    }
}

} // namespace desktop
