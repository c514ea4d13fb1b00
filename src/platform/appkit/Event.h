#pragma once

#include "platform/foundation/Geometry.h"

namespace appkit {

enum class EventType { LeftMouseDown = 1, LeftMouseUp = 2, RightMouseUp = 4, LeftMouseDragged = 6 };

/// A set of event types.
enum class EventMask : unsigned {
    LeftMouseUp = 1U << static_cast<unsigned>(EventType::LeftMouseUp),
    RightMouseUp = 1U << static_cast<unsigned>(EventType::RightMouseUp),
};

[[nodiscard]] constexpr EventMask operator|(EventMask left, EventMask right)
{
    return static_cast<EventMask>(static_cast<unsigned>(left) | static_cast<unsigned>(right));
}

[[nodiscard]] constexpr bool contains(EventMask mask, EventMask part)
{
    return (static_cast<unsigned>(mask) & static_cast<unsigned>(part)) != 0;
}

/// Something that the user did with the mouse.
struct Event {
    EventType type;

    /// Where the pointer is now, on the screen, whatever happened since the last event. Where the windowing system
    /// keeps that to itself, where the last event was.
    [[nodiscard]] static foundation::Point mouseLocation();
};

} // namespace appkit
