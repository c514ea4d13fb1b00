#pragma once

#include "platform/appkit/StatusItem.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/statusarea/MenuServer.h"
#include "platform/linux/statusarea/StatusNotifierItem.h"
#include "platform/linux/statusarea/StatusNotifierWatcher.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace appkit {

/// A status item on the bus: a connection of its own (to close it is the only way to take the item back), and on it
/// the item, its menu and its registration.
struct StatusItem::Native {
    explicit Native(std::string itemId);
    ~Native();
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    void setMenu(std::shared_ptr<Menu> newMenu);

    /// Off the bus for good.
    void remove();

    /// The menus of all status items there are.
    [[nodiscard]] static std::vector<std::shared_ptr<Menu>> attachedMenus();

    std::string id;
    std::shared_ptr<StatusBarButton> button;
    std::shared_ptr<Menu> menu;

private:
    void connect();
    void connectAfterStartUp();
    void disconnect();
    static void exportConnectedItems();
    void exportItem();
    void buttonChanged();
    void update();
    void show(desktop::StatusNotifierItem::Appearance look);
    void askForContextMenu();
    void clicked(desktop::StatusNotifierItem::Click click, std::pair<int, int> place);
    [[nodiscard]] bool takesRightClicks() const;

    [[nodiscard]] desktop::StatusNotifierItem::Configuration configuration() const;
    [[nodiscard]] desktop::StatusNotifierItem::Appearance appearance() const;
    [[nodiscard]] std::vector<desktop::MenuRow> rows();

    /// Until there is a connection, or none can be had.
    desktop::ObjectPointer<GCancellable> connecting_;
    desktop::ObjectPointer<GDBusConnection> connection_;
    std::shared_ptr<desktop::MenuServer> menuServer_;
    std::shared_ptr<desktop::StatusNotifierItem> item_;
    std::unique_ptr<desktop::StatusNotifierWatcher> watcher_;
    desktop::SourceHandle pendingUpdate_;
    desktop::SourceHandle pendingBlank_;
};

} // namespace appkit
