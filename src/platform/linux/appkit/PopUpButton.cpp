#include "platform/appkit/PopUpButton.h"

#include "platform/linux/appkit/ViewNative.h"

#include <algorithm>

namespace appkit {
namespace {

GtkWidget* makeDropDown()
{
    return gtk_drop_down_new(G_LIST_MODEL(gtk_string_list_new(nullptr)), nullptr);
}

} // namespace

PopUpButton::PopUpButton()
    : View(makeNative(makeDropDown))
{
    native().connections.push_back(
        desktop::connect<void(GParamSpec*)>(widgetOf(*this), "notify::selected", [this](GParamSpec*) {
            // Held until the operation has returned, which may take the button away.
            if (const auto self = weak_from_this().lock())
                action_.send(*this);
        }));
}

void PopUpButton::addItem(std::string_view title)
{
    // The first one becomes the chosen one, but nobody has chosen it.
    const desktop::SignalBlock nobodyChose(native().connections.front());
    itemTitles_.emplace_back(title);
    auto* titles = GTK_STRING_LIST(gtk_drop_down_get_model(GTK_DROP_DOWN(widgetOf(*this))));
    gtk_string_list_append(titles, itemTitles_.back().c_str());
}

void PopUpButton::selectItemAt(std::size_t index)
{
    const desktop::SignalBlock nobodyChose(native().connections.front());
    gtk_drop_down_set_selected(GTK_DROP_DOWN(widgetOf(*this)), static_cast<guint>(index));
}

void PopUpButton::selectItemWithTitle(std::string_view title)
{
    if (const auto found = std::ranges::find(itemTitles_, title); found != itemTitles_.end())
        selectItemAt(static_cast<std::size_t>(found - itemTitles_.begin()));
}

std::string PopUpButton::titleOfSelectedItem() const
{
    const auto index = indexOfSelectedItem();
    return index < itemTitles_.size() ? itemTitles_[index] : "";
}

std::size_t PopUpButton::indexOfSelectedItem() const
{
    return gtk_drop_down_get_selected(GTK_DROP_DOWN(widgetOf(*this)));
}

} // namespace appkit
