// The store's own way with a bookmark file, with the arguments of the bare program.

#include "Command.h"
#include "SampleBookmark.h"
#include "bookmarks/BookmarkCollection.h"
#include "platform/foundation/FileManager.h"

#include <utility>

namespace {

using perchly::BookmarkCollection;

foundation::FileManager& files()
{
    return foundation::FileManager::defaultManager();
}

BookmarkCollection load(const std::string& file)
{
    const auto contents = files().contentsOfFile(file, BookmarkCollection::decodePadding);
    if (!contents)
        bench::Command::fail(contents.error().localizedDescription.c_str());
    auto decoded = BookmarkCollection::decode(contents.value());
    if (!decoded)
        bench::Command::fail(decoded.error().localizedDescription.c_str());
    return std::move(decoded).value();
}

void save(const BookmarkCollection& collection, const std::string& file)
{
    const auto document = BookmarkCollection::encode(collection.bookmarks, BookmarkCollection::Style::Compact);
    if (!document || !files().write(document.value(), file))
        bench::Command::fail("cannot save");
}

void generate(const std::string& file, std::size_t count)
{
    BookmarkCollection collection;
    for (std::size_t i = 0; i < count; ++i)
        collection.bookmarks.push_back(bench::sampleBookmark(i));
    save(collection, file);
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
    const auto collection = load(command.file);
    const auto loadTime = loading.milliseconds();
    if (command.verb == "load") {
        bench::print(loadTime);
        return 0;
    }
    const bench::Stopwatch saving;
    save(collection, command.argument);
    bench::print(saving.milliseconds());
}
