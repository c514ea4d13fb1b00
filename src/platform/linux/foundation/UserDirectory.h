#pragma once

#include <cstdlib>
#include <filesystem>
#include <glib.h>
#include <optional>

namespace foundation {

/// The folder that the environment variable names, else that path below the home folder; none without a home.
/// Read anew on every call, where GLib's own look-up would keep the first answer.
[[nodiscard]] inline std::optional<std::filesystem::path> userDirectory(const char* variable, const char* pathBelowHome)
{
    // Relative paths in these variables count as unset.
    if (const char* named = std::getenv(variable); named && std::filesystem::path(named).is_absolute())
        return named;
    const char* named = std::getenv("HOME");
    const std::filesystem::path home = named ? named : g_get_home_dir();
    if (!home.is_absolute())
        return std::nullopt;
    return home / pathBelowHome;
}

} // namespace foundation
