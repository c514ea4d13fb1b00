#include "platform/linux/appkit/StatusItemNative.h"

#include "platform/appkit/Event.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Log.h"
#include "platform/linux/appkit/EventScope.h"
#include "platform/linux/appkit/ImageNative.h"
#include "platform/linux/appkit/MenuRows.h"
#include "platform/linux/appkit/StatusBarButtonNative.h"
#include "platform/linux/desktop/Environment.h"
#include "platform/linux/desktop/Pointer.h"
#include "platform/linux/desktop/StartUp.h"

namespace appkit {
namespace {

constexpr const char* title = "Perchly";

/// Cinnamon lets a click open the menu of items below this path; everywhere else it is a path like any other.
constexpr const char* menuItemPath = "/org/ayatana/NotificationItem/perchly";
constexpr const char* clickItemPath = "/StatusNotifierItem";
constexpr const char* menuPath = "/MenuBar";

/// These open no menu on a left click and know only Activate: there it does what the button does, and the menu is left
/// to the right button. Others see that Activate is missing and open the menu on any click.
bool needsActivate()
{
    const auto desktops = desktop::environment("XDG_CURRENT_DESKTOP");
    return desktop::namesDesktop(desktops, "LXQt") || desktop::namesDesktop(desktops, "MATE");
}

/// Shows an item's menu at a single click, whichever button was used. Desktops that are made of GNOME's parts have a
/// status area of their own, which sends clicks.
bool opensMenusOnly()
{
    const auto desktops = desktop::environment("XDG_CURRENT_DESKTOP");
    return desktop::namesDesktop(desktops, "GNOME") && !desktop::namesDesktop(desktops, "Budgie");
}

/// How long an item keeps its former picture when it turns blank.
constexpr unsigned blankPatience = 2000;

void performLeftClick(StatusBarButton& button)
{
    const EventScope event(EventType::LeftMouseUp);
    button.performClick();
}

/// Picture and label.
desktop::StatusNotifierItem::Appearance lookOf(const StatusBarButton& button)
{
    const auto& image = button.image();
    if (!image && button.title().empty())
        return {};
    if (!image)
        return { {}, {}, {}, {}, pictureOf(button.title(), button.font()), {} };
    auto icon = themedIconOf(*image);
    return { std::move(icon.name), std::move(icon.folder), std::move(icon.file), {}, pictureOf(*image), {} };
}

void logOnce(const std::string& line)
{
    static bool logged = false;
    if (!std::exchange(logged, true))
        foundation::log(line);
}

/// In the order of their making.
std::vector<StatusItem::Native*>& allItems()
{
    static std::vector<StatusItem::Native*> items;
    return items;
}

/// The row that takes its item away is still to be answered. Asks the bus something, because what is answered was sent,
/// and all that went before it: g_dbus_connection_flush takes a thread, and keeps it for good where the bus has gone.
void closeWhenSent(GDBusConnection* connection)
{
    const auto sent = +[](GObject* source, GAsyncResult* result, gpointer) {
        if (auto* reply = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr))
            g_variant_unref(reply);
        g_dbus_connection_close(G_DBUS_CONNECTION(source), nullptr, nullptr, nullptr);
    };
    constexpr auto patience = 1000;
    g_dbus_connection_call(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Peer",
        "Ping", nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, patience, nullptr, sent, nullptr);
}

desktop::GLibPointer<> sessionBusAddress()
{
    desktop::ErrorPointer error;
    desktop::GLibPointer<> address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, error.out()));
    if (!address)
        logOnce("StatusBar - There is no session bus, hence no status item: " + error.message());
    return address;
}

} // namespace

StatusItem::Native::Native(std::string itemId)
    : id(std::move(itemId))
{
    allItems().push_back(this);
    connecting_ = desktop::adopt(g_cancellable_new());
    if (desktop::beginStartUp())
        connect();
    else
        connectAfterStartUp();
}

