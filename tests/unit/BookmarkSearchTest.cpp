#include "bookmarklist/BookmarkSearch.h"
#include "bookmarks/Bookmark.h"

#include <gmock/gmock.h>

namespace perchly::tests {

using testing::ElementsAre;
using testing::IsEmpty;

class BookmarkSearchTest : public testing::Test {
protected:
    void setBookmarks(std::vector<Bookmark> bookmarks)
    {
        bookmarks_ = std::move(bookmarks);
        search_.setBookmarks(bookmarks_);
    }

    std::vector<Bookmark> bookmarks_;
    BookmarkSearch search_;
};

TEST_F(BookmarkSearchTest, WithoutAListNothingIsFound)
{
    EXPECT_THAT(search_.indicesMatching(""), IsEmpty());
    EXPECT_THAT(search_.indicesMatching("a"), IsEmpty());
}

TEST_F(BookmarkSearchTest, AnEmptyListHasNothing)
{
    setBookmarks({});

    EXPECT_THAT(search_.indicesMatching(""), IsEmpty());
    EXPECT_THAT(search_.indicesMatching("a"), IsEmpty());
}

TEST_F(BookmarkSearchTest, AnEmptyTextFindsAllInTheirOrder)
{
    setBookmarks({ { .title = "B" }, {}, { .title = "A" } });

    EXPECT_THAT(search_.indicesMatching(""), ElementsAre(0, 1, 2));
}

TEST_F(BookmarkSearchTest, FindsInTheListsOrderWhateverHasTheTextInTitleOrAddress)
{
    setBookmarks(
        { { .title = "Other", .url = "https://mail.example/" }, { .title = "None", .url = "https://a.example/" },
            { .title = "My mail", .url = "b" }, { .title = "mail", .url = "mail" } });

    EXPECT_THAT(search_.indicesMatching("mail"), ElementsAre(0, 2, 3));
}

TEST_F(BookmarkSearchTest, FindsThePartAtEitherEndAndTheWholeText)
{
    setBookmarks({ { .title = "Youtube", .url = "https://video.example/" } });

    for (const auto* text : { "Y", "you", "tube", "e", "youtube", "h", "/", "https://video.example/" })
        EXPECT_THAT(search_.indicesMatching(text), ElementsAre(0)) << text;
    for (const auto* text : { "youtubes", "ayou", "yt", "https://video.example//" })
        EXPECT_THAT(search_.indicesMatching(text), IsEmpty()) << text;
}

TEST_F(BookmarkSearchTest, CapitalsDoNotCountOnEitherSide)
{
    setBookmarks({ { .title = "Youtube", .url = "HTTPS://Video.Example/" } });

    for (const auto* text : { "YOU", "you", "yOuTuBe", "https://video", "VIDEO.EXAMPLE" })
        EXPECT_THAT(search_.indicesMatching(text), ElementsAre(0)) << text;
}

TEST_F(BookmarkSearchTest, CapitalsOfOtherAlphabetsDoNotCountEither)
{
    setBookmarks({ { .title = "ÄRZTE" }, { .title = "Ελληνικά" }, { .title = "МОСКВА" }, { .title = "straße" } });

    EXPECT_THAT(search_.indicesMatching("ärzte"), ElementsAre(0));
    EXPECT_THAT(search_.indicesMatching("ΕΛΛΗΝΙΚΆ"), ElementsAre(1));
    EXPECT_THAT(search_.indicesMatching("москва"), ElementsAre(2));
    EXPECT_THAT(search_.indicesMatching("STRAßE"), ElementsAre(3));
    EXPECT_THAT(search_.indicesMatching("arzte"), IsEmpty());
}

TEST_F(BookmarkSearchTest, BlanksCountWhereverTheyStand)
{
    setBookmarks({ { .title = "One" }, { .title = "Two words" }, { .title = "x", .url = "a b" }, { .title = " " } });

    EXPECT_THAT(search_.indicesMatching(" "), ElementsAre(1, 2, 3));
    EXPECT_THAT(search_.indicesMatching(" words"), ElementsAre(1));
    EXPECT_THAT(search_.indicesMatching("words "), IsEmpty());
    EXPECT_THAT(search_.indicesMatching("\t"), IsEmpty());
}

TEST_F(BookmarkSearchTest, NothingIsFoundAcrossTwoTexts)
{
    setBookmarks({ { .title = "ab", .url = "cd" }, { .title = "ef", .url = "gh" } });

    for (const auto* text : { "bc", "abcd", "de", "cdef", "fg", "b c", "b\nc" })
        EXPECT_THAT(search_.indicesMatching(text), IsEmpty()) << text;
    EXPECT_THAT(search_.indicesMatching(std::string("b\0c", 3)), IsEmpty());
}

TEST_F(BookmarkSearchTest, TakesTheTextAsItIsAndNotAsAPattern)
{
    setBookmarks({ { .title = "a.b" }, { .title = "axb" }, { .title = "<b>&amp;" }, { .title = "50%s*" } });

    EXPECT_THAT(search_.indicesMatching("a.b"), ElementsAre(0));
    EXPECT_THAT(search_.indicesMatching("<B>&"), ElementsAre(2));
    EXPECT_THAT(search_.indicesMatching("%s*"), ElementsAre(3));
    EXPECT_THAT(search_.indicesMatching(".*"), IsEmpty());
}

TEST_F(BookmarkSearchTest, TakesLineBreaksNullCharactersAndMarksAsTheyAre)
{
    setBookmarks({ { .title = "one\ntwo" }, { .title = std::string("nul\0l", 5) }, { .title = "\u05D0\u05D1\u05D2" },
        { .title = "e\u0301a" } });

    EXPECT_THAT(search_.indicesMatching("E\nT"), ElementsAre(0));
    EXPECT_THAT(search_.indicesMatching(std::string("L\0L", 3)), ElementsAre(1));
    EXPECT_THAT(search_.indicesMatching("\u05D1\u05D2"), ElementsAre(2));
    EXPECT_THAT(search_.indicesMatching("E\u0301"), ElementsAre(3));
}

TEST_F(BookmarkSearchTest, SearchesTheListThatItWasGivenLast)
{
    setBookmarks({ { .title = "Old" }, { .title = "Both" } });
    EXPECT_THAT(search_.indicesMatching("old"), ElementsAre(0));

    setBookmarks({ { .title = "Both" }, { .title = "New" }, { .title = "Newer" } });

    EXPECT_THAT(search_.indicesMatching("old"), IsEmpty());
    EXPECT_THAT(search_.indicesMatching("new"), ElementsAre(1, 2));
    EXPECT_THAT(search_.indicesMatching("both"), ElementsAre(0));
    EXPECT_THAT(search_.indicesMatching(""), ElementsAre(0, 1, 2));
}

TEST_F(BookmarkSearchTest, EachSearchIsItsOwn)
{
    setBookmarks({ { .title = "Alpha" }, { .title = "Beta" } });

    EXPECT_THAT(search_.indicesMatching("beta"), ElementsAre(1));
    EXPECT_THAT(search_.indicesMatching("alpha"), ElementsAre(0));
    EXPECT_THAT(search_.indicesMatching("nothing"), IsEmpty());
    EXPECT_THAT(search_.indicesMatching("a"), ElementsAre(0, 1));
}

TEST_F(BookmarkSearchTest, FindsInHugeTexts)
{
    std::string title(1'000'000, 'x');
    title += "End";
    setBookmarks({ { .title = title }, { .title = "end", .url = std::string(1'000'000, 'y') } });

    EXPECT_THAT(search_.indicesMatching("XEND"), ElementsAre(0));
    EXPECT_THAT(search_.indicesMatching("end"), ElementsAre(0, 1));
    EXPECT_THAT(search_.indicesMatching(title), ElementsAre(0));
    EXPECT_THAT(search_.indicesMatching(title + "x"), IsEmpty());
}

} // namespace perchly::tests
