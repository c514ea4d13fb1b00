#include "BookmarkJson.h"

#include "bookmarks/BookmarkCollection.h"

#include <algorithm>

namespace perchly::tests {

BookmarkJson BookmarkJson::complete()
{
    BookmarkJson json;
    json.fields_ = {
        { "id", R"("A")" },
        { "title", R"("Mail")" },
        { "url", R"("https://mail.example/")" },
        { "isPinned", "false" },
        { "isAddedToMenuBar", "false" },
        { "createdAt", "753264000.25" },
        { "shouldReloadOnOpen", "false" },
        { "isAlwaysOnTop", "true" },
        { "prefersDetached", "false" },
        { "openInSystemBrowser", "false" },
    };
    return json;
}

BookmarkJson BookmarkJson::full()
{
    return complete()
        .with("iconURL", R"("https://icons.example/a.png")")
        .with("preferredWidth", "640.5")
        .with("preferredHeight", "480")
        .with("userAgent", R"("Agent/1.0")")
        .with("customEmoji", R"("\uD83D\uDE00")")
        .with("sfSymbolName", R"("star.fill")")
        .with("menubarIconSize", "18");
}

BookmarkJson BookmarkJson::with(std::string_view key, std::string_view json) const
{
    auto changed = *this;
    for (auto& [name, value] : changed.fields_) {
        if (name == key) {
            value = json;
            return changed;
        }
    }
    return repeating(key, json);
}

BookmarkJson BookmarkJson::without(std::string_view key) const
{
    auto changed = *this;
    std::erase_if(changed.fields_, [&](const auto& field) { return field.first == key; });
    return changed;
}

BookmarkJson BookmarkJson::repeating(std::string_view key, std::string_view json) const
{
    auto changed = *this;
    changed.fields_.emplace_back(key, json);
    return changed;
}

std::string BookmarkJson::text() const
{
    std::string text = "{";
    for (const auto& [name, value] : fields_) {
        if (text.size() > 1)
            text += ',';
        text.append("\"").append(name).append("\":").append(value);
    }
    return text + "}";
}

std::string BookmarkJson::document() const
{
    return documentOf({ *this });
}

std::string documentOf(const std::vector<BookmarkJson>& bookmarks)
{
    std::string text = R"({"bookmarks":[)";
    for (const auto& bookmark : bookmarks) {
        if (text.back() != '[')
            text += ',';
        text += bookmark.text();
    }
    return text + "]}";
}

Bookmark bookmarkNamed(std::string_view id, std::string_view url)
{
    return { .id = std::string(id),
        .title = "Title of " + std::string(id),
        .url = std::string(url),
        .createdAt = { 753264000.25 } };
}

Bookmark fullBookmark(std::string_view id)
{
    return {
        .id = std::string(id),
        .title = "A \"quoted\" title, \xC3\xBC\xF0\x9F\x98\x80\n",
        .url = "https://example.org/?q=a b",
        .isPinned = true,
        .isAddedToMenuBar = true,
        .iconURL = "https://icons.example/a.png",
        .createdAt = { 753264000.1 },
        .preferredWidth = 640.5,
        .preferredHeight = 480,
        .shouldReloadOnOpen = true,
        .isAlwaysOnTop = false,
        .prefersDetached = true,
        .openInSystemBrowser = true,
        .userAgent = "",
        .customEmoji = "\xF0\x9F\x98\x80",
        .sfSymbolName = "star.fill",
        .menubarIconSize = 18,
    };
}

std::string encoded(const std::vector<Bookmark>& bookmarks)
{
    return BookmarkCollection::encode(bookmarks, BookmarkCollection::Style::Compact).value();
}

std::vector<std::string> idsOf(const std::vector<Bookmark>& bookmarks)
{
    std::vector<std::string> ids;
    std::transform(
        bookmarks.begin(), bookmarks.end(), std::back_inserter(ids), [](const auto& each) { return each.id; });
    return ids;
}

} // namespace perchly::tests
