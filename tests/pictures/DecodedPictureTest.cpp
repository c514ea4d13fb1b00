#include "platform/linux/statusarea/DecodedPicture.h"

#include "DrawnPicture.h"
#include "platform/appkit/Image.h"
#include "platform/linux/desktop/GObject.h"
#include "support/MainLoop.h"
#include "support/TestServer.h"
#include "support/UserFolders.h"
#include "support/linux/ChildProcesses.h"

#include <gmock/gmock.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <thread>

namespace {

using appkit::Image;
using desktop::decodePicture;
using desktop::Picture;
using perchly::test::childProcesses;
using perchly::test::drawnLarge;
using perchly::test::pictureFile;
using perchly::test::waitUntil;
using testing::HasSubstr;
using testing::Not;

constexpr const char* program = "perchly-draw";

perchly::test::DrawnPicture decodedAndDrawn(const std::string& bytes)
{
    const auto decoded = decodePicture(bytes);
    EXPECT_TRUE(decoded);
    return drawnLarge({ Picture::Subject::Kind::Data, decoded ? decoded->png : "", "", 100 });
}

/// The picture's width, as a PNG file has it.
int sideOf(const std::string& png)
{
    if (png.size() < 24)
        return 0;
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(png[index]); };
    return byte(18) << 8 | byte(19);
}

struct Format {
    const char* file;
    int side;
    char colour;
};

class DecodedFormatTest : public testing::TestWithParam<Format> { };

TEST_P(DecodedFormatTest, IsAPngFileNoLargerThanNeeded)
{
    const auto decoded = decodePicture(pictureFile(GetParam().file));

    ASSERT_TRUE(decoded);
    EXPECT_THAT(decoded->png, testing::StartsWith("\x89PNG"));
    EXPECT_EQ(sideOf(decoded->png), GetParam().side);
    const auto picture = drawnLarge({ Picture::Subject::Kind::Data, decoded->png, "", 100 });
    const auto pixel = picture.at(picture.size() / 2, picture.size() / 2);
    EXPECT_EQ(pixel.alpha, 255);
    EXPECT_EQ(pixel.red > 150, GetParam().colour == 'r');
    EXPECT_EQ(pixel.green > 120, GetParam().colour == 'g');
    EXPECT_EQ(pixel.blue > 150, GetParam().colour == 'b');
}

INSTANTIATE_TEST_SUITE_P(Formats, DecodedFormatTest,
    testing::Values(Format { "wide.png", 40, 'r' }, Format { "blue.jpg", 32, 'b' }, Format { "small.gif", 16, 'g' },
        Format { "sizes.ico", 48, 'r' }, Format { "large.ico", 128, 'r' }, Format { "blue.bmp", 16, 'b' },
        Format { "red.webp", 32, 'r' }),
    [](const auto& format) {
        std::string name = format.param.file;
        std::ranges::replace(name, '.', '_');
        return name;
    });

TEST(DecodedPictureTest, APictureThatIsNoSquareStandsInTheMiddleOfOne)
{
    const auto picture = decodedAndDrawn(pictureFile("wide.png"));

    EXPECT_EQ(picture.columns().length(), 64);
    EXPECT_NEAR(picture.rows().length(), 32, 2);
    EXPECT_NEAR(picture.rows().first, 16, 1);
}

TEST(DecodedPictureTest, APhotoStaysSmall)
{
    const auto decoded = decodePicture(pictureFile("noise.jpg"));

    ASSERT_TRUE(decoded);
    EXPECT_LE(decoded->png.size(), std::size_t { 17 } << 10U);
    EXPECT_TRUE(decoded->outline.empty());
}

TEST(DecodedPictureTest, ADrawingHasAnOutlineThatCoversTheSame)
{
    const auto decoded = decodePicture(pictureFile("drawing.svg"));
    ASSERT_TRUE(decoded);
    const auto outline = decodePicture(decoded->outline);
    ASSERT_TRUE(outline);

    const auto picture = drawnLarge({ Picture::Subject::Kind::Data, decoded->png, "#808080", 100 });
    const auto outlined = drawnLarge({ Picture::Subject::Kind::Data, outline->png, "#808080", 100 });

    auto difference = 0.0;
    for (auto y = 0; y < 64; ++y) {
        for (auto x = 0; x < 64; ++x)
            difference += std::abs(picture.at(x, y).alpha - outlined.at(x, y).alpha) / 255.0;
    }
    EXPECT_GT(picture.coverage(), 1000);
    EXPECT_LT(difference, picture.coverage() * 0.02);
}

