#include "bookmarks/BookmarkCollection.h"
#include "BookmarkJson.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

namespace perchly::tests {

using testing::ElementsAre;
using testing::HasSubstr;
using Style = BookmarkCollection::Style;

namespace {

Bookmark decodeOne(const std::string& document)
{
    const auto decoded = BookmarkCollection::decode(document);
    if (!decoded || decoded.value().bookmarks.size() != 1) {
        ADD_FAILURE() << "not one bookmark: " << (decoded ? "" : decoded.error().localizedDescription);
        return {};
    }
    return decoded.value().bookmarks.front();
}

std::string errorOf(const std::string& document)
{
    const auto decoded = BookmarkCollection::decode(document);
    return decoded ? "no error" : decoded.error().localizedDescription;
}

const std::vector<std::string> requiredKeys = { "id", "title", "url", "isPinned", "isAddedToMenuBar", "createdAt",
    "shouldReloadOnOpen", "isAlwaysOnTop", "prefersDetached", "openInSystemBrowser" };
const std::vector<std::string> optionalKeys
    = { "iconURL", "preferredWidth", "preferredHeight", "userAgent", "customEmoji", "sfSymbolName", "menubarIconSize" };
const std::vector<std::string> textKeys
    = { "id", "title", "url", "iconURL", "userAgent", "customEmoji", "sfSymbolName" };
const std::vector<std::string> numberKeys = { "createdAt", "preferredWidth", "preferredHeight", "menubarIconSize" };
const std::vector<std::string> flagKeys = { "isPinned", "isAddedToMenuBar", "shouldReloadOnOpen", "isAlwaysOnTop",
    "prefersDetached", "openInSystemBrowser" };

void expectWrongTypes(const std::vector<std::string>& keys, const std::vector<std::string>& values)
{
    for (const auto& key : keys) {
        for (const auto& value : values) {
            const auto document = BookmarkJson::full().with(key, value).document();
            EXPECT_THAT(errorOf(document), HasSubstr('"' + key + "\" is no ")) << value;
        }
    }
}

} // namespace

TEST(BookmarkCollectionTest, ABookmarkWithoutOptionalFieldsIsAnObjectOfExactlyTenKeys)
{
    const auto bookmark = bookmarkNamed("A", "https://example.org/");

    EXPECT_EQ(encoded({ bookmark }),
        R"({"bookmarks":[{"id":"A","title":"Title of A","url":"https://example.org/","isPinned":false,)"
        R"("isAddedToMenuBar":false,"createdAt":753264000.25,"shouldReloadOnOpen":false,"isAlwaysOnTop":true,)"
        R"("prefersDetached":false,"openInSystemBrowser":false}]})");
    EXPECT_EQ(decodeOne(encoded({ bookmark })), bookmark);
}

TEST(BookmarkCollectionTest, AllSeventeenKeysAreWrittenInOrder)
{
    auto bookmark = fullBookmark("A");
    bookmark.title = "T";

    EXPECT_EQ(encoded({ bookmark }),
        R"({"bookmarks":[{"id":"A","title":"T","url":"https://example.org/?q=a b","isPinned":true,)"
        R"("isAddedToMenuBar":true,"iconURL":"https://icons.example/a.png","createdAt":753264000.1,)"
        R"("preferredWidth":640.5,"preferredHeight":480,"shouldReloadOnOpen":true,"isAlwaysOnTop":false,)"
        R"("prefersDetached":true,"openInSystemBrowser":true,"userAgent":"","customEmoji":")"
        "\xF0\x9F\x98\x80"
        R"(","sfSymbolName":"star.fill","menubarIconSize":18}]})");
}

TEST(BookmarkCollectionTest, BothStylesReadBackTheSameInTheSameOrder)
{
    const std::vector<Bookmark> bookmarks = { fullBookmark("B"), bookmarkNamed("A"), fullBookmark("C") };
    for (const auto style : { Style::Compact, Style::Indented }) {
        const auto document = BookmarkCollection::encode(bookmarks, style);
        ASSERT_TRUE(document);

        EXPECT_EQ(BookmarkCollection::decode(document.value()).value().bookmarks, bookmarks);
    }
}

