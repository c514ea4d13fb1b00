#include "bookmarks/BookmarkMerge.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace perchly {

namespace {

/// A list with the two look-ups of a merge. Ordered maps: no crafted file can make them slow.
class IndexedList {
public:
    explicit IndexedList(std::vector<Bookmark>& list)
        : list_(list)
    {
        for (std::size_t i = 0; i < list_.size(); ++i)
            index(i);
    }

    /// The first bookmark of that id, or nothing.
    Bookmark* find(std::string_view id)
    {
        const auto found = positionOfId_.find(id);
        return found == positionOfId_.end() ? nullptr : &list_[found->second];
    }

    [[nodiscard]] bool holdsURL(std::string_view url) const { return countOfURL_.contains(url); }

    void replace(Bookmark& stored, Bookmark bookmark)
    {
        const auto former = countOfURL_.find(stored.url);
        if (--former->second == 0)
            countOfURL_.erase(former);
        ++countOfURL_[bookmark.url];
        stored = std::move(bookmark);
    }

    void append(Bookmark bookmark)
    {
        list_.push_back(std::move(bookmark));
        index(list_.size() - 1);
    }

private:
    void index(std::size_t position)
    {
        positionOfId_.try_emplace(list_[position].id, position); // the first of equal ids stays
        ++countOfURL_[list_[position].url];
    }

    std::vector<Bookmark>& list_;
    std::map<std::string, std::size_t, std::less<>> positionOfId_;
    std::map<std::string, std::size_t, std::less<>> countOfURL_; // several bookmarks may share an address
};

} // namespace

void mergeBookmarks(std::vector<Bookmark>& list, std::vector<Bookmark> imported)
{
    IndexedList indexed(list);
    for (auto& bookmark : imported) {
        if (auto* stored = indexed.find(bookmark.id))
            indexed.replace(*stored, std::move(bookmark));
        else if (!indexed.holdsURL(bookmark.url))
            indexed.append(std::move(bookmark));
    }
}

} // namespace perchly
