#include "bookmarklist/BookmarkSearch.h"

#include "bookmarks/Bookmark.h"
#include "platform/foundation/Character.h"

#include <cstring>
#include <numeric>

namespace perchly {
namespace {

/// Stands in no text, so that nothing is found across two of them.
constexpr auto separator = '\xFF';

/// Where the text stands from there on, or npos.
std::size_t placeOf(const std::string& where, std::string_view text, std::size_t from)
{
    const auto* found = memmem(where.data() + from, where.size() - from, text.data(), text.size());
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - where.data()) : std::string::npos;
}

} // namespace

void BookmarkSearch::setBookmarks(const std::vector<Bookmark>& bookmarks)
{
    bookmarks_ = &bookmarks;
    folded_.clear();
    ends_.clear();
}

void BookmarkSearch::fold()
{
    ends_.reserve(bookmarks_->size());
    for (const auto& bookmark : *bookmarks_) {
        folded_ += foundation::lowercased(bookmark.title);
        folded_ += separator;
        folded_ += foundation::lowercased(bookmark.url);
        folded_ += separator;
        ends_.push_back(folded_.size());
    }
}

std::vector<std::size_t> BookmarkSearch::indicesMatching(std::string_view text)
{
    std::vector<std::size_t> indices;
    const auto wanted = foundation::lowercased(text);
    if (!bookmarks_ || bookmarks_->empty())
        return indices;
    if (wanted.empty()) {
        indices.resize(bookmarks_->size());
        std::iota(indices.begin(), indices.end(), 0);
        return indices;
    }
    if (ends_.empty())
        fold();
    std::size_t index = 0;
    for (std::size_t from = 0; from < folded_.size(); from = ends_[index]) {
        const auto place = placeOf(folded_, wanted, from);
        if (place == std::string::npos)
            break;
        while (ends_[index] <= place)
            ++index;
        indices.push_back(index);
    }
    return indices;
}

} // namespace perchly
