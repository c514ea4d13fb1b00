#include "platform/appkit/Image.h"
#include "ui/PinnedTest.h"

namespace {

using appkit::ImagePosition;
using perchly::Bookmark;
using perchly::test::Hold;
using perchly::test::waitUntil;

using namespace std::string_literals;

/// Four pixels by two, red.
const auto png = "\x89\x50\x4E\x47\x0D\x0A\x1A\x0A\x00\x00\x00\x0D\x49\x48\x44\x52\x00\x00\x00\x04\x00\x00\x00\x02"
                 "\x08\x02\x00\x00\x00\xF0\xCA\xEA\x34\x00\x00\x00\x10\x49\x44\x41\x54\x78\xDA\x63\xF8\xCF\xC0\x00"
                 "\x47\x0C\xC8\x1C\x00\x6F\xAA\x07\xF9\x68\xDD\xAF\xA7\x00\x00\x00\x00\x49\x45\x4E\x44\xAE\x42\x60"
                 "\x82"s;

const auto svg = "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20'><rect width='40' height='20'/></svg>"s;

/// The pictures that bookmarks' status items download.
class PinnedPictureTest : public PinnedTest {
protected:
    PinnedPictureTest()
    {
        bookmark.sfSymbolName = std::nullopt;
        server.serve("/icon.png", { .body = png, .contentType = "image/png" });
        server.serve("/icon.svg", { .body = svg, .contentType = "image/svg+xml" });
    }

    /// Waits for a picture other than that one.
    [[nodiscard]] bool hasPicture(const std::shared_ptr<appkit::Image>& former = nullptr) const
    {
        const auto button = buttonOf(bookmark);
        return waitUntil([&] { return button->image() && button->image() != former; });
    }

    void expectPicture(double size, bool isTemplate) const
    {
        const auto button = buttonOf(bookmark);
        ASSERT_TRUE(hasPicture());
        EXPECT_EQ(button->image()->size(), (foundation::Size { size, size }));
        EXPECT_EQ(button->image()->isTemplate(), isTemplate);
        EXPECT_EQ(button->title(), "");
        EXPECT_EQ(button->imagePosition(), ImagePosition::ImageOnly);
    }

