#pragma once

#include "bookmarks/Bookmark.h"
#include "platform/foundation/Result.h"

#include <cstddef>
#include <string>
#include <vector>

namespace perchly {

/// The JSON document of the bookmark file, of exports and of imports: {"bookmarks":[...]}, in the list's order.
struct BookmarkCollection {
    enum class Style {
        Compact,
        Indented, // one key per line
    };

    /// Spare capacity behind a document with which decode() need not copy it.
    static constexpr std::size_t decodePadding = 64;

    std::vector<Bookmark> bookmarks = {};

    /// Fails for what JSON cannot hold: numbers that are not finite, texts that are not UTF-8.
    [[nodiscard]] static foundation::Result<std::string> encode(const std::vector<Bookmark>& bookmarks, Style style);

    /// Strict: well-formed UTF-8 JSON (a byte order mark is allowed) in which every bookmark has every required key
    /// with a value of its type, or an error and no list at all. Unknown keys are ignored, null is absent for an
    /// optional key, and of a repeated key the last one counts. Nesting is bounded.
    [[nodiscard]] static foundation::Result<BookmarkCollection> decode(const std::string& document);

    bool operator==(const BookmarkCollection&) const = default;
};

} // namespace perchly
