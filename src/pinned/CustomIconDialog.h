#pragma once

#include "bookmarks/Bookmark.h"

#include <optional>

namespace perchly {

/// Asks for a bookmark's icon and its size. The bookmark as it is then wanted, or none where the user cancelled.
[[nodiscard]] std::optional<Bookmark> askForCustomIcon(const Bookmark& bookmark);

} // namespace perchly
