#pragma once

#include <memory>
#include <string_view>

namespace appkit {

class Menu;
class StatusBarButton;

/// A place of the application's in the system's status bar. It leaves the bar with its last owner.
class StatusItem {
public:
    ~StatusItem();
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;

    /// The name by which the status bar knows the item again at the next start: where it stands, whether it is hidden.
    /// To be set before the main loop's next turn.
    void setAutosaveName(std::string_view name);

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
