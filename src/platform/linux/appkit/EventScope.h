#pragma once

#include "platform/appkit/Event.h"

#include <optional>

namespace appkit {

/// An event of the status area's while it is handled: the application's current one.
class EventScope {
public:
    explicit EventScope(EventType type);
    ~EventScope();
    EventScope(const EventScope&) = delete;
    EventScope& operator=(const EventScope&) = delete;

private:
    std::optional<Event> before_;
};

} // namespace appkit
