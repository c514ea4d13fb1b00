// The status items of the stored bookmarks as Perchly makes them, without the rest of it, by order over the session
// bus: the moment of a change must be known.
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "pinned/PinnedBookmarkManager.h"
#include "platform/appkit/Application.h"

#include <gio/gio.h>

#include <string_view>

namespace {

using perchly::BookmarkManager;

constexpr auto orders = R"xml(<node><interface name="org.perchly.Items">
  <method name="Synchronise"/>
  <method name="SetIcon">
    <arg name="bookmark" type="s" direction="in"/>
    <arg name="symbol" type="s" direction="in"/><arg name="emoji" type="s" direction="in"/>
  </method>
</interface></node>)xml";

/// What is empty, the bookmark does without.
void setIcon(const char* id, std::string symbol, std::string emoji)
{
    auto& store = BookmarkManager::shared();
    const auto* stored = store.bookmark(id);
    if (!stored)
        return;
    const auto given = [](std::string text) { return text.empty() ? std::nullopt : std::optional(std::move(text)); };
    auto bookmark = *stored;
    bookmark.sfSymbolName = given(std::move(symbol));
    bookmark.customEmoji = given(std::move(emoji));
    store.updateBookmark(std::move(bookmark));
    perchly::notifications::postBookmarksDidChange();
}

void obey(GDBusConnection*, const char*, const char*, const char*, const char* method, GVariant* arguments,
    GDBusMethodInvocation* invocation, gpointer)
{
    if (std::string_view(method) == "Synchronise")
        (void)perchly::PinnedBookmarkManager::shared();
    else {
        const char* id = nullptr;
        const char* symbol = nullptr;
        const char* emoji = nullptr;
        g_variant_get(arguments, "(&s&s&s)", &id, &symbol, &emoji);
        setIcon(id, symbol, emoji);
    }
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

class Delegate : public appkit::ApplicationDelegate {
public:
    void applicationDidFinishLaunching() override
    {
        (void)BookmarkManager::shared();
        auto* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
        auto* node = g_dbus_node_info_new_for_xml(orders, nullptr);
        static const GDBusInterfaceVTable table { obey, nullptr, nullptr, {} };
        g_dbus_connection_register_object(bus, "/", node->interfaces[0], &table, nullptr, nullptr, nullptr);
        g_bus_own_name_on_connection(
            bus, "org.perchly.Items", G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr, nullptr, nullptr);
    }

    void applicationStartedAgain() override { }
};

} // namespace

int main(int argc, char** argv)
{
    auto& application = appkit::Application::sharedApplication();
    const auto delegate = std::make_shared<Delegate>();
    application.setDelegate(delegate);
    return application.run(argc, argv);
}
