#include "platform/linux/popover/PopoverPlacement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace desktop {
namespace {

constexpr std::array allSides { PanelSide::Top, PanelSide::Bottom, PanelSide::Left, PanelSide::Right };

/// What the bubble points at: the panel's side, the place along the panel, and where the arrow's tip ends.
struct Target {
    PanelSide side;
    int along;
    int edge;
};

bool isHorizontal(PanelSide side)
{
    return side == PanelSide::Top || side == PanelSide::Bottom;
}

PixelPoint nearestPoint(const PixelRect& rect, PixelPoint point)
{
    return { std::clamp(point.x, rect.x, std::max(rect.x, rect.right() - 1)),
        std::clamp(point.y, rect.y, std::max(rect.y, rect.bottom() - 1)) };
}

int edgeOf(const PixelRect& rect, PanelSide side)
{
    switch (side) {
    case PanelSide::Top:
        return rect.y;
    case PanelSide::Bottom:
        return rect.bottom();
    case PanelSide::Left:
        return rect.x;
    case PanelSide::Right:
        break;
    }
    return rect.right();
}

/// How far the point is from that edge, inwards; negative outside.
int depth(const PixelRect& rect, PanelSide side, PixelPoint point)
{
    switch (side) {
    case PanelSide::Top:
        return point.y - rect.y;
    case PanelSide::Bottom:
        return rect.bottom() - 1 - point.y;
    case PanelSide::Left:
        return point.x - rect.x;
    case PanelSide::Right:
        break;
    }
    return rect.right() - 1 - point.x;
}

bool hasPanel(const MonitorArea& monitor)
{
    return std::ranges::any_of(allSides, [&](PanelSide side) { return panelThickness(monitor, side) > 0; });
}

std::optional<PanelSide> sideOutsideWorkArea(const MonitorArea& monitor, PixelPoint point)
{
    for (const auto side : allSides) {
        if (panelThickness(monitor, side) > 0 && depth(monitor.workArea, side, point) < 0)
            return side;
    }
    return std::nullopt;
}

PanelSide nearestSide(const MonitorArea& monitor, PixelPoint point)
{
    const auto panelsOnly = hasPanel(monitor);
    auto nearest = PanelSide::Top;
    auto least = std::numeric_limits<int>::max();
    for (const auto side : allSides) {
        if (panelsOnly && panelThickness(monitor, side) == 0)
            continue;
        const auto distance = depth(monitor.workArea, side, point);
        if (distance < least) {
            nearest = side;
            least = distance;
        }
    }
    return nearest;
}

bool pointsForward(PanelSide side)
{
    return side == PanelSide::Top || side == PanelSide::Left;
}

Target targetAt(PixelPoint anchor, const MonitorArea& monitor, int iconReach)
{
    const auto point = nearestPoint(monitor.bounds, anchor);
    if (const auto side = sideOutsideWorkArea(monitor, point))
        return { *side, isHorizontal(*side) ? point.x : point.y, edgeOf(monitor.workArea, *side) };
    // A panel that reserves no room: the icon itself must stay free.
    const auto side = nearestSide(monitor, point);
    const auto across = isHorizontal(side) ? point.y : point.x;
    return { side, isHorizontal(side) ? point.x : point.y, across + (pointsForward(side) ? iconReach : -iconReach) };
}

/// The pointer is anywhere when a menu was worked by keys.
bool isNearPanel(const PopoverScene& scene, int panelReach)
{
    if (!scene.anchor)
        return false;
    const auto bounds = monitorAt(scene.monitors, *scene.anchor).bounds;
    return std::ranges::any_of(
        allSides, [&](PanelSide side) { return depth(bounds, side, *scene.anchor) <= panelReach; });
}

/// Status areas stand at the trailing end of the panel.
Target targetAtPanelEnd(const MonitorArea& monitor, bool isRightToLeft)
{
    const auto* const panel
        = std::ranges::find_if(allSides, [&](PanelSide side) { return panelThickness(monitor, side) > 0; });
    const auto side = panel == allSides.end() ? PanelSide::Top : *panel;
    const auto& area = monitor.workArea;
    const auto end = isRightToLeft ? area.x : area.right();
    return { side, isHorizontal(side) ? end : area.bottom(), edgeOf(area, side) };
}

MonitorArea panelMonitor(const std::vector<MonitorArea>& monitors)
{
    const auto withPanel = std::ranges::find_if(monitors, hasPanel);
    if (withPanel != monitors.end())
        return *withPanel;
    return monitors.empty() ? MonitorArea {} : monitors.front();
}

/// Keeps a length inside another one, with a gap at both ends while there is room for it.
int clampInto(int start, int length, int areaStart, int areaLength, int gap)
{
    const auto slack = std::max(0, areaLength - length);
    const auto margin = std::min(gap, slack / 2);
    return std::clamp(start, areaStart + margin, areaStart + slack - margin);
}

int marginAt(PanelSide end, PanelSide side, const BubbleShape& shape)
{
    return end == side ? shape.arrowLength : shape.shadow;
}

/// A monitor that is not known yet limits nothing.
PixelSize fittingBox(PanelSide side, const PixelRect& area, const BubbleShape& shape)
{
    const auto fit = [&](int length, int room, PanelSide start, PanelSide end) {
        return room > 0
            ? std::min(length, std::max(1, room - marginAt(start, side, shape) - marginAt(end, side, shape)))
            : length;
    };
    return { fit(shape.box.width, area.width, PanelSide::Left, PanelSide::Right),
        fit(shape.box.height, area.height, PanelSide::Top, PanelSide::Bottom) };
}

PixelRect boxAt(const Target& target, const PixelRect& area, const BubbleShape& shape)
{
    const auto [width, height] = fittingBox(target.side, area, shape);
    const auto isAcrossX = !isHorizontal(target.side);
    const auto length = isAcrossX ? width : height;
    const auto isReduced = isAcrossX ? height < shape.box.height : width < shape.box.width;
    const auto gap = isReduced ? shape.shadow : shape.gap;
    const auto across
        = pointsForward(target.side) ? target.edge + shape.arrowLength : target.edge - shape.arrowLength - length;
    if (isAcrossX)
        return { clampInto(across, width, area.x, area.width, 0),
            clampInto(target.along - height / 2, height, area.y, area.height, gap), width, height };
    return { clampInto(target.along - width / 2, width, area.x, area.width, gap),
        clampInto(across, height, area.y, area.height, 0), width, height };
}

std::optional<int> arrowAt(const Target& target, const PixelRect& box, const BubbleShape& shape)
{
    const auto distance = std::abs(edgeOf(box, target.side) - target.edge);
    if (distance != shape.arrowLength)
        return std::nullopt;
    const auto length = isHorizontal(target.side) ? box.width : box.height;
    const auto start = isHorizontal(target.side) ? box.x : box.y;
    const auto inset = std::min(shape.arrowInset, length / 2);
    return std::clamp(target.along - start, inset, length - inset);
}

PixelRect withMargins(const PixelRect& box, PanelSide side, const BubbleShape& shape)
{
    const auto margin = [&](PanelSide end) { return marginAt(end, side, shape); };
    const auto left = margin(PanelSide::Left);
    const auto top = margin(PanelSide::Top);
    return { box.x - left, box.y - top, left + box.width + margin(PanelSide::Right),
        top + box.height + margin(PanelSide::Bottom) };
}

} // namespace

