#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace appkit {
class StatusBarButton;
} // namespace appkit

namespace perchly {

struct Bookmark;

/// Finds the button again when a download has ended; null where the item is gone. Called on the main thread.
using ButtonFinder = std::function<std::shared_ptr<appkit::StatusBarButton>()>;

/// Gives the button the bookmark's look: its own icon address, or its symbol or text, or its emoji, or the icon of its
/// site; the first letter of its title where that cannot be had. What has to be downloaded comes later. Main thread.
void applyIcon(appkit::StatusBarButton& button, const Bookmark& bookmark, ButtonFinder findButton);

/// Where icons of sites are asked for, given what the user defaults have: an address of the web, or else what the
/// program was built with.
[[nodiscard]] std::string faviconService(const std::optional<std::string>& preferred);

} // namespace perchly
