#include "browser/ResizeArea.h"

#include "platform/appkit/Cursor.h"
#include "platform/appkit/Event.h"

namespace perchly {

ResizeArea::ResizeArea(std::shared_ptr<appkit::Cursor> cursor)
    : View(HandlesMouse {})
    , cursor_(std::move(cursor))
{
}

void ResizeArea::resetCursorRects()
{
    addCursorRect(bounds(), *cursor_);
}

void ResizeArea::mouseDown(const appkit::Event& /*event*/)
{
    // The screen's coordinates, because the area itself moves with what it resizes.
    lastMouseLocation_ = appkit::Event::mouseLocation();
}

void ResizeArea::mouseDragged(const appkit::Event& /*event*/)
{
    if (!lastMouseLocation_)
        return;
    const auto current = appkit::Event::mouseLocation();
    if (onResize)
        onResize(current.x - lastMouseLocation_->x, current.y - lastMouseLocation_->y);
    lastMouseLocation_ = current;
}

} // namespace perchly
