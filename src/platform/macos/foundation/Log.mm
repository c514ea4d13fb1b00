#include "platform/foundation/Log.h"

#include "platform/foundation/Text.h"
#include "platform/macos/foundation/Conversions.h"

namespace foundation {

void log(std::string_view line)
{
    NSLog(@"%@", nativeText(inOneLine(line)));
}

} // namespace foundation
