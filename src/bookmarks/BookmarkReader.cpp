#include "bookmarks/BookmarkReader.h"

#include "bookmarks/BookmarkKeys.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace perchly {

namespace {

using simdjson::dom::element;

constexpr std::size_t largestReservation = 100'000;

template <class Value>
constexpr std::string_view typeMistake = "is no text";
template <>
constexpr std::string_view typeMistake<bool> = "is no boolean";
template <>
constexpr std::string_view typeMistake<double> = "is no number";

/// One bookmark object: its values by key, then by type. Reads on after a mistake and keeps the first one,
/// in the order of the keys.
class BookmarkReader {
public:
    explicit BookmarkReader(simdjson::dom::object object)
    {
        std::size_t guess = 0;
        for (const auto field : object)
            collect(field.key, field.value, guess);
    }

    [[nodiscard]] Bookmark read();

    /// Empty after a successful read.
    [[nodiscard]] const std::string& mistake() const { return mistake_; }

private:
    void collect(std::string_view name, element value, std::size_t& guess);
    template <class Value>
    Value required(BookmarkKey key);
    template <class Value>
    std::optional<Value> optional(BookmarkKey key);
    template <class Value>
    Value typed(BookmarkKey key, element value);
    void report(BookmarkKey key, std::string_view problem);

    // Values are looked at only when all are known, since of a repeated key the last one counts.
    std::array<std::optional<element>, bookmarkKeyNames.size()> values_;
    std::string mistake_;
};

void BookmarkReader::collect(std::string_view name, element value, std::size_t& guess)
{
    // Documents mostly keep to the order of the keys, so the next key is the likeliest.
    for (std::size_t tries = 0; tries < bookmarkKeyNames.size(); ++tries) {
        const auto index = guess;
        guess = guess + 1 == bookmarkKeyNames.size() ? 0 : guess + 1;
        if (bookmarkKeyNames[index] == name) {
            values_[index] = value;
            return;
        }
    }
}

void BookmarkReader::report(BookmarkKey key, std::string_view problem)
{
    if (mistake_.empty())
        mistake_.append("\"").append(nameOf(key)).append("\" ").append(problem);
}

template <class Value>
Value BookmarkReader::typed(BookmarkKey key, element value)
{
    using Read = std::conditional_t<std::is_same_v<Value, std::string>, std::string_view, Value>;
    Read read {};
    if (value.get<Read>().get(read) != simdjson::SUCCESS)
        report(key, typeMistake<Value>);
    return Value(read);
}

template <class Value>
Value BookmarkReader::required(BookmarkKey key)
{
    if (const auto& value = values_[static_cast<std::size_t>(key)])
        return typed<Value>(key, *value);
    report(key, "is missing");
    return {};
}

template <class Value>
std::optional<Value> BookmarkReader::optional(BookmarkKey key)
{
    const auto& value = values_[static_cast<std::size_t>(key)];
    if (!value || value->is_null())
        return std::nullopt;
    return typed<Value>(key, *value);
}

Bookmark BookmarkReader::read()
{
    // Braces evaluate from first to last, which makes the first mistake the first in the order of the keys.
    return {
        .id = required<std::string>(BookmarkKey::Id),
        .title = required<std::string>(BookmarkKey::Title),
        .url = required<std::string>(BookmarkKey::Url),
        .isPinned = required<bool>(BookmarkKey::IsPinned),
        .isAddedToMenuBar = required<bool>(BookmarkKey::IsAddedToMenuBar),
        .iconURL = optional<std::string>(BookmarkKey::IconURL),
        .createdAt = { required<double>(BookmarkKey::CreatedAt) },
        .preferredWidth = optional<double>(BookmarkKey::PreferredWidth),
        .preferredHeight = optional<double>(BookmarkKey::PreferredHeight),
        .shouldReloadOnOpen = required<bool>(BookmarkKey::ShouldReloadOnOpen),
        .isAlwaysOnTop = required<bool>(BookmarkKey::IsAlwaysOnTop),
        .prefersDetached = required<bool>(BookmarkKey::PrefersDetached),
        .openInSystemBrowser = required<bool>(BookmarkKey::OpenInSystemBrowser),
        .userAgent = optional<std::string>(BookmarkKey::UserAgent),
        .customEmoji = optional<std::string>(BookmarkKey::CustomEmoji),
        .sfSymbolName = optional<std::string>(BookmarkKey::SfSymbolName),
        .menubarIconSize = optional<double>(BookmarkKey::MenubarIconSize),
    };
}

/// The last value of the wrapper's key.
std::optional<element> bookmarksValue(simdjson::dom::object document)
{
    std::optional<element> found;
    for (const auto field : document) {
        if (field.key == bookmarksKeyName)
            found = field.value;
    }
    return found;
}

foundation::Error at(std::size_t index, std::string_view mistake)
{
    return { "Bookmark " + std::to_string(index) + ": " + std::string(mistake) };
}

} // namespace

foundation::Result<std::vector<Bookmark>> readBookmarks(element document)
{
    simdjson::dom::object object;
    if (document.get(object) != simdjson::SUCCESS)
        return foundation::Error { "The document is no object" };
    const auto value = bookmarksValue(object);
    if (!value)
        return foundation::Error { "The key \"bookmarks\" is missing" };
    simdjson::dom::array array;
    if (value->get(array) != simdjson::SUCCESS)
        return foundation::Error { "The value of \"bookmarks\" is no array" };

    std::vector<Bookmark> bookmarks;
    // Not for whatever the document claims: a few megabytes of zeros would ask for gigabytes.
    bookmarks.reserve(std::min(array.size(), largestReservation));
    for (const auto item : array) {
        simdjson::dom::object fields;
        if (item.get(fields) != simdjson::SUCCESS)
            return at(bookmarks.size(), "it is no object");
        BookmarkReader reader(fields);
        bookmarks.push_back(reader.read());
        if (!reader.mistake().empty())
            return at(bookmarks.size() - 1, reader.mistake());
    }
    return bookmarks;
}

} // namespace perchly