int panelThickness(const MonitorArea& monitor, PanelSide side)
{
    return std::abs(edgeOf(monitor.workArea, side) - edgeOf(monitor.bounds, side));
}

MonitorArea monitorAt(const std::vector<MonitorArea>& monitors, PixelPoint point)
{
    MonitorArea nearest;
    auto least = std::numeric_limits<long>::max();
    for (const auto& monitor : monitors) {
        const auto inside = nearestPoint(monitor.bounds, point);
        const auto distance = std::labs(point.x - inside.x) + std::labs(point.y - inside.y);
        if (distance < least) {
            nearest = monitor;
            least = distance;
        }
    }
    return nearest;
}

bool isInSameIcon(const std::vector<MonitorArea>& monitors, PixelPoint anchor, PixelPoint point)
{
    const auto monitor = monitorAt(monitors, anchor);
    const auto side = sideOutsideWorkArea(monitor, anchor);
    if (!side || !monitor.bounds.contains(point) || sideOutsideWorkArea(monitor, point) != side)
        return false;
    const auto distance = isHorizontal(*side) ? std::abs(anchor.x - point.x) : std::abs(anchor.y - point.y);
    return distance <= panelThickness(monitor, *side);
}

PopoverPlacement placePopover(const PopoverScene& scene, const BubbleShape& shape)
{
    const auto isAnchored = isNearPanel(scene, shape.panelReach);
    const auto monitor = isAnchored ? monitorAt(scene.monitors, *scene.anchor) : panelMonitor(scene.monitors);
    const auto target = isAnchored ? targetAt(*scene.anchor, monitor, shape.iconReach)
                                   : targetAtPanelEnd(monitor, scene.isRightToLeft);
    const auto box = boxAt(target, monitor.workArea, shape);
    return { target.side, box, withMargins(box, target.side, shape), arrowAt(target, box, shape) };
}

} // namespace desktop
