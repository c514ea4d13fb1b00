// What the mouse and the keyboard do with a table.
#include "platform/linux/table/Table.h"

#include <algorithm>

namespace desktop {
namespace {

/// Which child of which child a widget is, from the ancestor downwards.
std::vector<int> pathFrom(GtkWidget* ancestor, GtkWidget* widget)
{
    std::vector<int> path;
    for (; widget != ancestor; widget = gtk_widget_get_parent(widget)) {
        auto index = 0;
        for (auto* other = gtk_widget_get_prev_sibling(widget); other; other = gtk_widget_get_prev_sibling(other))
            ++index;
        path.insert(path.begin(), index);
    }
    return path;
}

/// Null where there is no such child.
GtkWidget* widgetAt(GtkWidget* ancestor, const std::vector<int>& path)
{
    auto* widget = ancestor;
    for (auto index : path) {
        widget = gtk_widget_get_first_child(widget);
        for (; widget && index > 0; --index)
            widget = gtk_widget_get_next_sibling(widget);
        if (!widget)
            return nullptr;
    }
    return widget;
}

GtkDirectionType alongTabs(GtkDirectionType direction, bool isMirrored)
{
    return (direction == GTK_DIR_RIGHT) != isMirrored ? GTK_DIR_TAB_FORWARD : GTK_DIR_TAB_BACKWARD;
}

} // namespace

void Table::beginClick(double y)
{
    clickedRow_ = rowAt(y);
}

void Table::endClick(double y, int count)
{
    const auto row = rowAt(y);
    if (row != clickedRow_)
        return;
    const auto isDouble = count == 2;
    if (row || isDouble || y >= headerHeight())
        select(row);
    if (row) {
        cursor_ = row;
        focusRow();
    }
    if (isDouble && client_)
        client_->performDoubleAction();
}

bool Table::performKey(guint key)
{
    switch (key) {
    case GDK_KEY_Return:
    case GDK_KEY_KP_Enter:
    case GDK_KEY_ISO_Enter:
        return confirmRow(true);
    case GDK_KEY_space:
    case GDK_KEY_KP_Space:
        return confirmRow(false);
    default:
        break;
    }
    const auto row = rowAfterKey(key);
    if (row)
        moveTo(*row);
    return row.has_value();
}

/// Where the keyboard is on a row itself, and not on something in it.
bool Table::confirmRow(bool performs)
{
    const auto* row = enteredRow();
    if (!row || focusWidget() != row->widget.get())
        return false;
    select(row->index);
    if (performs && client_)
        client_->performDoubleAction();
    return true;
}

std::optional<std::size_t> Table::rowAfterKey(guint key) const
{
    if (geometry_.count == 0)
        return std::nullopt;
    const auto last = geometry_.count - 1;
    const auto page = static_cast<std::size_t>(std::max(1, frameHeight_ / geometry_.rowHeight - 1));
    const auto row = keyboardIndex();
    const auto upBy = [&](std::size_t rows) { return row ? *row - std::min(*row, rows) : last; };
    const auto downBy = [&](std::size_t rows) { return row ? std::min(*row + rows, last) : 0; };
    switch (key) {
    case GDK_KEY_Up:
    case GDK_KEY_KP_Up:
        return upBy(1);
    case GDK_KEY_Down:
    case GDK_KEY_KP_Down:
        return downBy(1);
    case GDK_KEY_Page_Up:
    case GDK_KEY_KP_Page_Up:
        return upBy(page);
    case GDK_KEY_Page_Down:
    case GDK_KEY_KP_Page_Down:
        return downBy(page);
    case GDK_KEY_Home:
    case GDK_KEY_KP_Home:
        return 0;
    case GDK_KEY_End:
    case GDK_KEY_KP_End:
        return last;
    default:
        return std::nullopt;
    }
}

/// The keyboard stays at the same control, one row on, where it was in one.
void Table::moveTo(std::size_t row)
{
    auto keyboard = keyboardPlace();
    select(row);
    cursor_ = row;
    scrollToVisible(row);
    giveKeyboard({ row, keyboard ? keyboard->path : std::vector<int> {} });
}

GtkWidget* Table::focusWidget() const
{
    auto* root = gtk_widget_get_root(widget_);
    return root ? gtk_root_get_focus(root) : nullptr;
}

TableRow* Table::enteredRow() const
{
    auto* row = rows_.holding(focusWidget());
    return row && row->index ? row : nullptr;
}

std::optional<std::size_t> Table::keyboardIndex() const
{
    if (const auto* row = enteredRow())
        return row->index;
    return cursor_ ? cursor_ : selectedRow_;
}

std::optional<Table::KeyboardPlace> Table::keyboardPlace() const
{
    const auto* row = enteredRow();
    if (!row)
        return std::nullopt;
    return KeyboardPlace { *row->index, pathFrom(row->widget.get(), focusWidget()) };
}

void Table::giveKeyboard(const KeyboardPlace& place)
{
    // Somebody else has it by now.
    if (auto* focus = focusWidget(); focus && focus != widget_ && !gtk_widget_is_ancestor(focus, widget_))
        return;
    const auto* row = geometry_.count == 0 ? nullptr : rows_.find(std::min(place.row, geometry_.count - 1));
    if (!row) {
        gtk_widget_grab_focus(widget_);
        return;
    }
    auto* widget = widgetAt(row->widget.get(), place.path);
    if (widget && widget == focusWidget())
        return;
    if (!widget || !gtk_widget_grab_focus(widget))
        gtk_widget_grab_focus(row->widget.get());
}

bool Table::focusRow()
{
    const auto sight = rowsInSight();
    const auto isInSight = [&](std::optional<std::size_t> row) { return row && sight.contains(*row); };
    const auto index = isInSight(cursor_) ? cursor_ : selectedRow_;
    const auto* row = isInSight(index) ? rows_.find(*index) : nullptr;
    return row && gtk_widget_grab_focus(row->widget.get());
}

bool Table::moveFocus(GtkDirectionType direction)
{
    auto* row = enteredRow();
    if (!row) {
        // From the table itself, which has the keyboard while its row is out of sight, one goes on.
        if (focusWidget() == widget_)
            return false;
        if (!focusRow()) {
            row = rows_.find(rowsInSight().begin);
            gtk_widget_grab_focus(row ? row->widget.get() : widget_);
        }
        if (const auto index = keyboardIndex())
            scrollToVisible(*index);
        return true;
    }
    cursor_ = row->index;
    const auto isWithinRow = direction == GTK_DIR_LEFT || direction == GTK_DIR_RIGHT;
    if (isWithinRow)
        direction = alongTabs(direction, gtk_widget_get_direction(widget_) == GTK_TEXT_DIR_RTL);
    const auto hasMoved = gtk_widget_child_focus(row->widget.get(), direction);
    if (hasMoved)
        scrollToVisible(*row->index);
    return hasMoved || isWithinRow;
}

} // namespace desktop
