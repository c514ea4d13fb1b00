#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace perchly {

/// The keys of a bookmark object, in the order in which they are written.
enum class BookmarkKey : std::size_t {
    Id,
    Title,
    Url,
    IsPinned,
    IsAddedToMenuBar,
    IconURL,
    CreatedAt,
    PreferredWidth,
    PreferredHeight,
    ShouldReloadOnOpen,
    IsAlwaysOnTop,
    PrefersDetached,
    OpenInSystemBrowser,
    UserAgent,
    CustomEmoji,
    SfSymbolName,
    MenubarIconSize,
};

inline constexpr std::array<std::string_view, 17> bookmarkKeyNames = {
    "id",
    "title",
    "url",
    "isPinned",
    "isAddedToMenuBar",
    "iconURL",
    "createdAt",
    "preferredWidth",
    "preferredHeight",
    "shouldReloadOnOpen",
    "isAlwaysOnTop",
    "prefersDetached",
    "openInSystemBrowser",
    "userAgent",
    "customEmoji",
    "sfSymbolName",
    "menubarIconSize",
};

/// The one key around the list.
inline constexpr std::string_view bookmarksKeyName = "bookmarks";

constexpr std::string_view nameOf(BookmarkKey key)
{
    return bookmarkKeyNames[static_cast<std::size_t>(key)];
}

} // namespace perchly
