#include "platform/foundation/Character.h"

#include "platform/macos/foundation/Conversions.h"

namespace foundation {

std::string uppercasedFirstCharacter(std::string_view text)
{
    NSString* native = nativeText(text);
    if (native.length == 0)
        return {};
    const NSRange first = [native rangeOfComposedCharacterSequenceAtIndex:0];
    return textFrom([native substringWithRange:first].uppercaseString);
}

std::string lowercased(std::string_view text)
{
    return textFrom(nativeText(text).lowercaseString);
}

} // namespace foundation
