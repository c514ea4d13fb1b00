// Looks at the status items on the session bus the way a status area does, for tests that run a whole program.
//   perchly_status_probe items                      one line for each registered item: SERVICE PATH
//   perchly_status_probe ids                        their Ids, a line each
//   perchly_status_probe item ID                    the item of that Id: SERVICE PATH
//   perchly_status_probe property SERVICE PATH NAME   the item's property as text
//   perchly_status_probe menu SERVICE PATH          one line for each row of the item's menu:
//                                                   DEPTH|TYPE|enabled or disabled|LABEL
//                                                   TYPE is standard, separator, checked or unchecked
//   perchly_status_probe click SERVICE PATH LABEL   chooses the first row of that label
//   perchly_status_probe activate SERVICE PATH X Y  a left click

#include <gio/gio.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct VariantEnd {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using Variant = std::unique_ptr<GVariant, VariantEnd>;

constexpr int callLimit = 5000; // milliseconds

GDBusConnection* bus()
{
    static GDBusConnection* connection = [] {
        GError* error = nullptr;
        auto* made = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error);
        if (made == nullptr) {
            std::fprintf(stderr, "status probe: %s\n", error->message);
            std::exit(1);
        }
        return made;
    }();
    return connection;
}

Variant call(const char* service, const char* path, const char* interface, const char* method, GVariant* arguments)
{
    GError* error = nullptr;
    auto* reply = g_dbus_connection_call_sync(bus(), service, path, interface, method, arguments, nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, callLimit, nullptr, &error);
    if (reply == nullptr) {
        std::fprintf(stderr, "status probe: %s.%s: %s\n", interface, method, error->message);
        std::exit(1);
    }
    return Variant(reply);
}

Variant property(const char* service, const char* path, const char* interface, const char* name)
{
    const auto reply
        = call(service, path, "org.freedesktop.DBus.Properties", "Get", g_variant_new("(ss)", interface, name));
    GVariant* value = nullptr;
    g_variant_get(reply.get(), "(v)", &value);
    return Variant(value);
}

std::string textOf(GVariant* value)
{
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) || g_variant_is_of_type(value, G_VARIANT_TYPE_OBJECT_PATH))
        return g_variant_get_string(value, nullptr);
    std::unique_ptr<char, decltype(&g_free)> text(g_variant_print(value, FALSE), g_free);
    return text.get();
}

struct Row {
    int depth = 0;
    gint32 id = 0;
    std::string type = "standard";
    bool isEnabled = true;
    std::string label;
};

void readRow(GVariant* node, int depth, std::vector<Row>& rows)
{
    Row row;
    row.depth = depth;
    GVariant* properties = nullptr;
    GVariantIter* children = nullptr;
    g_variant_get(node, "(i@a{sv}av)", &row.id, &properties, &children);
    const Variant owned(properties);
    const char* text = nullptr;
    gboolean flag = TRUE;
    gint32 state = 0;
    if (g_variant_lookup(properties, "type", "&s", &text))
        row.type = text;
    if (g_variant_lookup(properties, "toggle-type", "&s", &text) && text == std::string_view("checkmark"))
        row.type = g_variant_lookup(properties, "toggle-state", "i", &state) && state == 1 ? "checked" : "unchecked";
    if (g_variant_lookup(properties, "label", "&s", &text))
        row.label = text;
    if (g_variant_lookup(properties, "enabled", "b", &flag))
        row.isEnabled = flag != FALSE;
    flag = TRUE;
    const bool isVisible = !g_variant_lookup(properties, "visible", "b", &flag) || flag != FALSE;
    if (isVisible && depth >= 0)
        rows.push_back(row);
    GVariant* child = nullptr;
    while (g_variant_iter_next(children, "v", &child)) {
        const Variant ownedChild(child);
        if (isVisible)
            readRow(child, depth + 1, rows);
    }
    g_variant_iter_free(children);
}

struct Menu {
    std::string path;
    std::vector<Row> rows;
};

