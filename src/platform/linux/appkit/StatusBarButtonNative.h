#pragma once

#include "platform/appkit/StatusBarButton.h"

#include <functional>
#include <optional>

namespace appkit {

class Menu;

/// What the status item's connection and the popover share about a button.
struct StatusBarButton::Native {
    /// Where the item was last seen, in the X11 screen's device pixels (y downwards): the pointer's place, inside the
    /// icon, when the user last clicked it. None while unknown.
    std::optional<std::pair<int, int>> lastClick;

    /// While the action of a click on the item itself is being sent; a row of its menu is no such click.
    bool isBeingClicked = false;

    /// Popped up by the action of a right click, for the desktop to show.
    std::shared_ptr<Menu> contextMenu;

    /// Set by the status item: something of what the button shows or stands for has changed.
    std::function<void()> changed;

    void tellOfChange() const
    {
        if (changed)
            changed();
    }
};

} // namespace appkit
