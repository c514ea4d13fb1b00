#include "bookmarks/BookmarkCollection.h"

#include "bookmarks/BookmarkKeys.h"
#include "bookmarks/BookmarkReader.h"
#include "bookmarks/JsonWriter.h"
#include "bookmarks/LongIntegers.h"

#include <simdjson.h>
#include <utility>

namespace perchly {

namespace {

static_assert(BookmarkCollection::decodePadding >= simdjson::SIMDJSON_PADDING);

template <class Value>
void write(JsonWriter& writer, BookmarkKey key, const Value& value)
{
    writer.key(nameOf(key));
    writer.value(value);
}

/// An absent value is left out altogether.
template <class Value>
void write(JsonWriter& writer, BookmarkKey key, const std::optional<Value>& value)
{
    if (value)
        write(writer, key, *value);
}

void write(JsonWriter& writer, const Bookmark& bookmark)
{
    writer.beginObject();
    write(writer, BookmarkKey::Id, bookmark.id);
    write(writer, BookmarkKey::Title, bookmark.title);
    write(writer, BookmarkKey::Url, bookmark.url);
    write(writer, BookmarkKey::IsPinned, bookmark.isPinned);
    write(writer, BookmarkKey::IsAddedToMenuBar, bookmark.isAddedToMenuBar);
    write(writer, BookmarkKey::IconURL, bookmark.iconURL);
    write(writer, BookmarkKey::CreatedAt, bookmark.createdAt.timeIntervalSinceReferenceDate);
    write(writer, BookmarkKey::PreferredWidth, bookmark.preferredWidth);
    write(writer, BookmarkKey::PreferredHeight, bookmark.preferredHeight);
    write(writer, BookmarkKey::ShouldReloadOnOpen, bookmark.shouldReloadOnOpen);
    write(writer, BookmarkKey::IsAlwaysOnTop, bookmark.isAlwaysOnTop);
    write(writer, BookmarkKey::PrefersDetached, bookmark.prefersDetached);
    write(writer, BookmarkKey::OpenInSystemBrowser, bookmark.openInSystemBrowser);
    write(writer, BookmarkKey::UserAgent, bookmark.userAgent);
    write(writer, BookmarkKey::CustomEmoji, bookmark.customEmoji);
    write(writer, BookmarkKey::SfSymbolName, bookmark.sfSymbolName);
    write(writer, BookmarkKey::MenubarIconSize, bookmark.menubarIconSize);
    writer.endObject();
}

std::size_t sizeOf(const std::optional<std::string>& text)
{
    return text ? text->size() : 0;
}

/// Room for a whole document, unless its texts need many escapes.
std::size_t expectedSize(const std::vector<Bookmark>& bookmarks, BookmarkCollection::Style style)
{
    const std::size_t sizeWithoutTexts = style == BookmarkCollection::Style::Compact ? 416 : 544;
    std::size_t size = 64;
    for (const auto& bookmark : bookmarks) {
        size += sizeWithoutTexts + bookmark.id.size() + bookmark.title.size() + bookmark.url.size();
        size += sizeOf(bookmark.iconURL) + sizeOf(bookmark.userAgent);
        size += sizeOf(bookmark.customEmoji) + sizeOf(bookmark.sfSymbolName);
    }
    return size;
}

/// Parses in place where the text has the spare capacity, else from a copy that the parser makes.
simdjson::simdjson_result<simdjson::dom::element> parse(simdjson::dom::parser& parser, const std::string& text)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    const std::size_t start = text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
    const bool needsCopy = text.capacity() - text.size() < simdjson::SIMDJSON_PADDING;
    return parser.parse(text.data() + start, text.size() - start, needsCopy);
}

foundation::Error malformed(simdjson::error_code error)
{
    return { std::string("Malformed JSON: ") + simdjson::error_message(error) };
}

} // namespace

foundation::Result<std::string> BookmarkCollection::encode(const std::vector<Bookmark>& bookmarks, Style style)
{
    JsonWriter writer(style == Style::Indented);
    writer.reserve(expectedSize(bookmarks, style));
    writer.beginObject();
    writer.key(bookmarksKeyName);
    writer.beginArray();
    for (const auto& bookmark : bookmarks) {
        writer.element();
        write(writer, bookmark);
    }
    writer.endArray();
    writer.endObject();

    auto document = std::move(writer).finish();
    if (!document)
        return foundation::Error { "A number is not finite or a text is not UTF-8" };
    return *std::move(document);
}

foundation::Result<BookmarkCollection> BookmarkCollection::decode(const std::string& document)
{
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    auto error = parse(parser, document).get(root);
    if (error == simdjson::NUMBER_ERROR) {
        // Valid JSON may hold integers beyond 64 bits, which the parser takes only in the form of a float.
        if (const auto rewritten = withLongIntegersAsFloats(document, decodePadding))
            error = parse(parser, *rewritten).get(root);
    }
    if (error != simdjson::SUCCESS)
        return malformed(error);

    auto bookmarks = readBookmarks(root);
    if (!bookmarks)
        return bookmarks.error();
    return BookmarkCollection { std::move(bookmarks).value() };
}

} // namespace perchly
