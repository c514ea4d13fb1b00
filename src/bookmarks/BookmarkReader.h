#pragma once

#include "bookmarks/Bookmark.h"
#include "platform/foundation/Result.h"

#include <simdjson.h>
#include <vector>

namespace perchly {

/// The bookmarks of a parsed document, or the first thing that is wrong with it.
[[nodiscard]] foundation::Result<std::vector<Bookmark>> readBookmarks(simdjson::dom::element document);

} // namespace perchly