TEST(DecodedPictureTest, OutlinesHoldNothingOfTheFileButItsShape)
{
    const auto decoded
        = decodePicture("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'><script>evil()</script>"
                        "<path d='M1 1h6v6h-6z' onclick='evil()'/></svg>");

    ASSERT_TRUE(decoded);
    EXPECT_THAT(decoded->outline, HasSubstr("<path class=\"ColorScheme-Text\""));
    EXPECT_THAT(decoded->outline, Not(HasSubstr("evil")));
}

TEST(DecodedPictureTest, ADrawingThatIsHalfTransparentHasNoOutline)
{
    const auto decoded = decodePicture("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'>"
                                       "<path d='M1 1h6v6h-6z' fill-opacity='.4'/><path d='M3 3h2v2h-2z'/></svg>");

    ASSERT_TRUE(decoded);
    EXPECT_TRUE(decoded->outline.empty());
}

TEST(DecodedPictureTest, ADrawingSeesNoOtherFile)
{
    const auto outside = std::filesystem::path(PERCHLY_PICTURES) / "wide.png";
    const auto svg
        = "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' viewBox='0 0 8 8'>"
          "<rect width='8' height='2' fill='#00c000'/>"
          "<image width='8' height='8' href='file://"
        + outside.string() + "'/><image width='8' height='8' xlink:href='" + outside.string() + "'/></svg>";

    const auto picture = decodedAndDrawn(svg);

    EXPECT_GT(picture.at(32, 8).green, 150);
    EXPECT_EQ(picture.at(32, 40).alpha, 0);
}

/// What the drawing shows of the other one that it refers to in that way: the other covers the lower half. Nothing
/// where the reference makes it no drawing at all.
int foreignInk(const std::string& declarations, const std::string& contents)
{
    const auto decoded = decodePicture("<?xml version='1.0'?>" + declarations
        + "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xi='http://www.w3.org/2001/XInclude'"
          " xmlns:xlink='http://www.w3.org/1999/xlink' viewBox='0 0 8 8'>"
          "<rect width='8' height='2' fill='#00c000'/>"
        + contents + "</svg>");
    if (!decoded)
        return 0;
    const auto picture = drawnLarge({ Picture::Subject::Kind::Data, decoded->png, "", 100 });
    EXPECT_GT(picture.at(32, 8).green, 150) << contents;
    return picture.at(32, 48).alpha;
}

TEST(DecodedPictureTest, ADrawingSeesNoOtherFileByWhateverWay)
{
    const perchly::test::UserFolders folders;
    const auto folder = std::filesystem::path(std::getenv("XDG_DATA_HOME"));
    std::ofstream(folder / "other.svg") << "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'>"
                                           "<g id='a'><rect y='4' width='8' height='4'/></g></svg>";
    std::ofstream(folder / "element.xml") << "<rect xmlns='http://www.w3.org/2000/svg' y='4' width='8' height='4'/>";
    std::ofstream(folder / "style.css") << "#late { visibility: visible }";
    perchly::test::TestServer server;
    server.serve("/other.svg",
        { .body = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'>"
                  "<g id='a'><rect y='4' width='8' height='4'/></g></svg>",
            .contentType = "image/svg+xml" });
    server.serve("/style.css", { .body = "#late { visibility: visible }", .contentType = "text/css" });
    const auto file = "file://" + folder.string() + "/";
    const std::string late = "<rect id='late' y='4' width='8' height='4' visibility='hidden'/>";

    for (const auto& base : { file, folder.string() + "/", server.url("/") }) {
        EXPECT_EQ(foreignInk("", "<image width='8' height='8' href='" + base + "other.svg'/>"), 0);
        EXPECT_EQ(foreignInk("", "<use href='" + base + "other.svg#a'/>"), 0);
        EXPECT_EQ(foreignInk("", "<use xlink:href='" + base + "other.svg#a'/>"), 0);
        EXPECT_EQ(foreignInk("", "<xi:include href='" + base + "element.xml'/>"), 0);
        EXPECT_EQ(foreignInk("<!DOCTYPE svg [<!ENTITY other SYSTEM '" + base + "element.xml'>]>", "&other;"), 0);
        auto importing = "<style>@import url('" + base + "style.css');</style>";
        EXPECT_EQ(foreignInk("", importing += late), 0);
        EXPECT_EQ(foreignInk("<?xml-stylesheet type='text/css' href='" + base + "style.css'?>", late), 0);
    }
    EXPECT_TRUE(server.requests().empty());
    EXPECT_GT(foreignInk("", "<style>#late { visibility: visible }</style>" + late), 200);
}

/// Elements that stand for ten of the ones before, nine times over.
std::string elementBomb()
{
    std::string svg
        = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'><defs><rect id='a0' width='8' height='8'/>";
    for (auto level = 1; level < 10; ++level) {
        svg += "<g id='a" + std::to_string(level) + "'>";
        for (auto copy = 0; copy < 10; ++copy)
            svg += "<use href='#a" + std::to_string(level - 1) + "'/>";
        svg += "</g>";
    }
    return svg + "</defs><use href='#a9'/></svg>";
}

