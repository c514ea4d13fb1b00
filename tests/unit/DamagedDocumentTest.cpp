#include "BookmarkJson.h"
#include "bookmarks/BookmarkCollection.h"

#include <gmock/gmock.h>

namespace perchly::tests {

namespace {

constexpr std::size_t count = 2;

std::string intactDocument()
{
    return documentOf({ BookmarkJson::full(), BookmarkJson::complete().with("id", R"("B")") });
}

/// Either an error or the whole list, which then survives another turn.
void expectAllOrNothing(const std::string& document)
{
    const auto decoded = BookmarkCollection::decode(document);
    if (!decoded) {
        ASSERT_FALSE(decoded.error().localizedDescription.empty());
        return;
    }
    const auto& bookmarks = decoded.value().bookmarks;
    ASSERT_EQ(bookmarks.size(), count) << document;
    ASSERT_EQ(BookmarkCollection::decode(encoded(bookmarks)).value().bookmarks, bookmarks) << document;
}

std::string nested(std::size_t levels, std::string_view open, std::string_view close)
{
    std::string text;
    for (std::size_t i = 0; i < levels; ++i)
        text += open;
    text += '0';
    for (std::size_t i = 0; i < levels; ++i)
        text += close;
    return text;
}

} // namespace

TEST(DamagedDocumentTest, IsRefusedWhereverItIsCutOff)
{
    const auto document = intactDocument();
    ASSERT_TRUE(BookmarkCollection::decode(document));
    for (std::size_t size = 0; size < document.size(); ++size)
        EXPECT_FALSE(BookmarkCollection::decode(document.substr(0, size))) << size;
}

TEST(DamagedDocumentTest, IsReadWhollyOrNotAtAllWhicheverByteIsChanged)
{
    const auto intact = intactDocument();
    auto document = intact;
    for (std::size_t i = 0; i < document.size(); ++i) {
        for (int byte = 0; byte < 256; ++byte) {
            document[i] = static_cast<char>(byte);
            expectAllOrNothing(document);
        }
        document[i] = intact[i];
    }
}

TEST(DamagedDocumentTest, IsRefusedWhereAnyByteOfItsFrameIsMissing)
{
    const std::string frame = R"({"bookmarks":[]})";
    for (std::size_t i = 0; i < frame.size(); ++i)
        EXPECT_FALSE(BookmarkCollection::decode(frame.substr(0, i) + frame.substr(i + 1))) << i;
}

TEST(DamagedDocumentTest, IsRefusedWhenNestedAHundredThousandLevelsDeep)
{
    for (const auto& deep : { nested(100000, "[", "]"), nested(100000, R"({"a":)", "}"), std::string(100000, '['),
             std::string(100000, '{'), nested(100000, R"([{"bookmarks":)", "}]") }) {
        EXPECT_FALSE(BookmarkCollection::decode(deep));
        EXPECT_FALSE(BookmarkCollection::decode(R"({"bookmarks":)" + deep + "}"));
        EXPECT_FALSE(BookmarkCollection::decode(R"({"ignored":)" + deep + R"(,"bookmarks":[]})"));
        EXPECT_FALSE(BookmarkCollection::decode(BookmarkJson::complete().with("ignored", deep).document()));
    }
}

TEST(DamagedDocumentTest, MayHoldAHugeText)
{
    auto bookmark = bookmarkNamed("A");
    bookmark.title.assign(200'000'000, 'x');
    bookmark.title.back() = '"';

    const auto decoded = BookmarkCollection::decode(encoded({ bookmark }));

    ASSERT_TRUE(decoded);
    EXPECT_TRUE(decoded.value().bookmarks.front().title == bookmark.title);
}

TEST(DamagedDocumentTest, MayHoldAHugeIgnoredTextButNotAnUnfinishedOne)
{
    std::string huge = R"({"ignored":")";
    huge.append(200'000'000, 'x');

    EXPECT_FALSE(BookmarkCollection::decode(huge));
    EXPECT_TRUE(BookmarkCollection::decode(huge + R"(","bookmarks":[]})"));
}

TEST(DamagedDocumentTest, IsReadAlikeWithAndWithoutSpareCapacity)
{
    const auto document = intactDocument();
    auto exact = document;
    exact.shrink_to_fit();
    auto padded = document;
    padded.reserve(document.size() + BookmarkCollection::decodePadding);

    EXPECT_EQ(BookmarkCollection::decode(exact).value(), BookmarkCollection::decode(padded).value());
    EXPECT_EQ(BookmarkCollection::decode(padded).value().bookmarks.size(), count);
}

TEST(DamagedDocumentTest, IgnoresWhatStandsInTheSpareCapacity)
{
    std::string document = R"({"bookmarks":[]})";
    document.reserve(document.size() + BookmarkCollection::decodePadding);
    const auto size = document.size();
    document.resize(document.capacity(), ']');
    document.resize(size);
    EXPECT_TRUE(BookmarkCollection::decode(document));

    document = R"({"bookmarks":[)";
    document.append(BookmarkCollection::decodePadding, ']');
    document.resize(14);
    EXPECT_FALSE(BookmarkCollection::decode(document));
}

} // namespace perchly::tests
