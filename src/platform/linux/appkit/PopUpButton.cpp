#include "platform/appkit/PopUpButton.h"

#include "platform/linux/appkit/ViewNative.h"

#include <algorithm>

namespace appkit {
namespace {

GtkWidget* makeDropDown()
{
    auto* dropDown = gtk_drop_down_new(G_LIST_MODEL(gtk_string_list_new(nullptr)), nullptr);
    // Screen readers come to the button inside, which has no name of its own.
    gtk_accessible_update_relation(GTK_ACCESSIBLE(gtk_widget_get_first_child(dropDown)),
        GTK_ACCESSIBLE_RELATION_LABELLED_BY, dropDown, nullptr, -1);
    return dropDown;
}

void describeSelectedItem(GtkWidget* dropDown)
{
    auto* item = static_cast<GtkStringObject*>(gtk_drop_down_get_selected_item(GTK_DROP_DOWN(dropDown)));
    gtk_accessible_update_property(GTK_ACCESSIBLE(gtk_widget_get_first_child(dropDown)),
        GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, item ? gtk_string_object_get_string(item) : "", -1);
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
    native().connections.push_back(desktop::connect<void(GParamSpec*)>(widgetOf(*this), "notify::selected",
        [dropDown = widgetOf(*this)](GParamSpec*) { describeSelectedItem(dropDown); }));
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
