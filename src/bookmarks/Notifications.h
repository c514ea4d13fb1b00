#pragma once

#include "platform/foundation/NotificationCenter.h"

#include <string_view>

/// Names on the default notification centre, posted without a payload.
namespace perchly::notifications {

/// Posted by whoever changed bookmarks through the store; the store itself posts nothing.
inline constexpr std::string_view bookmarksDidChange = "BookmarksDidChange";

/// Posted after the home page was saved or reset.
inline constexpr std::string_view settingsDidChange = "SettingsDidChange";

inline void postBookmarksDidChange()
{
    foundation::NotificationCenter::defaultCenter().post(bookmarksDidChange);
}

inline void postSettingsDidChange()
{
    foundation::NotificationCenter::defaultCenter().post(settingsDidChange);
}

} // namespace perchly::notifications