TEST(BookmarkCollectionTest, TheIndentedFormHasOneKeyPerLine)
{
    auto bookmark = bookmarkNamed("7C0E2B4A-5D1F-4E8B-9A63-2F1D0C7B8E41", "about:blank");
    bookmark.title = "Youtube";
    bookmark.isPinned = bookmark.isAddedToMenuBar = true;

    EXPECT_EQ(BookmarkCollection::encode({ bookmark }, Style::Indented).value(), R"({
  "bookmarks" : [
    {
      "id" : "7C0E2B4A-5D1F-4E8B-9A63-2F1D0C7B8E41",
      "title" : "Youtube",
      "url" : "about:blank",
      "isPinned" : true,
      "isAddedToMenuBar" : true,
      "createdAt" : 753264000.25,
      "shouldReloadOnOpen" : false,
      "isAlwaysOnTop" : true,
      "prefersDetached" : false,
      "openInSystemBrowser" : false
    }
  ]
})");
}

TEST(BookmarkCollectionTest, AnEmptyListIsAValidDocument)
{
    EXPECT_EQ(encoded({}), R"({"bookmarks":[]})");
    EXPECT_THAT(BookmarkCollection::decode(R"({"bookmarks":[]})").value().bookmarks, ElementsAre());
    EXPECT_THAT(BookmarkCollection::decode(BookmarkCollection::encode({}, Style::Indented).value()).value().bookmarks,
        ElementsAre());
}

TEST(BookmarkCollectionTest, ADocumentWithoutTheBookmarksKeyFails)
{
    EXPECT_THAT(errorOf("{}"), HasSubstr("\"bookmarks\" is missing"));
    EXPECT_THAT(errorOf(R"({"Bookmarks":[]})"), HasSubstr("\"bookmarks\" is missing"));
    EXPECT_THAT(errorOf('[' + BookmarkJson::complete().text() + ']'), HasSubstr("no object"));
    EXPECT_THAT(errorOf("[]"), HasSubstr("no object"));
    EXPECT_THAT(errorOf("null"), HasSubstr("no object"));
}

TEST(BookmarkCollectionTest, BookmarksThatAreNoArrayOfObjectsFail)
{
    for (const std::string value : { "null", "{}", "\"\"", "0", "true" })
        EXPECT_THAT(errorOf(R"({"bookmarks":)" + value + "}"), HasSubstr("no array"));
    for (const std::string item : { "null", "[]", "\"\"", "0", "true" })
        EXPECT_THAT(errorOf(R"({"bookmarks":[)" + item + "]}"), HasSubstr("no object"));
}

TEST(BookmarkCollectionTest, OneBookmarkWithoutARequiredKeyFailsTheWholeDocument)
{
    ASSERT_EQ(requiredKeys.size(), 10u);
    for (const auto& key : requiredKeys) {
        const auto lacking = BookmarkJson::full().without(key);
        const auto document = documentOf({ BookmarkJson::full(), lacking, BookmarkJson::full() });

        EXPECT_EQ(errorOf(document), "Bookmark 1: \"" + key + "\" is missing");
    }
}

TEST(BookmarkCollectionTest, ANullForARequiredKeyFails)
{
    for (const auto& key : requiredKeys)
        EXPECT_THAT(errorOf(BookmarkJson::full().with(key, "null").document()), HasSubstr('"' + key + "\" is no "));
}

TEST(BookmarkCollectionTest, AMissingOptionalKeyAndANullAreAbsentAndNotWrittenBack)
{
    ASSERT_EQ(optionalKeys.size(), 7u);
    const auto complete = decodeOne(BookmarkJson::complete().document());
    for (const auto& key : optionalKeys) {
        const auto bookmark = decodeOne(BookmarkJson::complete().with(key, "null").document());

        EXPECT_EQ(bookmark, complete);
        EXPECT_THAT(encoded({ bookmark }), testing::Not(HasSubstr(key)));
    }
}

TEST(BookmarkCollectionTest, TextsAcceptNothingButStrings)
{
    expectWrongTypes(textKeys, { "1", "1.5", "true", "false", "[]", "{}", R"(["A"])" });
}

TEST(BookmarkCollectionTest, FlagsAcceptNothingButTrueAndFalse)
{
    expectWrongTypes(flagKeys, { "0", "1", "1.0", R"("true")", "[]", "{}", R"("")" });
}

TEST(BookmarkCollectionTest, NumbersAcceptNothingButNumbers)
{
    expectWrongTypes(numberKeys, { R"("1")", "true", "false", "[]", "{}", R"("2001-01-01T00:00:00Z")" });
}

