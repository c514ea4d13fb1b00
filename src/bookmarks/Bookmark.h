#pragma once

#include "platform/foundation/Date.h"
#include "platform/foundation/UUID.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace perchly {

/// A saved web address and how it is opened. A plain value; identified by `id`, equal only in all fields.
/// An absent optional means that the default applies.
struct Bookmark {
    std::string id = foundation::makeUUIDString();
    std::string title = {};
    std::string url = {}; // as it was entered or loaded; not parsed on storage
    bool isPinned = false;
    bool isAddedToMenuBar = false;
    std::optional<std::string> iconURL = std::nullopt;
    foundation::Date createdAt = foundation::Date::now();
    std::optional<double> preferredWidth = std::nullopt;
    std::optional<double> preferredHeight = std::nullopt;
    bool shouldReloadOnOpen = false;
    bool isAlwaysOnTop = true; // alone among the flags: a new bookmark's window floats
    bool prefersDetached = false;
    bool openInSystemBrowser = false;
    std::optional<std::string> userAgent = std::nullopt;
    std::optional<std::string> customEmoji = std::nullopt;
    std::optional<std::string> sfSymbolName = std::nullopt;
    std::optional<double> menubarIconSize = std::nullopt;

    bool operator==(const Bookmark&) const = default;
};

} // namespace perchly

/// Agrees with ==.
template <>
struct std::hash<perchly::Bookmark> {
    std::size_t operator()(const perchly::Bookmark& bookmark) const noexcept;
};
