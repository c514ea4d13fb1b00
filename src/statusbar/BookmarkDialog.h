#pragma once

#include "bookmarks/Bookmark.h"

#include <optional>

namespace perchly {

/// Lets the user edit the bookmark, or enter a new one where none is given, and waits for the answer: the bookmark as
/// it is to be saved, or none when the user cancels or leaves the address empty. Main thread.
[[nodiscard]] std::optional<Bookmark> askForBookmark(const std::optional<Bookmark>& bookmark);

} // namespace perchly
