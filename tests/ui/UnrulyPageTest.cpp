#include "ui/SurfacesTest.h"

#include <ostream>

namespace {

using perchly::Bookmark;
using perchly::test::waitUntil;

/// What a page tries with the window that it is shown in.
struct Trick {
    const char* name;
    const char* script;
};

std::ostream& operator<<(std::ostream& stream, const Trick& trick)
{
    return stream << trick.name;
}

class UnrulyPageTest : public SurfacesTest, public testing::WithParamInterface<Trick> {
protected:
    /// Opens a window with a page of that body.
    void openPage(const std::string& body)
    {
        // There is no other window for it, so it comes into this one.
        server.servePage("/opened", "<script>close(); setTimeout(() => fetch('/tried'), 50)</script>");
        server.servePage("/unruly", "<title>Unruly</title><body>" + body + "</body>");
        unruly = stored({ .title = "Unruly", .url = server.url("/unruly"), .isAlwaysOnTop = false });
        openWindow(unruly, "/unruly");
        ASSERT_TRUE(isLaidOut(browserOf(unruly), { 600, 700 }));
        window = windowOf(unruly);
        frame = window->frame();
    }

    /// A script that asks for "/tried" when it has tried its trick, and for what that began.
    [[nodiscard]] static std::string attempt()
    {
        return std::string("try { ") + GetParam().script
            + " } catch { } setTimeout(() => fetch('/tried', { keepalive: true }), 50);";
    }

    void expectThatNothingHappened()
    {
        ASSERT_TRUE(waitUntil([&] { return server.requestCount("/tried") > 0; }));
        EXPECT_EQ(windowOf(unruly), window);
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(window->frame(), frame);
        EXPECT_EQ(window->title(), "Unruly");
        const auto browser = browserOf(unruly);
        EXPECT_EQ(browser->view()->window(), window);
        EXPECT_EQ(valueIn(browser, "String(document.pointerLockElement || document.webkitFullscreenElement || null)"),
            "null");
        browser->loadURLString(server.url("/second"), perchly::CurrentBookmark::Clear);
        EXPECT_TRUE(showsPage(browser, "/second"));
        EXPECT_EQ(valueIn(browser, "document.body.textContent"), "second");
        EXPECT_TRUE(isLaidOut(browser, { 600, 700 }));
        EXPECT_EQ(window->frame(), frame);
    }

    Bookmark unruly;
    std::shared_ptr<appkit::Window> window;
    foundation::Rect frame;
};

TEST_P(UnrulyPageTest, ByItselfGetsNowhere)
{
    openPage("<script>onload = () => setTimeout(() => { " + attempt() + " }, 200)</script>");

    expectThatNothingHappened();
}

TEST_P(UnrulyPageTest, AtTheUsersTouchGetsNowhere)
{
    openPage("");

    // A script of ours counts as the user's own touch.
    (void)valueIn(browserOf(unruly), attempt() + " 'tried'");

    expectThatNothingHappened();
}

constexpr Trick tricks[] = {
    { "ResizeTo", "resizeTo(200, 200)" },
    { "ResizeBy", "resizeBy(-200, -300)" },
    { "MoveTo", "moveTo(0, 0)" },
    { "MoveBy", "moveBy(300, -50)" },
    { "Close", "close()" },
    { "Fullscreen", "document.documentElement.requestFullscreen()" },
    { "PrefixedFullscreen", "document.documentElement.webkitRequestFullscreen()" },
    { "PointerLock", "document.documentElement.requestPointerLock()" },
    { "Open", "const opened = open('/opened', 'other', 'width=90,height=90,left=0'); opened.close()" },
    { "Title", "document.title = 'Another'" },
    { "Blur", "blur(); focus()" },
};

const auto nameOf = [](const testing::TestParamInfo<Trick>& info) { return std::string(info.param.name); };

INSTANTIATE_TEST_SUITE_P(Tricks, UnrulyPageTest, testing::ValuesIn(tricks), nameOf);

} // namespace
