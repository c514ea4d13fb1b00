// One window with a column view of three text columns, by order over the session bus: bare_table COUNT [now]
// Warm() shows a window without a table, Hide() hides it, Show() shows the table. With "now" it does so at once,
// and takes no orders. The field above the table filters its rows.
#include "BareToolkit.h"
#include "TableText.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

constexpr auto interfaces = R"xml(<node><interface name="org.perchly.Bare">
  <method name="Warm"/>
  <method name="Hide"/>
  <method name="Show"/>
</interface></node>)xml";

struct Row {
    GObject object;
    char* texts[3];
    char* searched;
};

GType rowType()
{
    static const auto type = g_type_register_static_simple(
        G_TYPE_OBJECT, "BareRow", sizeof(GObjectClass), nullptr, sizeof(Row), nullptr, static_cast<GTypeFlags>(0));
    return type;
}

GListModel* makeRows(std::size_t count)
{
    auto* store = g_list_store_new(rowType());
    for (std::size_t index = 0; index < count; ++index) {
        auto* row = static_cast<Row*>(g_object_new(rowType(), nullptr));
        const auto title = bench::titleOfRow(index);
        const auto address = bench::addressOfRow(index);
        row->texts[0] = g_strdup(title.c_str());
        row->texts[1] = g_strdup(address.c_str());
        row->texts[2] = g_strdup("Open, edit, delete");
        row->searched = g_strconcat(title.c_str(), "\n", address.c_str(), nullptr);
        g_list_store_append(store, row);
        g_object_unref(row);
    }
    return G_LIST_MODEL(store);
}

struct Table {
    GListModel* rows = nullptr;
    GtkWidget* warmth = nullptr;
    GtkWidget* window = nullptr;
};

void setUpCell(GtkSignalListItemFactory*, GtkListItem* item, gpointer)
{
    auto* label = gtk_label_new(nullptr);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_list_item_set_child(item, label);
}

void fillCell(GtkSignalListItemFactory*, GtkListItem* item, gpointer column)
{
    auto* row = static_cast<Row*>(gtk_list_item_get_item(item));
    gtk_label_set_text(GTK_LABEL(gtk_list_item_get_child(item)), row->texts[GPOINTER_TO_INT(column)]);
}

void addColumn(GtkColumnView* view, int index, const char* title, int width)
{
    auto* factory = gtk_signal_list_item_factory_new();
    g_signal_connect(factory, "setup", G_CALLBACK(setUpCell), nullptr);
    g_signal_connect(factory, "bind", G_CALLBACK(fillCell), GINT_TO_POINTER(index));
    auto* column = gtk_column_view_column_new(title, factory);
    gtk_column_view_column_set_fixed_width(column, width);
    gtk_column_view_append_column(view, column);
    g_object_unref(column);
}

/// By a part of the title or of the address, whatever its capitals.
GtkStringFilter* makeFilter()
{
    const auto searched = +[](Row* row, gpointer) { return g_strdup(row->searched); };
    return gtk_string_filter_new(
        gtk_cclosure_expression_new(G_TYPE_STRING, nullptr, 0, nullptr, G_CALLBACK(searched), nullptr, nullptr));
}

GtkWidget* makeField(GtkStringFilter* filter)
{
    auto* field = gtk_search_entry_new();
    const auto search = +[](GtkEditable* editable, gpointer data) {
        gtk_string_filter_set_search(GTK_STRING_FILTER(data), gtk_editable_get_text(editable));
    };
    g_signal_connect(field, "changed", G_CALLBACK(search), filter);
    return field;
}

GtkWidget* makeWindow(GListModel* rows)
{
    auto* filter = makeFilter();
    auto* field = makeField(filter);
    auto* filtered = gtk_filter_list_model_new(G_LIST_MODEL(g_object_ref(rows)), GTK_FILTER(filter));
    auto* view = gtk_column_view_new(GTK_SELECTION_MODEL(gtk_no_selection_new(G_LIST_MODEL(filtered))));
    addColumn(GTK_COLUMN_VIEW(view), 0, "Title", 240);
    addColumn(GTK_COLUMN_VIEW(view), 1, "URL", 380);
    addColumn(GTK_COLUMN_VIEW(view), 2, "Actions", 280);
    auto* scrolled = gtk_scrolled_window_new();
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scrolled), view);
    gtk_widget_set_vexpand(scrolled, TRUE);
    auto* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 16);
    gtk_box_append(GTK_BOX(box), field);
    gtk_box_append(GTK_BOX(box), scrolled);
    auto* window = GTK_WINDOW(gtk_window_new());
    gtk_window_set_default_size(window, 950, 500);
    gtk_window_set_child(window, box);
    gtk_window_set_focus(window, field);
    return GTK_WIDGET(window);
}

GtkWidget* makeWarmth()
{
    auto* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 16);
    gtk_box_append(GTK_BOX(box), gtk_entry_new());
    gtk_box_append(GTK_BOX(box), gtk_button_new_with_label("A button"));
    auto* window = GTK_WINDOW(gtk_window_new());
    gtk_window_set_child(window, box);
    return GTK_WIDGET(window);
}

void show(Table& table)
{
    if (!table.window)
        table.window = makeWindow(table.rows);
    gtk_window_present(GTK_WINDOW(table.window));
}

void obey(GDBusConnection*, const char*, const char*, const char*, const char* method, GVariant*,
    GDBusMethodInvocation* invocation, gpointer data)
{
    auto& table = *static_cast<Table*>(data);
    const std::string_view order = method;
    if (order == "Show")
        show(table);
    else if (order == "Warm")
        gtk_window_present(GTK_WINDOW(table.warmth = makeWarmth()));
    else
        gtk_widget_set_visible(table.warmth, FALSE);
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fputs("usage: bare_table COUNT [now]\n", stderr);
        return 2;
    }
    bare::startToolkit();
    Table table { .rows = makeRows(std::strtoul(argv[1], nullptr, 10)) };
    if (argc > 2) {
        show(table);
        bare::run();
    }
    auto* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    if (!bus) {
        std::fputs("bare_table: there is no session bus\n", stderr);
        return 1;
    }
    auto* node = g_dbus_node_info_new_for_xml(interfaces, nullptr);
    static const GDBusInterfaceVTable orders { obey, nullptr, nullptr, {} };
    g_dbus_connection_register_object(bus, "/", node->interfaces[0], &orders, &table, nullptr, nullptr);
    g_bus_own_name_on_connection(
        bus, "org.perchly.Bare", G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr, nullptr, nullptr);
    bare::run();
}
