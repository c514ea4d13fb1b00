#pragma once

#include "platform/appkit/View.h"

#include <functional>
#include <memory>
#include <optional>

namespace perchly {

/// An edge that the user can drag. It reports each step of a drag and leaves the resizing to its owner. Main thread.
class ResizeArea : public appkit::View {
public:
    /// The cursor is the one shown over the whole area.
    explicit ResizeArea(std::shared_ptr<appkit::Cursor> cursor);

    /// Gets how far the pointer went since the step before, in points, y upwards. None: drags are ignored.
    std::function<void(double deltaX, double deltaY)> onResize;

    void mouseDown(const appkit::Event& event) override;
    void mouseDragged(const appkit::Event& event) override;
    void resetCursorRects() override;

private:
    std::shared_ptr<appkit::Cursor> cursor_;
    /// On the screen; none before the first mouse-down.
    std::optional<foundation::Point> lastMouseLocation_;
};

} // namespace perchly