void StatusItem::Native::connectAfterStartUp()
{
    const std::shared_ptr<GCancellable> connecting(desktop::retain(connecting_.get()));
    desktop::afterStartUp([this, connecting] {
        // Cancelled: the status item is gone.
        if (!g_cancellable_is_cancelled(connecting.get()))
            connect();
    });
}

StatusItem::Native::~Native()
{
    std::erase(allItems(), this);
    disconnect();
    exportConnectedItems();
}

void StatusItem::Native::connect()
{
    const auto address = sessionBusAddress();
    if (!address)
        return connecting_.reset();
    const auto connected = +[](GObject*, GAsyncResult* result, gpointer data) {
        desktop::ErrorPointer error;
        auto* connection = g_dbus_connection_new_for_address_finish(result, error.out());
        // Cancelled: the status item is gone.
        if (error.matches(G_IO_ERROR, G_IO_ERROR_CANCELLED))
            return;
        auto* self = static_cast<Native*>(data);
        self->connecting_.reset();
        self->connection_ = desktop::adopt(connection);
        if (!connection)
            logOnce("StatusBar - The session bus cannot be reached, hence no status item: " + error.message());
        exportConnectedItems();
    };
    constexpr auto flags = static_cast<GDBusConnectionFlags>(
        G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    g_dbus_connection_new_for_address(address.get(), flags, nullptr, connecting_.get(), connected, this);
}

void StatusItem::Native::disconnect()
{
    if (connecting_) {
        g_cancellable_cancel(connecting_.get());
        // It may be the one that the others are waiting for.
        desktop::endStartUp();
    }
    connecting_.reset();
    watcher_.reset();
    item_.reset();
    menuServer_.reset();
    if (connection_)
        closeWhenSent(connection_.get());
    connection_.reset();
}

void StatusItem::Native::remove()
{
    pendingUpdate_.reset();
    pendingBlank_.reset();
    disconnect();
    exportConnectedItems();
}

/// Connections are made in any order, but status areas show items in the order of their coming.
void StatusItem::Native::exportConnectedItems()
{
    for (auto* item : allItems()) {
        if (item->connecting_)
            return;
        if (item->connection_ && !item->item_)
            item->exportItem();
    }
}

/// Comes in a later turn of the main loop than the item's making, when its picture and menu are set.
void StatusItem::Native::exportItem()
{
    const auto options = configuration();
    menuServer_ = desktop::MenuServer::create(connection_.get(), options.menuPath,
        { [this] { return rows(); }, [this] { button->native().lastClick = desktop::pointerPosition(); } });
    item_ = desktop::StatusNotifierItem::create(
        connection_.get(), options, appearance(), [this](auto click, auto place) { clicked(click, place); });
    button->native().changed = [this] { buttonChanged(); };
    const std::string service = menu ? options.path : g_dbus_connection_get_unique_name(connection_.get());
    watcher_ = std::make_unique<desktop::StatusNotifierWatcher>(connection_.get(), service);
}

desktop::StatusNotifierItem::Configuration StatusItem::Native::configuration() const
{
    if (menu)
        return { menuItemPath, id, menuPath, true, needsActivate() };
    return { clickItemPath, id, menuPath, false, true };
}

desktop::StatusNotifierItem::Appearance StatusItem::Native::appearance() const
{
    auto look = lookOf(*button);
    look.title = button->toolTip().empty() ? title : button->toolTip();
    return look;
}

/// The menu of an item without one stands for the click: some hosts open it on a click, and none shows an item whose
/// menu is empty.
std::vector<desktop::MenuRow> StatusItem::Native::rows()
{
    if (menu && !menu->items().empty())
        return menuRows(*menu);
    const auto open = openRow([weak = std::weak_ptr(button)] {
        if (const auto clickable = weak.lock())
            performLeftClick(*clickable);
    });
    askForContextMenu();
    const auto& contextMenu = button->native().contextMenu;
    if (!contextMenu)
        return { open };
    auto contextRows = menuRows(*contextMenu);
    if (opensMenusOnly())
        contextRows.insert(contextRows.begin(), { open, separatorRow() });
    return contextRows;
}

bool StatusItem::Native::takesRightClicks() const
{
    return contains(button->actionMask(), EventMask::RightMouseUp);
}

/// The action of a right click pops up a menu, which is what hosts want to know long before the click.
void StatusItem::Native::askForContextMenu()
{
    if (menu || !takesRightClicks())
        return;
    const EventScope event(EventType::RightMouseUp);
    button->performClick();
}

/// Many changes make one.
void StatusItem::Native::buttonChanged()
{
    if (!pendingUpdate_)
        pendingUpdate_ = desktop::callAfter(0, [this] { update(); });
}

void StatusItem::Native::update()
{
    pendingUpdate_.reset();
    // While the connection is being made anew there is no item; it will be exported as it then looks.
    if (!item_)
        return;
    if (!menu && takesRightClicks())
        menuServer_->rowsChanged();
    auto look = appearance();
    if (look.picture)
        return show(std::move(look));
    // A picture that is on its way from outside comes soon, and hosts would flicker. The title is known.
    auto former = item_->appearance();
    former.title = look.title;
    item_->setAppearance(std::move(former));
    if (!pendingBlank_)
        pendingBlank_ = desktop::callAfter(blankPatience, [this] { show(appearance()); });
}

void StatusItem::Native::show(desktop::StatusNotifierItem::Appearance look)
{
    pendingBlank_.reset();
    if (item_)
        item_->setAppearance(std::move(look));
}

void StatusItem::Native::clicked(desktop::StatusNotifierItem::Click click, std::pair<int, int> place)
{
    // Comes from hosts that cannot show a menu; a click of theirs on an item that is its menu has to do something.
    if (click == desktop::StatusNotifierItem::Click::ContextMenu && !menu)
        return;
    const auto pointer = desktop::pointerPosition();
    button->native().lastClick = pointer ? pointer : place;
    foundation::dispatchMainAsync([weak = std::weak_ptr(button)] {
        const auto clickable = weak.lock();
        if (!clickable)
            return;
        clickable->native().isBeingClicked = true;
        performLeftClick(*clickable);
        clickable->native().isBeingClicked = false;
    });
}

void StatusItem::Native::setMenu(std::shared_ptr<Menu> newMenu)
{
    const bool hadMenu = menu != nullptr;
    menu = std::move(newMenu);
    if (!menuServer_)
        return;
    if (hadMenu == (menu != nullptr))
        return menuServer_->rowsChanged();
    // Hosts learn only once whether an item is a menu.
    disconnect();
    connect();
}

std::vector<std::shared_ptr<Menu>> StatusItem::Native::attachedMenus()
{
    std::vector<std::shared_ptr<Menu>> menus;
    for (const auto* item : allItems()) {
        if (item->menu)
            menus.push_back(item->menu);
    }
    return menus;
}

StatusItem::StatusItem(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
    native_->button
        = std::shared_ptr<StatusBarButton>(new StatusBarButton(std::make_unique<StatusBarButton::Native>()));
}

void StatusItem::setAutosaveName(std::string_view name)
{
    const desktop::GLibPointer<> escaped(
        g_uri_escape_bytes(reinterpret_cast<const guint8*>(name.data()), name.size(), nullptr));
    native_->id = std::string("perchly-") + escaped.get();
}

StatusItem::~StatusItem()
{
    native_->button->native().changed = nullptr;
}

std::shared_ptr<StatusBarButton> StatusItem::button() const
{
    return native_->button;
}

void StatusItem::setMenu(std::shared_ptr<Menu> menu)
{
    native_->setMenu(std::move(menu));
}

std::shared_ptr<Menu> StatusItem::menu() const
{
    return native_->menu;
}

} // namespace appkit
