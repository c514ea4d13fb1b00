// The physical minimum of a bookmark file: parse and copy into records, format and write. It looks every key up once,
// takes what it finds on trust, reports nothing, and is what the store is measured against.

#include "Command.h"
#include "SampleBookmark.h"
#include "bookmarks/Bookmark.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <simdjson.h>
#include <unistd.h>
#include <vector>

namespace {

using perchly::Bookmark;
using simdjson::dom::element;

constexpr bool needsEscape(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}

std::string text(element value)
{
    return std::string(std::string_view(value));
}

Bookmark emptyBookmark()
{
    return { .id = {}, .createdAt = {} };
}

void setField(Bookmark& bookmark, std::string_view key, element value)
{
    // The length and a letter tell the keys apart.
    switch (key.size()) {
    case 2:
        bookmark.id = text(value);
        break;
    case 3:
        bookmark.url = text(value);
        break;
    case 5:
        bookmark.title = text(value);
        break;
    case 7:
        bookmark.iconURL = text(value);
        break;
    case 8:
        bookmark.isPinned = value;
        break;
    case 9:
        key[0] == 'c' ? void(bookmark.createdAt = { value }) : void(bookmark.userAgent = text(value));
        break;
    case 11:
        bookmark.customEmoji = text(value);
        break;
    case 12:
        bookmark.sfSymbolName = text(value);
        break;
    case 13:
        bookmark.isAlwaysOnTop = value;
        break;
    case 14:
        bookmark.preferredWidth = double(value);
        break;
    case 15:
        if (key[0] == 'm')
            bookmark.menubarIconSize = double(value);
        else if (key[6] == 's')
            bookmark.prefersDetached = value;
        else
            bookmark.preferredHeight = double(value);
        break;
    case 16:
        bookmark.isAddedToMenuBar = value;
        break;
    case 18:
        bookmark.shouldReloadOnOpen = value;
        break;
    case 19:
        bookmark.openInSystemBrowser = value;
        break;
    default:
        break;
    }
}

std::vector<Bookmark> load(const std::string& file)
{
    const simdjson::padded_string contents = simdjson::padded_string::load(file);
    simdjson::dom::parser parser;
    const simdjson::dom::array array = parser.parse(contents)["bookmarks"];
    std::vector<Bookmark> bookmarks;
    bookmarks.reserve(array.size());
    for (const simdjson::dom::object object : array) {
        auto& bookmark = bookmarks.emplace_back(emptyBookmark());
        for (const auto field : object)
            setField(bookmark, field.key, field.value);
    }
    return bookmarks;
}

class BareWriter {
public:
    explicit BareWriter(std::size_t room)
        : buffer_(new char[room])
        , end_(buffer_.get())
    {
    }

    void raw(std::string_view bytes)
    {
        std::memcpy(end_, bytes.data(), bytes.size());
        end_ += bytes.size();
    }

    void text(std::string_view value)
    {
        *end_++ = '"';
        for (const char c : value) {
            if (!needsEscape(c))
                *end_++ = c;
            else if (c == '"' || c == '\\')
                *end_++ = '\\', *end_++ = c;
            else
                end_ += std::snprintf(end_, 7, "\\u%04x", static_cast<unsigned>(c));
        }
        *end_++ = '"';
    }

    void number(double value) { end_ = std::to_chars(end_, end_ + 32, value).ptr; }
    void flag(bool value) { raw(value ? "true" : "false"); }

    void optionalText(std::string_view key, const std::optional<std::string>& value)
    {
        if (value)
            raw(key), text(*value);
    }

    void optionalNumber(std::string_view key, const std::optional<double>& value)
    {
        if (value)
            raw(key), number(*value);
    }

    [[nodiscard]] std::string_view bytes() const
    {
        return { buffer_.get(), static_cast<std::size_t>(end_ - buffer_.get()) };
    }

private:
    std::unique_ptr<char[]> buffer_;
    char* end_;
};

void writeBookmark(BareWriter& writer, const Bookmark& bookmark)
{
    writer.raw("{\"id\":"), writer.text(bookmark.id);
    writer.raw(",\"title\":"), writer.text(bookmark.title);
    writer.raw(",\"url\":"), writer.text(bookmark.url);
    writer.raw(",\"isPinned\":"), writer.flag(bookmark.isPinned);
    writer.raw(",\"isAddedToMenuBar\":"), writer.flag(bookmark.isAddedToMenuBar);
    writer.optionalText(",\"iconURL\":", bookmark.iconURL);
    writer.raw(",\"createdAt\":"), writer.number(bookmark.createdAt.timeIntervalSinceReferenceDate);
    writer.optionalNumber(",\"preferredWidth\":", bookmark.preferredWidth);
    writer.optionalNumber(",\"preferredHeight\":", bookmark.preferredHeight);
    writer.raw(",\"shouldReloadOnOpen\":"), writer.flag(bookmark.shouldReloadOnOpen);
    writer.raw(",\"isAlwaysOnTop\":"), writer.flag(bookmark.isAlwaysOnTop);
    writer.raw(",\"prefersDetached\":"), writer.flag(bookmark.prefersDetached);
    writer.raw(",\"openInSystemBrowser\":"), writer.flag(bookmark.openInSystemBrowser);
    writer.optionalText(",\"userAgent\":", bookmark.userAgent);
    writer.optionalText(",\"customEmoji\":", bookmark.customEmoji);
    writer.optionalText(",\"sfSymbolName\":", bookmark.sfSymbolName);
    writer.optionalNumber(",\"menubarIconSize\":", bookmark.menubarIconSize);
    writer.raw("}");
}

/// `room` is known from the file that was loaded: the same bookmarks need no more than it held.
void save(const std::vector<Bookmark>& bookmarks, const std::string& file, std::size_t room)
{
    BareWriter writer(room);
    writer.raw("{\"bookmarks\":[");
    for (std::size_t i = 0; i < bookmarks.size(); ++i) {
        if (i > 0)
            writer.raw(",");
        writeBookmark(writer, bookmarks[i]);
    }
    writer.raw("]}");

    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    auto rest = writer.bytes();
    while (!rest.empty()) {
        const auto count = ::write(descriptor, rest.data(), rest.size());
        if (count < 0)
            bench::Command::fail(std::strerror(errno));
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    ::close(descriptor);
}

void generate(const std::string& file, std::size_t count)
{
    std::vector<Bookmark> bookmarks;
    for (std::size_t i = 0; i < count; ++i)
        bookmarks.push_back(bench::sampleBookmark(i));
    save(bookmarks, file, (count + 1) * 1024);
}

} // namespace

int main(int count, char** words)
{
    const auto command = bench::Command::parse(count, words);
    if (command.verb == "generate") {
        generate(command.file, std::strtoul(command.argument.c_str(), nullptr, 10));
        return 0;
    }
    const bench::Stopwatch loading;
    const auto bookmarks = load(command.file);
    const auto loadTime = loading.milliseconds();
    if (command.verb == "load") {
        bench::print(loadTime);
        return 0;
    }
    const auto room = std::ifstream(command.file, std::ios::ate).tellg();
    const bench::Stopwatch saving;
    save(bookmarks, command.argument, static_cast<std::size_t>(room) + 1024);
    bench::print(saving.milliseconds());
}