TEST(BookmarkCollectionTest, EveryFieldIsReadFromItsOwnKey)
{
    const auto bookmark = decodeOne(BookmarkJson::full().document());

    const Bookmark expected {
        .id = "A",
        .title = "Mail",
        .url = "https://mail.example/",
        .iconURL = "https://icons.example/a.png",
        .createdAt = { 753264000.25 },
        .preferredWidth = 640.5,
        .preferredHeight = 480,
        .userAgent = "Agent/1.0",
        .customEmoji = "\xF0\x9F\x98\x80",
        .sfSymbolName = "star.fill",
        .menubarIconSize = 18,
    };
    EXPECT_EQ(bookmark, expected);
    for (const auto& key : flagKeys) {
        const auto flipped
            = decodeOne(BookmarkJson::full().with(key, key == "isAlwaysOnTop" ? "false" : "true").document());
        EXPECT_NE(flipped, expected);
        EXPECT_THAT(encoded({ flipped }), HasSubstr('"' + key + (key == "isAlwaysOnTop" ? "\":false" : "\":true")));
    }
}

TEST(BookmarkCollectionTest, KeysMayComeInAnyOrder)
{
    const auto usual = decodeOne(BookmarkJson::complete().document());
    auto reversed = BookmarkJson();
    for (const std::string key : { "openInSystemBrowser", "prefersDetached", "isAlwaysOnTop", "shouldReloadOnOpen" })
        reversed = reversed.with(key, key == "isAlwaysOnTop" ? "true" : "false");
    reversed = reversed.with("createdAt", "753264000.25").with("isAddedToMenuBar", "false").with("isPinned", "false");
    reversed = reversed.with("url", R"("https://mail.example/")").with("title", R"("Mail")").with("id", R"("A")");

    EXPECT_EQ(decodeOne(reversed.document()), usual);
}

TEST(BookmarkCollectionTest, KeysAreComparedAfterTheirEscapesAndExactly)
{
    const auto escaped = BookmarkJson::complete().without("id").with("\\u0069d", R"("B")");

    EXPECT_EQ(decodeOne(escaped.document()).id, "B");
    EXPECT_THAT(errorOf(BookmarkJson::complete().without("id").with("ID", R"("B")").document()),
        HasSubstr("\"id\" is missing"));
}

TEST(BookmarkCollectionTest, UnknownKeysAreIgnored)
{
    const auto usual = decodeOne(BookmarkJson::complete().document());
    const auto extended = BookmarkJson::complete().with("tags", R"([1,{"id":[]},null])").with("", "0");

    EXPECT_EQ(decodeOne(extended.document()), usual);
    EXPECT_EQ(decodeOne(R"({"version":2,"bookmarks":[)" + extended.text() + R"(],"a":{"bookmarks":[]}})"), usual);
}

TEST(BookmarkCollectionTest, OfARepeatedKeyTheLastOneCounts)
{
    EXPECT_EQ(decodeOne(BookmarkJson::complete().repeating("title", R"("Last")").document()).title, "Last");
    EXPECT_EQ(decodeOne(BookmarkJson::complete().with("title", "0").repeating("title", R"("Last")").document()).title,
        "Last");
    EXPECT_THAT(
        errorOf(BookmarkJson::complete().repeating("title", "0").document()), HasSubstr("\"title\" is no text"));
    EXPECT_THAT(BookmarkCollection::decode(R"({"bookmarks":0,"bookmarks":[]})").value().bookmarks, ElementsAre());
}

TEST(BookmarkCollectionTest, AnIdOfAnyTextIsAcceptedAsItStands)
{
    for (const std::string id : { "", "general", "7c0e2b4a", "\xF0\x9F\x98\x80", "a\"b\\c/\x7F" }) {
        auto bookmark = bookmarkNamed(id);
        EXPECT_EQ(decodeOne(encoded({ bookmark })).id, id);
    }
}

TEST(BookmarkCollectionTest, CreatedAtZeroIsTheStartOf2001)
{
    for (const std::string zero : { "0", "0.0", "-0", "0e5" })
        EXPECT_EQ(
            decodeOne(BookmarkJson::complete().with("createdAt", zero).document()).createdAt, foundation::Date {});
}

TEST(BookmarkCollectionTest, NumbersMayBeWrittenAsIntegersFloatsOrPowers)
{
    const auto createdAt = [](std::string_view number) {
        return decodeOne(BookmarkJson::complete().with("createdAt", number).document())
            .createdAt.timeIntervalSinceReferenceDate;
    };
    EXPECT_EQ(createdAt("753264000"), 753264000.0);
    EXPECT_EQ(createdAt("-1"), -1.0);
    EXPECT_EQ(createdAt("7.5E+2"), 750.0);
    EXPECT_EQ(createdAt("9223372036854775807"), 9223372036854775807.0);
    EXPECT_EQ(createdAt("18446744073709551615"), 18446744073709551615.0);
}

TEST(BookmarkCollectionTest, IntegersBeyond64BitsAreReadAsTheNearestFloat)
{
    const auto width = [](std::string_view number) {
        return decodeOne(BookmarkJson::complete().with("preferredWidth", number).document()).preferredWidth;
    };
    EXPECT_EQ(width("18446744073709551616"), 18446744073709551616.0);
    EXPECT_EQ(width("-9223372036854775809"), -9223372036854775809.0);
    EXPECT_EQ(width("1" + std::string(300, '0')), 1e300);
    EXPECT_EQ(width("100000000000000000000000000000000000001"), 1e38);
    EXPECT_EQ(
        decodeOne(BookmarkJson::complete().with("ignored", "[123456789012345678901234567890]").document()).id, "A");
}

TEST(BookmarkCollectionTest, NumbersBeyondAFloatAreRefused)
{
    const auto tooLong = "1" + std::string(309, '0');
    for (const std::string_view number : { "1e309", "-1e309", tooLong.c_str(), "1e999999999999" }) {
        EXPECT_THAT(errorOf(BookmarkJson::complete().with("createdAt", number).document()), HasSubstr("Malformed"));
        EXPECT_THAT(errorOf(BookmarkJson::complete().with("ignored", number).document()), HasSubstr("Malformed"));
    }
}

TEST(BookmarkCollectionTest, ADateRoundTripsWithoutLoss)
{
    constexpr auto limits = std::numeric_limits<double>();
    for (const double moment : { 0.1, 753264000.123456789, -1e-300, limits.max(), limits.denorm_min(), 1e21, 5e-324 }) {
        auto bookmark = bookmarkNamed("A");
        bookmark.createdAt = { moment };
        bookmark.preferredHeight = -moment;
        EXPECT_EQ(decodeOne(encoded({ bookmark })), bookmark);
    }
}

TEST(BookmarkCollectionTest, NegativeZeroKeepsItsSign)
{
    auto bookmark = bookmarkNamed("A");
    bookmark.preferredWidth = -0.0;

    EXPECT_TRUE(std::signbit(*decodeOne(encoded({ bookmark })).preferredWidth));
}

TEST(BookmarkCollectionTest, EveryCharacterRoundTripsInEveryPositionOfAWord)
{
    for (int code = 0; code < 0x80; ++code) {
        for (std::size_t position = 0; position < 17; ++position) {
            auto bookmark = bookmarkNamed("A");
            bookmark.title = std::string(17, 'x');
            bookmark.title[position] = static_cast<char>(code);
            ASSERT_EQ(decodeOne(encoded({ bookmark })).title, bookmark.title) << code << " at " << position;
        }
    }
}

TEST(BookmarkCollectionTest, ControlCharactersAreEscaped)
{
    auto bookmark = bookmarkNamed("A");
    bookmark.title = std::string("\b\f\n\r\t\"\\\0\x1F/\x7F", 11);

    EXPECT_THAT(encoded({ bookmark }), HasSubstr("\"title\":\"\\b\\f\\n\\r\\t\\\"\\\\\\u0000\\u001f/\x7F\""));
}

TEST(BookmarkCollectionTest, NumbersThatAreNotFiniteFailTheEncoding)
{
    constexpr auto limits = std::numeric_limits<double>();
    for (const double number : { limits.infinity(), -limits.infinity(), limits.quiet_NaN() }) {
        auto date = bookmarkNamed("A"), size = bookmarkNamed("B");
        date.createdAt = { number };
        size.menubarIconSize = number;
        EXPECT_FALSE(BookmarkCollection::encode({ date }, Style::Compact));
        EXPECT_FALSE(BookmarkCollection::encode({ bookmarkNamed("C"), size }, Style::Indented));
    }
}

TEST(BookmarkCollectionTest, TextsThatAreNotUTF8FailTheEncoding)
{
    for (const std::string text : { "\xFF", "a\xC3", "\xED\xA0\x80", "\xC0\x80", "\xF5\x80\x80\x80", "\xA0" }) {
        auto bookmark = bookmarkNamed("A");
        bookmark.title = text;
        EXPECT_FALSE(BookmarkCollection::encode({ bookmark }, Style::Compact));
        bookmark.title = "";
        bookmark.sfSymbolName = text;
        EXPECT_FALSE(BookmarkCollection::encode({ bookmark }, Style::Compact));
    }
}

} // namespace perchly::tests
