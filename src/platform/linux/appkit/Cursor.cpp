#include "platform/appkit/Cursor.h"

#include "platform/linux/appkit/CursorNative.h"

namespace appkit {

Cursor::Cursor(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

Cursor::~Cursor() = default;

std::shared_ptr<Cursor> Cursor::resizeLeftRightCursor()
{
    return std::shared_ptr<Cursor>(new Cursor(std::make_unique<Native>(Native { "ew-resize" })));
}

std::shared_ptr<Cursor> Cursor::resizeUpDownCursor()
{
    return std::shared_ptr<Cursor>(new Cursor(std::make_unique<Native>(Native { "ns-resize" })));
}

} // namespace appkit
