#include "platform/linux/appkit/TableCells.h"

#include "platform/appkit/TextField.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/table/TableStrip.h"
#include "platform/linux/table/TableWidget.h"

#include <algorithm>
#include <utility>

namespace appkit {
namespace {

bool isIn(const View& view, const desktop::TableRow* row)
{
    auto* cell = gtk_widget_get_parent(widgetOf(view));
    return row && cell && gtk_widget_get_parent(cell) == row->widget.get();
}

const TextField* textFieldOf(const std::shared_ptr<View>& view)
{
    const auto* cell = dynamic_cast<const TableCellView*>(view.get());
    return cell ? cell->textField().get() : nullptr;
}

/// As much of it as can be seen.
std::string shownBy(const TextField& field)
{
    auto* widget = widgetOf(field);
    return GTK_IS_LABEL(widget) ? gtk_label_get_text(GTK_LABEL(widget)) : field.stringValue();
}

void setName(GtkWidget* widget, const std::string& name)
{
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_PROPERTY_LABEL, name.c_str(), -1);
}

std::string textsOf(const std::vector<std::shared_ptr<View>>& views)
{
    std::string texts;
    for (const auto& view : views) {
        if (const auto* field = textFieldOf(view))
            texts += (texts.empty() ? "" : ", ") + shownBy(*field);
    }
    return texts;
}

} // namespace

TableCells::TableCells(TableView& view)
    : view_(view)
    , table_(desktop::tableOf(widgetOf(view)))
{
    table_.setClient(this);
}

TableCells::~TableCells()
{
    table_.setClient(nullptr);
}

std::shared_ptr<View> TableCells::take(std::string_view identifier)
{
    const auto fits = [identifier](const auto& view) { return view->identifier() == identifier; };
    auto found = std::find_if(
        waiting_.rbegin(), waiting_.rend(), [&](const auto& view) { return fits(view) && isIn(*view, filling_); });
    if (found == waiting_.rend())
        found = std::find_if(waiting_.rbegin(), waiting_.rend(), fits);
    if (found == waiting_.rend())
        return nullptr;
    auto view = *found;
    waiting_.erase(std::next(found).base());
    return view;
}

std::shared_ptr<View> TableCells::viewIn(const desktop::TableRow& row, std::size_t column) const
{
    const auto found = views_.find(&row);
    return found != views_.end() && column < found->second.size() ? found->second[column] : nullptr;
}

/// Null when the table is about to go: then nobody is asked any more.
std::shared_ptr<View> TableCells::keepView() const
{
    return view_.weak_from_this().lock();
}

std::size_t TableCells::rowCount()
{
    const auto kept = keepView();
    const auto source = kept ? view_.dataSource() : nullptr;
    return source ? source->numberOfRows(view_) : 0;
}

double TableCells::heightOfRows()
{
    constexpr auto usualHeight = 24.0;
    const auto kept = keepView();
    const auto delegate = kept ? view_.delegate() : nullptr;
    return delegate ? delegate->heightOfRow(view_, 0) : usualHeight;
}

void TableCells::performDoubleAction()
{
    if (const auto kept = keepView())
        view_.doubleAction().send(view_);
}

void TableCells::fillRow(desktop::TableRow& row)
{
    const auto kept = keepView();
    if (!kept)
        return;
    enqueue(views_[&row]);
    const auto fillingBefore = std::exchange(filling_, &row);
    auto views = askForViews(row);
    filling_ = fillingBefore;
    for (std::size_t column = 0; column < views.size(); ++column)
        fillCell(row.cells[column], column, views[column]);
    setName(row.widget.get(), textsOf(views));
    learnFlexibleColumns(views);
    views_[&row] = std::move(views);
}

void TableCells::fillCell(GtkWidget* cell, std::size_t column, const std::shared_ptr<View>& view)
{
    desktop::setCellContent(cell, view ? widgetOf(*view) : nullptr);
    const auto* field = textFieldOf(view);
    setName(cell, field ? shownBy(*field) : view_.tableColumns()[column].title);
}

TableCells::Views TableCells::askForViews(const desktop::TableRow& row)
{
    Views views;
    views.reserve(row.cells.size());
    const auto index = *row.index;
    for (std::size_t column = 0; column < row.cells.size(); ++column) {
        const auto delegate = view_.delegate();
        views.push_back(delegate ? delegate->viewForRow(view_, view_.tableColumns()[column], index) : nullptr);
        std::erase(waiting_, views.back());
    }
    return views;
}

void TableCells::emptyRow(desktop::TableRow& row)
{
    if (const auto found = views_.find(&row); found != views_.end())
        enqueue(found->second);
}

/// Some may wait in vain, because nobody asks for views to be used again; the latest of them are enough.
void TableCells::enqueue(Views& views)
{
    for (auto& view : std::exchange(views, {})) {
        if (view && !view->identifier().empty())
            waiting_.push_back(std::move(view));
    }
    const auto enough = table_.rows().all().size() * view_.tableColumns().size();
    if (waiting_.size() > enough)
        waiting_.erase(waiting_.begin(), waiting_.end() - static_cast<std::ptrdiff_t>(enough));
}

/// A text can be shown in more room than it was given, or in less.
void TableCells::learnFlexibleColumns(const Views& views)
{
    if (knowsFlexibleColumns_)
        return;
    knowsFlexibleColumns_ = true;
    std::vector<bool> areFlexible;
    std::ranges::transform(views, std::back_inserter(areFlexible), textFieldOf);
    table_.setFlexibleColumns(areFlexible);
}

} // namespace appkit