    Bookmark bookmark = bookmarkNamed("title");
};

TEST_F(PinnedPictureTest, AnIconKeepsItsColours)
{
    bookmark.iconURL = server.url("/icon.png");
    added(bookmark);

    expectPicture(16, false);
    EXPECT_EQ(server.requestCount("/s2/favicons"), 0U);
}

TEST_F(PinnedPictureTest, ADrawingIsATemplateInAnyCapitals)
{
    for (const auto* path : { "/icon.svg", "/icon.SVG", "/icon.sVg", "/page?icon=a.svg" }) {
        server.serve(
            std::string(path).substr(0, std::string(path).find('?')), { .body = svg, .contentType = "image/svg+xml" });
        bookmark.iconURL = server.url(path);
        added(bookmark);
        expectPicture(16, true);
        remove(bookmark);
    }
}

TEST_F(PinnedPictureTest, TheAddressAloneSaysWhatIsATemplate)
{
    server.serve("/png.svg", { .body = png, .contentType = "image/png" });
    bookmark.iconURL = server.url("/png.svg");
    added(bookmark);
    expectPicture(16, true);
    remove(bookmark);
    for (const auto* path : { "/icon.svg?size=16", "/icon.svg#part" }) {
        bookmark.iconURL = server.url(path);
        added(bookmark);
        expectPicture(16, false);
        remove(bookmark);
    }
}

TEST_F(PinnedPictureTest, PicturesHaveTheBookmarksSize)
{
    bookmark.menubarIconSize = 22;
    bookmark.iconURL = server.url("/icon.png");
    added(bookmark);
    expectPicture(22, false);
    remove(bookmark);
    bookmark.iconURL = std::nullopt;
    server.serve("/s2/favicons", { .body = png, .contentType = "image/png" });

    added(bookmark);

    expectPicture(22, false);
}

TEST_F(PinnedPictureTest, ASitesIconIsNoTemplateEvenAsADrawing)
{
    server.serve("/s2/favicons", { .body = svg, .contentType = "image/svg+xml" });
    bookmark.url = "https://site.svg";
    added(bookmark);

    expectPicture(16, false);
}

TEST_F(PinnedPictureTest, APictureInTheBodyOfAnErrorIsShown)
{
    server.serve("/lost.png", { .status = 404, .body = png, .contentType = "image/png" });
    bookmark.iconURL = server.url("/lost.png");
    added(bookmark);
    expectPicture(16, false);
    remove(bookmark);
    bookmark.iconURL = std::nullopt;
    server.serve("/s2/favicons", { .status = 404, .body = png, .contentType = "image/png" });

    added(bookmark);

    expectPicture(16, false);
}

TEST_F(PinnedPictureTest, APictureIsFoundThroughARedirect)
{
    server.serveRedirect("/moved", server.url("/icon.png"));
    bookmark.iconURL = server.url("/moved");
    added(bookmark);

    expectPicture(16, false);
    EXPECT_THAT(server.requests().back().header("User-Agent"), testing::HasSubstr("Version/17.5 Safari"));
}

TEST_F(PinnedPictureTest, AnAddressMayHoldThePicture)
{
    bookmark.iconURL
        = "data:image/png;base64,"
          "iVBORw0KGgoAAAANSUhEUgAAAAQAAAACCAIAAADwyuo0AAAAEElEQVR42mP4z8AARwzIHABvqgf5aN2vpwAAAABJRU5ErkJggg==";
    added(bookmark);

    expectPicture(16, false);
}

TEST_F(PinnedPictureTest, ARefreshKeepsThePictureUntilTheNextIsThere)
{
    bookmark.iconURL = server.url("/icon.png");
    added(bookmark);
    ASSERT_TRUE(hasPicture());
    const auto former = buttonOf(bookmark)->image();

    announce();

    EXPECT_EQ(buttonOf(bookmark)->image(), former);
    EXPECT_TRUE(hasPicture(former));
    EXPECT_EQ(server.requestCount("/icon.png"), 2U);
}

TEST_F(PinnedPictureTest, WhatIsNoPictureLeavesTheFormerOne)
{
    bookmark.iconURL = server.url("/icon.png");
    added(bookmark);
    ASSERT_TRUE(hasPicture());
    const auto former = buttonOf(bookmark)->image();
    bookmark.iconURL = server.url("/page");
    server.servePage("/page", "<p>no picture");
    change(bookmark);
    ASSERT_TRUE(isAskedFor("/page"));

    auto other = bookmarkNamed("other");
    other.iconURL = server.url("/icon.svg");
    added(other);
    ASSERT_TRUE(waitUntil([&] { return buttonOf(other)->image() != nullptr; }));

    EXPECT_EQ(buttonOf(bookmark)->image(), former);
    EXPECT_EQ(buttonOf(bookmark)->title(), "");
}

TEST_F(PinnedPictureTest, TheDownloadThatEndsLastIsTheOneSeen)
{
    server.serve("/slow.svg", { .body = svg, .contentType = "image/svg+xml", .hold = Hold::InBody });
    bookmark.iconURL = server.url("/slow.svg");
    added(bookmark);
    ASSERT_TRUE(isAskedFor("/slow.svg"));
    bookmark.iconURL = server.url("/icon.png");
    change(bookmark);
    expectPicture(16, false);
    const auto quick = buttonOf(bookmark)->image();

    server.release("/slow.svg");

    ASSERT_TRUE(hasPicture(quick));
    expectPicture(16, true);
}

TEST_F(PinnedPictureTest, ALatePictureTakesTheTextsPlace)
{
    server.serve("/slow.png", { .body = png, .contentType = "image/png", .hold = Hold::BeforeHead });
    bookmark.iconURL = server.url("/slow.png");
    added(bookmark);
    ASSERT_TRUE(isAskedFor("/slow.png"));
    bookmark.iconURL = std::nullopt;
    bookmark.sfSymbolName = "YT";
    change(bookmark);
    EXPECT_EQ(buttonOf(bookmark)->title(), "YT");

    server.release("/slow.png");

    expectPicture(16, false);
}

TEST_F(PinnedPictureTest, ALatePictureLeavesARemovedItemAlone)
{
    server.serve("/slow.png", { .body = png, .contentType = "image/png", .hold = Hold::BeforeHead });
    bookmark.iconURL = server.url("/slow.png");
    added(bookmark);
    const auto button = buttonOf(bookmark);
    ASSERT_TRUE(isAskedFor("/slow.png"));
    remove(bookmark);

    server.release("/slow.png");
    bookmark.iconURL = server.url("/icon.png");
    added(bookmark);
    ASSERT_TRUE(hasPicture());

    EXPECT_EQ(button->image(), nullptr);
}

TEST_F(PinnedPictureTest, TextTakesThePicturesPlace)
{
    bookmark.iconURL = server.url("/icon.png");
    added(bookmark);
    ASSERT_TRUE(hasPicture());
    bookmark.iconURL = std::nullopt;
    bookmark.sfSymbolName = "YT";

    change(bookmark);

    EXPECT_EQ(buttonOf(bookmark)->image(), nullptr);
    EXPECT_EQ(buttonOf(bookmark)->title(), "YT");
    EXPECT_EQ(buttonOf(bookmark)->imagePosition(), ImagePosition::NoImage);
}

} // namespace
