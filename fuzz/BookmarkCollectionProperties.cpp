#include "BookmarkCollectionProperties.h"

#include "bookmarks/BookmarkCollection.h"
#include "bookmarks/BookmarkMerge.h"
#include "platform/foundation/FatalError.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace perchly::fuzz {

namespace {

using Style = BookmarkCollection::Style;

void require(bool holds, std::string_view property)
{
    if (!holds)
        foundation::fatalError(property);
}

void checkEncoding(const BookmarkCollection& collection)
{
    for (const auto style : { Style::Compact, Style::Indented }) {
        const auto document = BookmarkCollection::encode(collection.bookmarks, style);
        require(document.hasValue(), "what was decoded can be encoded");
        const auto again = BookmarkCollection::decode(document.value());
        require(again && again.value() == collection, "what was encoded reads back equal");
        const auto twice = BookmarkCollection::encode(again.value().bookmarks, style);
        require(twice && twice.value() == document.value(), "a second turn writes the same bytes");
    }
}

/// The rules of the merge without any index.
void mergePlainly(std::vector<Bookmark>& list, const std::vector<Bookmark>& imported)
{
    for (const auto& bookmark : imported) {
        const auto stored
            = std::find_if(list.begin(), list.end(), [&](const Bookmark& each) { return each.id == bookmark.id; });
        if (stored != list.end())
            *stored = bookmark;
        else if (std::none_of(list.begin(), list.end(), [&](const Bookmark& each) { return each.url == bookmark.url; }))
            list.push_back(bookmark);
    }
}

void checkMerge(const std::vector<Bookmark>& imported)
{
    // A list that has duplicates of its own: every other record, then every third.
    std::vector<Bookmark> list;
    for (std::size_t i = 0; i < imported.size(); i += 2)
        list.push_back(imported[i]);
    for (std::size_t i = 0; i < imported.size(); i += 3)
        list.push_back(imported[i]);
    auto expected = list;
    mergePlainly(expected, imported);

    mergeBookmarks(list, imported);
    require(list == expected, "a merge follows its rules");
    require(list.empty() || std::hash<Bookmark>()(list.front()) == std::hash<Bookmark>()(expected.front()),
        "equal bookmarks hash alike");
}

} // namespace

void checkBookmarkDocument(std::string_view bytes)
{
    std::string exact(bytes);
    exact.shrink_to_fit();
    auto padded = exact;
    padded.reserve(padded.size() + BookmarkCollection::decodePadding);

    const auto decoded = BookmarkCollection::decode(exact);
    const auto decodedInPlace = BookmarkCollection::decode(padded);
    require(decoded.hasValue() == decodedInPlace.hasValue(), "spare capacity does not decide");
    if (!decoded) {
        require(!decoded.error().localizedDescription.empty(), "a refusal says why");
        return;
    }
    require(decoded.value() == decodedInPlace.value(), "spare capacity changes nothing");
    checkEncoding(decoded.value());
    checkMerge(decoded.value().bookmarks);
}

} // namespace perchly::fuzz