constexpr auto itemInterface = "org.kde.StatusNotifierItem";
constexpr auto menuInterface = "com.canonical.dbusmenu";

Menu menuOf(const char* service, const char* itemPath)
{
    Menu menu;
    menu.path = textOf(property(service, itemPath, itemInterface, "Menu").get());
    // As a panel does before it opens a menu.
    call(service, menu.path.c_str(), menuInterface, "AboutToShow", g_variant_new("(i)", 0));
    const auto reply = call(service, menu.path.c_str(), menuInterface, "GetLayout",
        g_variant_new("(ii@as)", 0, -1, g_variant_new_strv(nullptr, 0)));
    const Variant root(g_variant_get_child_value(reply.get(), 1));
    readRow(root.get(), -1, menu.rows);
    return menu;
}

struct Item {
    std::string service;
    std::string path;
};

std::vector<Item> registeredItems()
{
    std::vector<Item> items;
    const auto registered = property("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
        "org.kde.StatusNotifierWatcher", "RegisteredStatusNotifierItems");
    GVariantIter iter;
    g_variant_iter_init(&iter, registered.get());
    const char* item = nullptr;
    while (g_variant_iter_next(&iter, "&s", &item)) {
        const std::string_view text(item);
        const auto slash = text.find('/');
        items.push_back({ std::string(text.substr(0, slash)),
            std::string(slash == std::string_view::npos ? "/StatusNotifierItem" : text.substr(slash)) });
    }
    return items;
}

std::string idOf(const Item& item)
{
    return textOf(property(item.service.c_str(), item.path.c_str(), itemInterface, "Id").get());
}

void print(const Item& item)
{
    std::printf("%s %s\n", item.service.c_str(), item.path.c_str());
}

int printItems()
{
    for (const auto& item : registeredItems())
        print(item);
    return 0;
}

int printIds()
{
    for (const auto& item : registeredItems())
        std::puts(idOf(item).c_str());
    return 0;
}

int printItem(std::string_view id)
{
    for (const auto& item : registeredItems()) {
        if (idOf(item) != id)
            continue;
        print(item);
        return 0;
    }
    return 1;
}

int printMenu(const char* service, const char* path)
{
    for (const auto& row : menuOf(service, path).rows)
        std::printf(
            "%d|%s|%s|%s\n", row.depth, row.type.c_str(), row.isEnabled ? "enabled" : "disabled", row.label.c_str());
    return 0;
}

int click(const char* service, const char* path, const char* label)
{
    const auto menu = menuOf(service, path);
    for (const auto& row : menu.rows) {
        if (row.label != label)
            continue;
        call(service, menu.path.c_str(), menuInterface, "Event",
            g_variant_new("(isvu)", row.id, "clicked", g_variant_new_int32(0), 0U));
        return 0;
    }
    std::fprintf(stderr, "status probe: the menu has no row \"%s\"\n", label);
    return 1;
}

int run(const std::vector<const char*>& words)
{
    const std::string_view command = words.empty() ? "" : words[0];
    if (command == "items" && words.size() == 1)
        return printItems();
    if (command == "ids" && words.size() == 1)
        return printIds();
    if (command == "item" && words.size() == 2)
        return printItem(words[1]);
    if (command == "property" && words.size() == 4) {
        std::puts(textOf(property(words[1], words[2], itemInterface, words[3]).get()).c_str());
        return 0;
    }
    if (command == "menu" && words.size() == 3)
        return printMenu(words[1], words[2]);
    if (command == "click" && words.size() == 4)
        return click(words[1], words[2], words[3]);
    if (command == "activate" && words.size() == 5) {
        call(words[1], words[2], itemInterface, "Activate",
            g_variant_new("(ii)", std::atoi(words[3]), std::atoi(words[4])));
        return 0;
    }
    std::fputs("usage: perchly_status_probe items | ids | item | property | menu | click | activate\n", stderr);
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    return run(std::vector<const char*>(argv + 1, argv + argc));
}
