#include "platform/appkit/Event.h"

#include "platform/macos/appkit/Conversions.h"

namespace appkit {

foundation::Point Event::mouseLocation()
{
    return pointFrom(NSEvent.mouseLocation);
}

} // namespace appkit
