#include "platform/appkit/PopUpButton.h"

#include "platform/linux/appkit/ViewNative.h"

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
}

void PopUpButton::addItem(std::string_view title)
{
    itemTitles_.emplace_back(title);
    auto* titles = GTK_STRING_LIST(gtk_drop_down_get_model(GTK_DROP_DOWN(widgetOf(*this))));
    gtk_string_list_append(titles, itemTitles_.back().c_str());
}

void PopUpButton::selectItemAt(std::size_t index)
{
    gtk_drop_down_set_selected(GTK_DROP_DOWN(widgetOf(*this)), static_cast<guint>(index));
}

std::size_t PopUpButton::indexOfSelectedItem() const
{
    return gtk_drop_down_get_selected(GTK_DROP_DOWN(widgetOf(*this)));
}

} // namespace appkit
