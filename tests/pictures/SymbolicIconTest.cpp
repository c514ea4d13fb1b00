#include "platform/linux/statusarea/SymbolicIcon.h"

#include "DrawnPicture.h"
#include "platform/appkit/Image.h"
#include "platform/linux/appkit/ImageNative.h"
#include "support/UserFolders.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>

namespace {

using appkit::FontWeight;
using appkit::Image;
using desktop::Picture;
using perchly::test::drawn;
using perchly::test::drawnLarge;
using perchly::test::pictureFile;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;

class SymbolicIconTest : public testing::Test {
protected:
    static std::filesystem::path fileOf(const appkit::ThemedIcon& icon)
    {
        return std::filesystem::path(icon.folder) / (icon.name + ".svg");
    }

    static std::string contentsOf(const std::filesystem::path& file)
    {
        std::ifstream stream(file);
        return { std::istreambuf_iterator<char>(stream), {} };
    }

    static perchly::test::DrawnPicture drawing(const appkit::ThemedIcon& icon)
    {
        return drawnLarge({ Picture::Subject::Kind::File, fileOf(icon), "#808080", 100 });
    }

    static std::shared_ptr<Image> configuredStar()
    {
        return Image::systemSymbol("star.fill")->withSymbolConfiguration({ 13, FontWeight::Medium });
    }

    static std::shared_ptr<Image> downloadedDrawing()
    {
        auto image = Image::withData(pictureFile("drawing.svg"));
        image->setSize({ 13, 13 });
        image->setTemplate(true);
        return image;
    }

    perchly::test::UserFolders folders_;
};

TEST_F(SymbolicIconTest, AConfiguredSymbolIsAnIconWithRoomAroundIt)
{
    const auto icon = themedIconOf(*configuredStar());

    EXPECT_EQ(icon.name, "perchly-star_fill-68-symbolic");
    EXPECT_THAT(icon.folder, EndsWith("/Perchly/icons"));
    const auto plain = drawing(themedIconOf(*Image::systemSymbol("star.fill")));
    EXPECT_NEAR(drawing(icon).columns().length(), plain.columns().length() * 0.68, 2);
    EXPECT_NEAR(drawing(icon).columns().first, 63 - drawing(icon).columns().last, 2);
}

TEST_F(SymbolicIconTest, NoTwoSizesThatUsersChooseFromAreAlike)
{
    for (const auto side : { 16, 22, 24, 32, 48, 64 }) {
        std::vector<double> lengths;
        for (const auto points : { 13, 15, 18, 22 }) {
            const auto square = Image::systemSymbol("square.fill")
                                    ->withSymbolConfiguration({ static_cast<double>(points), FontWeight::Medium });
            for (const auto& picture : drawn(pictureOf(*square))) {
                if (picture.size() == side)
                    lengths.push_back(picture.coverage());
            }
        }
        ASSERT_EQ(lengths.size(), 4U);
        for (std::size_t index = 1; index < lengths.size(); ++index)
            EXPECT_GT(lengths[index], lengths[index - 1] * 1.1) << side;
    }
}

TEST_F(SymbolicIconTest, ItLooksAsItsPixmapsDo)
{
    const auto icon = drawing(themedIconOf(*configuredStar()));
    const auto pixmap = drawn(pictureOf(*configuredStar())).back();

    EXPECT_NEAR(icon.coverage(), pixmap.coverage(), pixmap.coverage() * 0.1);
}

TEST_F(SymbolicIconTest, ADownloadedTemplateDrawingIsAnIconToo)
{
    const auto icon = themedIconOf(*downloadedDrawing());

    EXPECT_THAT(icon.name, MatchesRegex("perchly-[0-9a-f]+-68-symbolic"));
    EXPECT_THAT(contentsOf(fileOf(icon)), HasSubstr("class=\"ColorScheme-Text\" fill=\"currentColor\""));
    EXPECT_NEAR(drawing(icon).columns().length(), 64 * 0.68 * 20 / 24, 2);
}

TEST_F(SymbolicIconTest, APictureThatKeepsItsColoursIsNone)
{
    const auto image = downloadedDrawing();
    image->setTemplate(false);
    const auto photo = Image::withData(pictureFile("noise.jpg"));
    photo->setTemplate(true);

    EXPECT_EQ(themedIconOf(*image).name, "");
    EXPECT_EQ(themedIconOf(*photo).name, "");
}

TEST_F(SymbolicIconTest, IsWrittenOnlyWhereItIsMissingOrNotWhole)
{
    const auto icon = themedIconOf(*configuredStar());
    const auto file = fileOf(icon);
    const auto whole = contentsOf(file);
    const auto written = std::filesystem::last_write_time(file) - std::chrono::hours(1);
    std::filesystem::last_write_time(file, written);

    (void)themedIconOf(*configuredStar());
    EXPECT_EQ(std::filesystem::last_write_time(file), written);

    std::filesystem::resize_file(file, 0);
    (void)themedIconOf(*configuredStar());
    EXPECT_EQ(contentsOf(file), whole);

    std::filesystem::remove_all(file.parent_path());
    (void)themedIconOf(*configuredStar());
    EXPECT_EQ(contentsOf(file), whole);
}

TEST_F(SymbolicIconTest, ItsFileIsThereForAsLongAsSomebodyShowsIt)
{
    auto first = themedIconOf(*downloadedDrawing());
    auto second = themedIconOf(*downloadedDrawing());
    const auto file = fileOf(first);

    first = {};
    EXPECT_TRUE(std::filesystem::exists(file));
    second = {};
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(SymbolicIconTest, WhatIsNotShownAsAnIconHasNoFile)
{
    const auto folder = std::filesystem::path(std::getenv("XDG_CACHE_HOME")) / "Perchly" / "icons";
    const auto image = downloadedDrawing();
    EXPECT_FALSE(std::filesystem::exists(folder));

    image->setTemplate(false);
    const auto icon = themedIconOf(*image);

    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST_F(SymbolicIconTest, FilesOfEarlierRunsAreRemovedAndThoseInUseStay)
{
    const auto icon = themedIconOf(*configuredStar());
    const auto folder = fileOf(icon).parent_path();
    std::ofstream(folder / "perchly-0123456789-symbolic.svg") << "left over";
    std::ofstream(folder / ".new-abcdef") << "unfinished";

    desktop::removeUnusedIcons();

    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files.push_back(entry.path());
    EXPECT_THAT(files, testing::ElementsAre(fileOf(icon)));
}

TEST_F(SymbolicIconTest, WithoutAPlaceForItThereAreOnlyPixmaps)
{
    std::ofstream(std::filesystem::path(std::getenv("XDG_CACHE_HOME")) / "Perchly")
        << "a file where the folder should be";

    EXPECT_EQ(themedIconOf(*configuredStar()).name, "");
}

TEST(SymbolicIconRoomTest, WhatHasNoSquareBoxGetsNoRoom)
{
    EXPECT_FALSE(desktop::withRoom("<svg/>", 50));
    EXPECT_FALSE(desktop::withRoom("<svg viewBox=\"0 0 16 8\"/>", 50));
    EXPECT_FALSE(desktop::withRoom("<svg viewBox=\"0 0 16", 50));
    EXPECT_EQ(desktop::withRoom("<svg viewBox=\"4 4 16 16\"/>", 50), "<svg viewBox=\"-4 -4 32 32\"/>");
}

} // namespace
