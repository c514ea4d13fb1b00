#pragma once

#include <cstdlib>
#include <string_view>

namespace desktop {

/// The environment variable's value; empty where it is not set.
[[nodiscard]] inline std::string_view environment(const char* name)
{
    const auto* value = std::getenv(name);
    return value ? value : "";
}

/// True if a list like XDG_CURRENT_DESKTOP's, parted by colons, names the desktop.
[[nodiscard]] inline bool namesDesktop(std::string_view desktops, std::string_view desktop)
{
    while (!desktops.empty()) {
        const auto end = desktops.find(':');
        if (desktops.substr(0, end) == desktop)
            return true;
        desktops = end == std::string_view::npos ? std::string_view {} : desktops.substr(end + 1);
    }
    return false;
}

} // namespace desktop
