// One window that shows one of several web views at a time, by order over the session bus:
//   bare_browsers ADDRESS...
// Show(u) shows the view of that address, and makes it the first time; Hide() hides the window. The views are kept.
#include "BareBrowser.h"

#include <cstdio>
#include <string_view>
#include <vector>

namespace {

constexpr auto interfaces = R"xml(<node><interface name="org.perchly.Bare">
  <method name="Show"><arg type="u" direction="in"/></method>
  <method name="Hide"/>
</interface></node>)xml";

struct Browsers {
    std::vector<const char*> addresses;
    WebKitNetworkSession* session = nullptr;
    std::vector<GtkWidget*> views {};
    GtkWidget* stack = nullptr; // none for one view
    GtkWidget* window = nullptr;
};

// A window for a click: no decoration to draw, and its place is the window manager's to choose.
void makeWindow(Browsers& browsers, GtkWidget* content)
{
    auto* window = bare::makeWindow(content);
    gtk_window_set_decorated(window, FALSE);
    browsers.window = GTK_WIDGET(window);
}

GtkWidget* viewAt(Browsers& browsers, guint index)
{
    auto*& view = browsers.views.at(index);
    if (view)
        return view;
    view = bare::makeView(browsers.session, browsers.addresses.at(index));
    if (browsers.stack)
        gtk_stack_add_child(GTK_STACK(browsers.stack), view);
    if (!browsers.window)
        makeWindow(browsers, browsers.stack ? browsers.stack : view);
    return view;
}

void show(Browsers& browsers, guint index)
{
    auto* view = viewAt(browsers, index);
    if (browsers.stack)
        gtk_stack_set_visible_child(GTK_STACK(browsers.stack), view);
    gtk_widget_set_visible(browsers.window, TRUE);
}

void obey(GDBusConnection*, const char*, const char*, const char*, const char* method, GVariant* arguments,
    GDBusMethodInvocation* invocation, gpointer data)
{
    auto& browsers = *static_cast<Browsers*>(data);
    guint index = 0;
    if (std::string_view(method) == "Show") {
        g_variant_get(arguments, "(u)", &index);
        show(browsers, index);
    } else
        gtk_widget_set_visible(browsers.window, FALSE);
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fputs("usage: bare_browsers ADDRESS...\n", stderr);
        return 2;
    }
    bare::startEngine();
    Browsers browsers { .addresses = { argv + 1, argv + argc }, .session = bare::makeSession() };
    browsers.views.resize(browsers.addresses.size());
    if (browsers.addresses.size() > 1)
        browsers.stack = gtk_stack_new();

    auto* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    if (!bus) {
        std::fputs("bare_browsers: there is no session bus\n", stderr);
        return 1;
    }
    auto* node = g_dbus_node_info_new_for_xml(interfaces, nullptr);
    static const GDBusInterfaceVTable table { obey, nullptr, nullptr, {} };
    g_dbus_connection_register_object(bus, "/", node->interfaces[0], &table, &browsers, nullptr, nullptr);
    g_bus_own_name_on_connection(
        bus, "org.perchly.Bare", G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr, nullptr, nullptr);
    bare::run();
}
