#include "browser/ResizeAreas.h"

#include "browser/ResizeArea.h"
#include "platform/appkit/Cursor.h"
#include "platform/appkit/LayoutConstraint.h"

#include <string_view>

namespace perchly {
namespace {

using appkit::Cursor;

constexpr double thickness = 5;
constexpr std::string_view leftLabel = "Resize left edge";
constexpr std::string_view rightLabel = "Resize right edge";

bool isMirrored(const appkit::View& root)
{
    return root.userInterfaceLayoutDirection() == appkit::LayoutDirection::RightToLeft;
}

std::shared_ptr<ResizeArea> makeArea(std::string_view label, std::shared_ptr<Cursor> cursor)
{
    auto area = std::make_shared<ResizeArea>(std::move(cursor));
    area->setAccessibilityLabel(label);
    area->setAccessibilityRole(appkit::AccessibilityRole::Splitter);
    area->setTranslatesAutoresizingMaskIntoConstraints(false);
    return area;
}

} // namespace

ResizeAreas::ResizeAreas(appkit::View& root, const std::function<void(double deltaWidth, double deltaHeight)>& resizeBy)
    : leftResizeArea(makeArea(isMirrored(root) ? rightLabel : leftLabel, Cursor::resizeLeftRightCursor()))
    , rightResizeArea(makeArea(isMirrored(root) ? leftLabel : rightLabel, Cursor::resizeLeftRightCursor()))
    , bottomResizeArea(makeArea("Resize bottom edge", Cursor::resizeUpDownCursor()))
{
    // What leads stands on the right where people read to the left.
    const auto outwards = isMirrored(root) ? -1.0 : 1.0;
    leftResizeArea->onResize = [=](double deltaX, double) { resizeBy(-deltaX * outwards, 0); };
    rightResizeArea->onResize = [=](double deltaX, double) { resizeBy(deltaX * outwards, 0); };
    // The screen's y grows upwards, the browser downwards.
    bottomResizeArea->onResize = [resizeBy](double, double deltaY) { resizeBy(0, -deltaY); };
    for (const auto& area : { leftResizeArea, rightResizeArea, bottomResizeArea })
        root.addSubview(area);
    layOut(root);
}

void ResizeAreas::layOut(appkit::View& root)
{
    for (const auto& area : { leftResizeArea, rightResizeArea }) {
        appkit::activateConstraints({
            area->topAnchor().equalTo(root.topAnchor()),
            area->bottomAnchor().equalTo(root.bottomAnchor()),
            area->widthAnchor().equalToConstant(thickness),
        });
    }
    appkit::activateConstraints({
        leftResizeArea->leadingAnchor().equalTo(root.leadingAnchor()),
        rightResizeArea->trailingAnchor().equalTo(root.trailingAnchor()),

        bottomResizeArea->leadingAnchor().equalTo(root.leadingAnchor()),
        bottomResizeArea->trailingAnchor().equalTo(root.trailingAnchor()),
        bottomResizeArea->bottomAnchor().equalTo(root.bottomAnchor()),
        bottomResizeArea->heightAnchor().equalToConstant(thickness),
    });
}

} // namespace perchly
