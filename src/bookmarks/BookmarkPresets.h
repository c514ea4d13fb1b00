#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace perchly {

struct Bookmark;

/// A choice of what a bookmark's browser calls itself. None stands for the default and is stored as none.
struct UserAgentPreset {
    std::string_view title;
    std::optional<std::string_view> value;
};

/// The value of the row that lets the user type a user agent. Never stored.
inline constexpr std::string_view customUserAgentMarker = "custom";

/// As the bookmark dialog lists them.
extern const std::array<UserAgentPreset, 7> addDialogUserAgentPresets;
/// As the menu of a bookmark's status item lists them: shorter, and without a custom one.
extern const std::array<UserAgentPreset, 6> pinnedMenuUserAgentPresets;

/// A choice of how large a bookmark's status item is.
struct IconSizePreset {
    std::string_view dialogTitle;
    std::string_view menuTitle;
    double points;
};

extern const std::array<IconSizePreset, 4> iconSizePresets;

/// What stands for an icon size that a bookmark does not have: different for what is drawn here (symbols and texts,
/// and the choice that is marked as the present one) and for what is downloaded.
inline constexpr double defaultIconSize = 15;
inline constexpr double defaultDownloadedIconSize = 16;

/// The row of the bookmark dialog. An index beyond the table ends the process.
[[nodiscard]] const UserAgentPreset& userAgentPresetAt(std::size_t index);
/// An index beyond the table ends the process.
[[nodiscard]] const IconSizePreset& iconSizePresetAt(std::size_t index);

[[nodiscard]] bool isCurrentUserAgent(const UserAgentPreset& preset, const Bookmark& bookmark);
[[nodiscard]] bool isCurrentIconSize(double points, const Bookmark& bookmark);

} // namespace perchly
