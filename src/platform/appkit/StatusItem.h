#pragma once

#include <memory>

namespace appkit {

class Menu;
class StatusBarButton;

/// A place of the application's in the system's status bar. It leaves the bar with its last owner.
class StatusItem {
public:
    ~StatusItem();
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;

    /// Null where the system gave the item no button.
    [[nodiscard]] std::shared_ptr<StatusBarButton> button() const;

    /// While a menu is attached, any click opens it instead of sending the button's action.
    void setMenu(std::shared_ptr<Menu> menu);
    [[nodiscard]] std::shared_ptr<Menu> menu() const;

    struct Native;

private:
    friend class StatusBar;
    explicit StatusItem(std::unique_ptr<Native> native);

    std::unique_ptr<Native> native_;
};

} // namespace appkit
