#pragma once

#include <functional>
#include <memory>

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

} // namespace perchly
