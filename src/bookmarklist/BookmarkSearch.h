#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace perchly {

struct Bookmark;

/// Finds bookmarks by a part of their title or address, whatever its capitals. The bookmarks' texts are made ready at
/// the first search, so that each one after that costs little.
class BookmarkSearch {
public:
    /// From now on searches that list, which is the caller's and must stay as it is until the next call.
    void setBookmarks(const std::vector<Bookmark>& bookmarks);

    /// The indices, in order, of the bookmarks that have the text; of all for an empty one.
    [[nodiscard]] std::vector<std::size_t> indicesMatching(std::string_view text);

private:
    void fold();

    const std::vector<Bookmark>* bookmarks_ = nullptr;
    /// In lower case, one bookmark's title and address after the other.
    std::string folded_;
    /// Where in it the texts of each bookmark end.
    std::vector<std::size_t> ends_;
};

} // namespace perchly
