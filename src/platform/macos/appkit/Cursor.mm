#include "platform/appkit/Cursor.h"

#include "platform/macos/appkit/CursorNative.h"

namespace appkit {

Cursor::Cursor(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

Cursor::~Cursor() = default;

// The system's to-be successors of these two came with macOS 15.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"

std::shared_ptr<Cursor> Cursor::resizeLeftRightCursor()
{
    return std::shared_ptr<Cursor>(new Cursor(std::make_unique<Native>(Native { NSCursor.resizeLeftRightCursor })));
}

std::shared_ptr<Cursor> Cursor::resizeUpDownCursor()
{
    return std::shared_ptr<Cursor>(new Cursor(std::make_unique<Native>(Native { NSCursor.resizeUpDownCursor })));
}

#pragma clang diagnostic pop

} // namespace appkit
