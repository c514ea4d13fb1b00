#pragma once

#include "bookmarks/Bookmark.h"

#include <vector>

namespace perchly {

/// Merges imported bookmarks into a list, one after the other: the first bookmark of the same id is replaced in place;
/// otherwise an address that the list holds, as it then stands, is skipped; the rest goes to the end.
void mergeBookmarks(std::vector<Bookmark>& list, std::vector<Bookmark> imported);

} // namespace perchly
