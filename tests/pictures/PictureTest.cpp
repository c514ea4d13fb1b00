#include "platform/linux/statusarea/Picture.h"

#include "DrawnPicture.h"
#include "platform/linux/statusarea/DecodedPicture.h"
#include "support/MainLoop.h"
#include "support/linux/ChildProcesses.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>

namespace {

using desktop::Picture;
using perchly::test::childProcesses;
using perchly::test::drawn;
using perchly::test::drawnLarge;
using perchly::test::pictureFile;
using perchly::test::waitUntil;
using Kind = Picture::Subject::Kind;

constexpr const char* program = "perchly-draw";
constexpr const char* grey = desktop::templateColour;

Picture::Subject text(const std::string& value, int percent = 79, int weight = 500)
{
    return { Kind::Text, value, grey, percent, weight };
}

Picture::Subject data(const std::string& file, int percent = 100, const std::string& colour = {})
{
    const auto decoded = desktop::decodePicture(pictureFile(file));
    EXPECT_TRUE(decoded) << file;
    return { Kind::Data, decoded ? decoded->png : "", colour, percent };
}

bool isGrey(const perchly::test::Pixel& pixel)
{
    const auto isNear = [](int channel) { return std::abs(channel - 0x80) <= 4; };
    return isNear(pixel.red) && isNear(pixel.green) && isNear(pixel.blue);
}

/// Of the pixels that are clearly there.
bool hasColours(const perchly::test::DrawnPicture& picture, int firstColumn, int lastColumn)
{
    for (auto y = 0; y < picture.size(); ++y) {
        for (auto x = firstColumn; x <= lastColumn; ++x) {
            if (picture.at(x, y).alpha > 128 && !isGrey(picture.at(x, y)))
                return true;
        }
    }
    return false;
}

class TextPictureTest : public testing::TestWithParam<const char*> { };

TEST_P(TextPictureTest, IsNeitherEmptyNorClippedNorOffTheMiddleInAnySize)
{
    for (const auto percent : { 68, 79, 95, 100 }) {
        const auto pictures = drawn(text(GetParam(), percent));

        ASSERT_EQ(pictures.size(), 6U);
        for (const auto& picture : pictures) {
            const auto last = picture.size() - 1;
            EXPECT_GT(picture.coverage(), picture.size() * picture.size() / 50.0) << picture.size();
            // Ink that is cut off reaches the edge.
            for (auto line = 0; line <= last; ++line) {
                for (const auto& edge :
                    { picture.at(line, 0), picture.at(line, last), picture.at(0, line), picture.at(last, line) })
                    EXPECT_EQ(edge.alpha, 0) << picture.size() << " at " << percent << " %, line " << line;
            }
            EXPECT_NEAR(picture.columns().first, last - picture.columns().last, 2) << picture.size();
            EXPECT_NEAR(picture.rows().first, last - picture.rows().last, 2) << picture.size();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, TextPictureTest,
    testing::Values(
        "Y", "g", "YT", "WWW", "ÅÄj", "News!", "🚀", "😀", "🇩🇪", "👩‍💻", "A🚀", "❤️👍", "日", "ش"));

TEST(PictureTest, ALongTextStaysWithinTheSquareAndIsDrawnAtOnce)
{
    std::string endless;
    for (auto repetition = 0; repetition < 10000; ++repetition)
        endless += "Wörter ";

    EXPECT_LE(drawnLarge(text(endless)).columns().length(), 64);
}

TEST(PictureTest, OfAnEndlessTextThereIsSomethingToSee)
{
    for (const std::string letters : { "a", "W", "日", "🚀", "l", "👩‍💻" }) {
        std::string endless;
        for (auto repetition = 0; repetition < 300; ++repetition)
            endless += letters;
        const auto pictures = drawn(text(endless));
        ASSERT_EQ(pictures.size(), 6U) << letters;
        for (const auto& picture : pictures)
            EXPECT_GT(picture.coverage(), picture.size() / 8.0) << letters << " at " << picture.size();
    }
}

TEST(PictureTest, BytesThatAreNoTextAreDrawnAllTheSame)
{
    EXPECT_GT(drawnLarge(text("A\xff\xfe")).coverage(), 0);
}

TEST(PictureTest, ATextOfNothingVisibleHasNoPicture)
{
    EXPECT_TRUE(drawn(text(" ")).empty());
}

TEST(PictureTest, ATextsFontIsAsLargeAsThePercentageSays)
{
    const auto small = drawnLarge(text("H", 50)).rows().length();
    const auto large = drawnLarge(text("H", 100)).rows().length();

    // Capitals are 0.7 to 0.75 of their font's size.
    EXPECT_NEAR(small, 0.73 * 32, 2);
    EXPECT_NEAR(large, 0.73 * 64, 3);
}

TEST(PictureTest, AnEmojiIsNoLargerThanItsFont)
{
    EXPECT_NEAR(drawnLarge(text("😀", 50)).rows().length(), 30, 3);
}

TEST(PictureTest, ABoldTextIsBolder)
{
    EXPECT_GT(drawnLarge(text("H", 68, 700)).coverage(), 1.2 * drawnLarge(text("H", 68, 400)).coverage());
}

TEST(PictureTest, LettersHaveTheTemplateColourAndEmojiTheirOwn)
{
    const auto picture = drawnLarge(text("A🚀"));
    const auto letters = drawnLarge(text("AV"));

    EXPECT_FALSE(hasColours(letters, 0, 63));
    EXPECT_FALSE(hasColours(picture, 0, 18));
    EXPECT_TRUE(hasColours(picture, 32, 63));
}

TEST(PictureTest, ADrawingTakesThePercentageOfTheSquare)
{
    const auto whole = drawnLarge(data("drawing.svg", 100, grey));
    const auto half = drawnLarge(data("drawing.svg", 50, grey));

    EXPECT_NEAR(whole.columns().length(), 64 * 20 / 24.0, 2);
    EXPECT_NEAR(half.columns().length(), 32 * 20 / 24.0, 2);
    EXPECT_NEAR(half.columns().first, 63 - half.columns().last, 1);
}

TEST(PictureTest, ADrawingIsPaintedInItsColourAndKeepsItsOwnWithoutOne)
{
    EXPECT_TRUE(isGrey(drawnLarge(data("blue.jpg", 79, grey)).at(32, 32)));

    const auto own = drawnLarge(data("blue.jpg", 79)).at(32, 32);
    EXPECT_GT(own.blue, 180);
    EXPECT_LT(own.red, 20);
}

TEST(PictureTest, ASmallPictureKeepsItsPixelsWhereThatMakesNoGreatDifference)
{
    const auto pictures = drawn(data("small.gif", 84));

    ASSERT_EQ(pictures.size(), 4U);
    EXPECT_EQ(pictures[0].columns().length(), 16);
    EXPECT_EQ(pictures[1].columns().length(), 16);
    EXPECT_EQ(pictures[1].at(3, 3).alpha, 255);
    EXPECT_EQ(pictures[1].at(2, 2).alpha, 0);
    EXPECT_NEAR(pictures[3].columns().length(), 27, 2);
}

TEST(PictureTest, APictureIsNotEnlargedBeyondTwice)
{
    const auto sizes = [](const Picture::Subject& subject) {
        std::vector<int> all;
        for (const auto& picture : drawn(subject))
            all.push_back(picture.size());
        return all;
    };
    EXPECT_THAT(sizes(data("small.gif")), testing::ElementsAre(16, 22, 24, 32));
    EXPECT_THAT(sizes(data("drawing.svg")), testing::ElementsAre(16, 22, 24, 32, 48, 64));
}

TEST(PictureTest, TheSameContentsAreTheSamePicture)
{
    const auto subject = data("small.gif", 84);
    const auto picture = Picture::of(subject);

    EXPECT_EQ(Picture::of(data("small.gif", 84)), picture);
    EXPECT_NE(Picture::of(data("small.gif", 79)), picture);
    EXPECT_NE(Picture::of(data("blue.bmp", 84)), picture);
}

TEST(PictureTest, PixmapsGoSomeSecondsAfterTheyWereAskedForAndComeBack)
{
    const auto picture = Picture::of(text("go"));
    ASSERT_FALSE(drawn(picture).empty());
    ASSERT_TRUE(picture->holdsPixmaps());

    EXPECT_TRUE(waitUntil([&] { return !picture->holdsPixmaps(); }));
    EXPECT_FALSE(drawn(picture).empty());
}

TEST(PictureTest, ManyAtOnceAreDrawnByOneProgramThatEndsAfterwards)
{
    constexpr std::size_t number = 200;
    std::vector<std::shared_ptr<Picture>> pictures;
    std::size_t finished = 0;
    std::size_t most = 0;

    for (std::size_t index = 0; index < number; ++index) {
        pictures.push_back(Picture::of(text(std::to_string(index))));
        pictures.back()->withPixmaps(
            [&finished](GVariant* pixmaps) { finished += g_variant_n_children(pixmaps) == 6 ? 1 : 0; });
    }
    ASSERT_TRUE(waitUntil([&] {
        most = std::max(most, childProcesses(program).size());
        return finished == number;
    }));

    EXPECT_EQ(most, 1U);
    EXPECT_TRUE(waitUntil([] { return childProcesses(program).empty(); }));
}

TEST(PictureTest, AProgramThatEndsTakesNoPictureAlong)
{
    constexpr std::size_t number = 50;
    std::vector<std::shared_ptr<Picture>> pictures;
    std::size_t answered = 0;
    std::size_t finished = 0;
    for (std::size_t index = 0; index < number; ++index) {
        pictures.push_back(Picture::of(text("e" + std::to_string(index))));
        pictures.back()->withPixmaps([&](GVariant* pixmaps) {
            if (++answered == 1)
                kill(*childProcesses(program).begin(), SIGKILL);
            finished += g_variant_n_children(pixmaps) == 6 ? 1 : 0;
        });
    }

    ASSERT_TRUE(waitUntil([&] { return answered == number; }));

    EXPECT_EQ(finished, number);
}

TEST(PictureTest, APictureThatIsTooMuchForTheProgramTakesNoOtherAlong)
{
    std::vector<std::shared_ptr<Picture>> pictures;
    std::vector<std::size_t> sizes(9, 99);
    for (std::size_t index = 0; index < sizes.size(); ++index) {
        const auto tooMuch = std::string(std::size_t { 2 } << 20U, 'x');
        pictures.push_back(Picture::of(text((index % 3 == 1 ? tooMuch : "i") + std::to_string(index))));
        pictures.back()->withPixmaps(
            [&sizes, index](GVariant* pixmaps) { sizes[index] = g_variant_n_children(pixmaps); });
    }

    ASSERT_TRUE(waitUntil([&] { return std::ranges::find(sizes, 99) == sizes.end(); }));

    EXPECT_THAT(sizes, testing::ElementsAre(6, 0, 6, 6, 0, 6, 6, 0, 6));
}

} // namespace
