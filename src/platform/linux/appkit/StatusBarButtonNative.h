#pragma once

#include "platform/appkit/StatusBarButton.h"

#include <functional>
#include <optional>

namespace appkit {

/// What the status item's connection and the popover share about a button.
struct StatusBarButton::Native {
    /// Where the item was last seen, in the X11 screen's device pixels (y downwards): the pointer's place, inside the
    /// icon, when the user last clicked it. None while unknown.
    std::optional<std::pair<int, int>> lastClick;

    /// While the action of a click on the item itself is being sent; a row of its menu is no such click.
    bool isBeingClicked = false;

    /// Set by the status item: the picture or title has changed.
    std::function<void()> changed;
};

} // namespace appkit
