#pragma once

#include "platform/linux/desktop/MonitorArea.h"

#include <optional>
#include <vector>

namespace desktop {

enum class PanelSide { Top, Bottom, Left, Right };

struct PopoverScene {
    /// The primary one first.
    std::vector<MonitorArea> monitors;
    /// A point inside the icon that the popover points at; none while unknown.
    std::optional<PixelPoint> anchor {};
    bool isRightToLeft = false;
};

/// What the bubble needs around its content, in the pixels of the screen it goes to.
struct BubbleShape {
    /// The visible box with its border.
    PixelSize box;
    int arrowLength = 0;
    /// The least distance of the arrow's middle from the ends of its edge.
    int arrowInset = 0;
    /// The transparent margin that holds the shadow.
    int shadow = 0;
    /// What is kept free between the box and the ends of the work area.
    int gap = 0;
    /// How far an icon reaches from the point where it was clicked, where no panel's edge tells.
    int iconReach = 0;
    /// No icon is farther than this from all edges of its monitor: such an anchor is taken as unknown.
    int panelReach = 0;
};

struct PopoverPlacement {
    /// Where the panel is, and with it the arrow.
    PanelSide side = PanelSide::Top;
    PixelRect box;
    /// The box and its margins.
    PixelRect window;
    /// Where on the box's edge the arrow stands, from its left or top end; none where there is no room for it.
    std::optional<int> arrow;
    bool operator==(const PopoverPlacement&) const = default;
};

/// Finds the monitor and the panel that the anchor belongs to and puts the bubble beside it: centred on the anchor, but
/// inside the work area, where the arrow moves instead. A box that does not fit into it with its margins is made
/// smaller.
[[nodiscard]] PopoverPlacement placePopover(const PopoverScene& scene, const BubbleShape& shape);

/// How thick the panels on that side of the monitor are together.
[[nodiscard]] int panelThickness(const MonitorArea& monitor, PanelSide side);

/// The monitor that holds the point, or else the nearest one; an empty one where there is none.
[[nodiscard]] MonitorArea monitorAt(const std::vector<MonitorArea>& monitors, PixelPoint point);

/// True where the point is likely to lie in the same icon as the anchor: in the same panel, no farther along it than
/// the panel is thick.
[[nodiscard]] bool isInSameIcon(const std::vector<MonitorArea>& monitors, PixelPoint anchor, PixelPoint point);

} // namespace desktop
