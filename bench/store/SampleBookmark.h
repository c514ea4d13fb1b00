#pragma once

#include "bookmarks/Bookmark.h"

#include <cstddef>
#include <string>

namespace bench {

/// About 480 bytes a bookmark once written, of every kind of field.
inline perchly::Bookmark sampleBookmark(std::size_t index)
{
    const auto number = std::to_string(index);
    perchly::Bookmark bookmark { .id = {}, .createdAt = {} };
    bookmark.id = "7C0E2B4A-5D1F-4E8B-9A63-" + std::string(12 - number.size(), '0') + number;
    bookmark.title
        = "Bookmark number " + number + ", a title of about the length that pages of news have in their tabs";
    bookmark.url = "https://www.example.org/section/article-" + number + "?from=list&page=2";
    bookmark.isPinned = index % 3 == 0;
    bookmark.createdAt = { 753264000.25 + static_cast<double>(index) * 17.328125 };
    bookmark.preferredWidth = 600 + static_cast<double>(index % 100);
    bookmark.preferredHeight = 700.5;
    if (index % 2 == 0)
        bookmark.iconURL = "https://www.example.org/icons/" + number + ".png";
    if (index % 4 == 0)
        bookmark.userAgent = "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) \"quoted\" AppleWebKit/605.1.15";
    if (index % 5 == 0)
        bookmark.customEmoji = "\xF0\x9F\x98\x80";
    return bookmark;
}

} // namespace bench
