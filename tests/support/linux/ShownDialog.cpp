#include "support/linux/ShownDialog.h"

#include "platform/linux/appkit/ViewNative.h"

#include <string_view>

namespace perchly::test {
namespace {

/// The first widget below whose type's name holds that text, or null.
GtkWidget* findOfType(GtkWidget* widget, std::string_view name)
{
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
        if (std::string_view(G_OBJECT_TYPE_NAME(child)).find(name) != std::string_view::npos)
            return child;
        if (auto* found = findOfType(child, name))
            return found;
    }
    return nullptr;
}

GtkWidget* dialogOf(const webkit::WebView& view)
{
    return findOfType(appkit::widgetOf(view), "ScriptDialog");
}

} // namespace

bool showsDialog(const webkit::WebView& view)
{
    return dialogOf(view) != nullptr;
}

void answerDialog(const webkit::WebView& view)
{
    if (auto* dialog = dialogOf(view))
        g_signal_emit_by_name(findOfType(dialog, "GtkButton"), "clicked");
}

} // namespace perchly::test
