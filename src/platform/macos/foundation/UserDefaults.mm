#include "platform/foundation/UserDefaults.h"

#include "platform/macos/foundation/Conversions.h"

namespace foundation {

struct UserDefaults::Native {
    NSUserDefaults* defaults = NSUserDefaults.standardUserDefaults;
};

UserDefaults::UserDefaults()
    : native_(std::make_unique<Native>())
{
}

UserDefaults::~UserDefaults() = default;

UserDefaults& UserDefaults::standard()
{
    static UserDefaults defaults;
    return defaults;
}

std::optional<std::string> UserDefaults::stringForKey(std::string_view key) const
{
    NSString* value = [native_->defaults stringForKey:nativeText(key)];
    if (!value)
        return std::nullopt;
    return textFrom(value);
}

void UserDefaults::setString(std::string_view value, std::string_view key)
{
    [native_->defaults setObject:nativeText(value) forKey:nativeText(key)];
}

void UserDefaults::removeObjectForKey(std::string_view key)
{
    [native_->defaults removeObjectForKey:nativeText(key)];
}

} // namespace foundation