std::string entityBomb()
{
    std::string svg = "<?xml version='1.0'?><!DOCTYPE svg [<!ENTITY e0 'aaaaaaaaaaaaaaaa'>";
    for (auto level = 1; level < 12; ++level) {
        svg += "<!ENTITY e" + std::to_string(level) + " '";
        for (auto copy = 0; copy < 10; ++copy)
            svg += "&e" + std::to_string(level - 1) + ";";
        svg += "'>";
    }
    return svg + "]><svg xmlns='http://www.w3.org/2000/svg'><text>&e11;</text></svg>";
}

TEST(DecodedPictureTest, WhatDoesNotDecodeIsNoImage)
{
    const auto png = pictureFile("wide.png");
    const auto icon = pictureFile("sizes.ico");
    const std::string texts[] = { "", "hello", "<", "<!doctype html><html><body>404<svg></svg></body></html>",
        std::string(1, '\0'), png.substr(0, png.size() / 2), png.substr(0, 8), icon.substr(0, 40), icon.substr(0, 4),
        pictureFile("red.webp").substr(0, 20), pictureFile("blue.bmp").substr(0, 30), entityBomb(),
        std::string(std::size_t { 1 } << 20U, '<') };

    for (const auto& text : texts)
        EXPECT_FALSE(Image::withData(text)) << text.substr(0, 60);
}

TEST(DecodedPictureTest, APictureLargerThanAnyMemoryIsNoImage)
{
    EXPECT_FALSE(Image::withData(pictureFile("huge.png")));
}

TEST(DecodedPictureTest, ABombOfElementsEndsSoon)
{
    const auto start = std::chrono::steady_clock::now();

    EXPECT_FALSE(Image::withData(elementBomb()));

    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(12));
}

TEST(DecodedPictureTest, NoPictureEverTookMoreMemoryThanItMay)
{
    for (const auto& bytes : { pictureFile("huge.png"), elementBomb(), entityBomb() })
        (void)decodePicture(bytes);

    rusage usage {};
    getrusage(RUSAGE_CHILDREN, &usage);
    EXPECT_GT(usage.ru_maxrss, 1 << 10);
    EXPECT_LT(usage.ru_maxrss, 512 << 10);
}

TEST(DecodedPictureTest, OnePixelIsAPictureToo)
{
    const auto picture = decodedAndDrawn(
        "GIF89a\x01" + std::string("\0\x01\0\x80\0\0\xff\0\0\0\0\0,\0\0\0\0\x01\0\x01\0\0\x02\x02\x44\x01\0;", 28));

    EXPECT_EQ(picture.size(), 16);
    EXPECT_EQ(picture.at(8, 8).alpha, 255);
}

TEST(DecodedPictureTest, ADecodingProcessIsHeldToItsLimitsAndItsDeadline)
{
    const auto path = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "libexec/perchly/perchly-draw";
    constexpr auto flags
        = static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDIN_PIPE | G_SUBPROCESS_FLAGS_STDOUT_PIPE);
    const auto process = desktop::adopt(g_subprocess_new(flags, nullptr, path.c_str(), "decode", nullptr));
    ASSERT_TRUE(process);
    const std::string file = std::string("/proc/") + g_subprocess_get_identifier(process.get()) + "/limits";
    const auto limits = [&] {
        std::ifstream stream(file);
        return std::string { std::istreambuf_iterator<char>(stream), {} };
    };

    // The last one that it sets.
    EXPECT_TRUE(waitUntil([&] { return limits().find("Max address space         536870912") != std::string::npos; }));
    EXPECT_THAT(limits(), HasSubstr("Max cpu time              5 "));

    // It waits for its input, which never ends.
    ASSERT_TRUE(g_subprocess_wait(process.get(), nullptr, nullptr));
    EXPECT_EQ(g_subprocess_get_term_sig(process.get()), SIGALRM);
}

TEST(DecodedPictureTest, OnlySomeAreDecodedAtATime)
{
    constexpr auto number = 24;
    const auto bytes = pictureFile("noise.jpg");
    std::atomic<int> decoded = 0;
    std::vector<std::thread> threads;
    threads.reserve(number);
    std::size_t most = 0;

    for (auto index = 0; index < number; ++index)
        threads.emplace_back([&] { decoded += Image::withData(bytes) ? 1 : 0; });
    const auto allEnded = waitUntil([&] {
        most = std::max(most, childProcesses(program).size());
        return decoded == number;
    });
    for (auto& thread : threads)
        thread.join();

    EXPECT_TRUE(allEnded);
    EXPECT_GE(most, 1U);
    // One more may draw the pictures of the tests before.
    EXPECT_LE(most, 3U);
}

} // namespace
