#pragma once

#include "bookmarks/Bookmark.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace perchly::tests {

/// A bookmark object as text, key by key, for documents that the encoder would never write.
class BookmarkJson {
public:
    /// The ten required keys, with values of their types.
    static BookmarkJson complete();

    /// All seventeen keys.
    static BookmarkJson full();

    [[nodiscard]] BookmarkJson with(std::string_view key, std::string_view json) const;
    [[nodiscard]] BookmarkJson without(std::string_view key) const;

    /// Another value for the key, behind the one that is there.
    [[nodiscard]] BookmarkJson repeating(std::string_view key, std::string_view json) const;

    [[nodiscard]] std::string text() const;

    /// The document that holds this bookmark alone.
    [[nodiscard]] std::string document() const;

private:
    std::vector<std::pair<std::string, std::string>> fields_;
};

[[nodiscard]] std::string documentOf(const std::vector<BookmarkJson>& bookmarks);

/// A bookmark with that id and address and else what a new one has; made at a fixed moment.
[[nodiscard]] Bookmark bookmarkNamed(std::string_view id, std::string_view url = "https://example.org/");

/// A bookmark with a value in every field.
[[nodiscard]] Bookmark fullBookmark(std::string_view id);

/// The document of these bookmarks, as the store writes it.
[[nodiscard]] std::string encoded(const std::vector<Bookmark>& bookmarks);

[[nodiscard]] std::vector<std::string> idsOf(const std::vector<Bookmark>& bookmarks);

} // namespace perchly::tests
