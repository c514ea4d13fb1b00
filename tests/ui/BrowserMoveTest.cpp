#include "ui/SurfacesTest.h"

namespace {

using perchly::Bookmark;
using perchly::test::waitUntil;

/// A page that would not come back as it was if it were loaded anew, on its way between the popover and a window.
class BrowserMoveTest : public SurfacesTest {
protected:
    BrowserMoveTest()
    {
        server.servePage("/living",
            "<title>Living</title><style>body { height: 5000px }</style><input id=name>"
            "<script>"
            "const born = Math.random();"
            "let ticks = 0; setInterval(() => { ++ticks }, 10);"
            "let frames = 0; const draw = () => { ++frames; requestAnimationFrame(draw) }; draw();"
            "</script>");
        living = stored({ .title = "Living", .url = server.url("/living") });
        openPopover(living, "/living");
        browser = browserOf(living);
        (void)valueIn(browser, "document.getElementById('name').value = 'typed'; scrollTo(0, 1234); 'done'");
        state = valueIn(browser, stateScript);
    }

    /// The page runs on as it was, at the same place, and is drawn.
    void expectThatItLives()
    {
        EXPECT_EQ(valueIn(browser, stateScript), state);
        EXPECT_TRUE(comesTo(browser, "document.visibilityState", "visible"));
        EXPECT_TRUE(grows("ticks"));
        EXPECT_TRUE(grows("frames"));
        EXPECT_EQ(server.requestCount("/living"), 1U);
    }

    [[nodiscard]] bool grows(const std::string& counter) const
    {
        const auto before = valueIn(browser, "String(" + counter + ")");
        return before && comesTo(browser, "String(" + counter + " > " + *before + ")", "true");
    }

    /// Waits until that window has the browser, laid out.
    [[nodiscard]] bool isIn(const std::shared_ptr<appkit::Window>& window) const
    {
        return waitUntil([&] { return browser->view()->window() == window; }) && isLaidOut(browser, { 600, 700 });
    }

    [[nodiscard]] bool isInPopover() const
    {
        return waitUntil([&] {
            const auto window = browser->view()->window();
            return window && window->className().find("Popover") != std::string::npos;
        }) && isLaidOut(browser, { 600, 700 });
    }

    static constexpr auto stateScript = "[born, document.getElementById('name').value, scrollY].join()";

    Bookmark living;
    Browser browser;
    std::optional<std::string> state;
};

TEST_F(BrowserMoveTest, ThePageIsTheSameFromPopoverToWindowAndBack)
{
    ASSERT_TRUE(state && state->ends_with("typed,1234"));

    controller->openDetachedWindow(living);
    ASSERT_TRUE(isIn(windowOf(living)));
    expectThatItLives();

    controller->showBookmarkInPopover(living);
    ASSERT_TRUE(isInPopover());
    expectThatItLives();

    popover().performClose();
    ASSERT_TRUE(isIn(windowOf(living)));
    expectThatItLives();
}

TEST_F(BrowserMoveTest, ThePageIsTheSameAfterItsWindowWasClosed)
{
    controller->openDetachedWindow(living);
    ASSERT_TRUE(isIn(windowOf(living)));

    windowOf(living)->close();
    click(living);
    ASSERT_TRUE(isInPopover());
    expectThatItLives();

    controller->openDetachedWindow(living);
    ASSERT_TRUE(isIn(windowOf(living)));
    expectThatItLives();
}

TEST_F(BrowserMoveTest, ThePageIsTheSameAfterThePopoverWasClosed)
{
    popover().performClose();
    ASSERT_TRUE(comesTo(browser, "document.visibilityState", "hidden"));

    click(living);

    ASSERT_TRUE(isInPopover());
    expectThatItLives();
}

TEST_F(BrowserMoveTest, MovesInOneTurnEndWhereTheLastOneLeads)
{
    controller->openDetachedWindow(living);
    controller->showBookmarkInPopover(living);
    popover().performClose();
    controller->showBookmarkInPopover(living);

    ASSERT_TRUE(isInPopover());
    expectThatItLives();

    popover().performClose();
    controller->showBookmarkInPopover(living);
    popover().performClose();

    ASSERT_TRUE(isIn(windowOf(living)));
    expectThatItLives();
}

TEST_F(BrowserMoveTest, AnotherBrowserInThePopoverGivesTheWindowItsOwnBack)
{
    controller->openDetachedWindow(living);
    controller->showBookmarkInPopover(living);
    ASSERT_TRUE(isInPopover());
    expectThatItLives();

    controller->showBookmarkInPopover(first);

    ASSERT_TRUE(isIn(windowOf(living)));
    expectThatItLives();
    EXPECT_EQ(browserInPopover(), browserOf(first));
}

TEST_F(BrowserMoveTest, AClickOnItsItemBringsTheBrowserBackIntoItsWindow)
{
    controller->openDetachedWindow(living);
    ASSERT_TRUE(isKey(*windowOf(living)));
    controller->showBookmarkInPopover(living);
    ASSERT_TRUE(isInPopover());
    ASSERT_TRUE(isKey(*browser->view()->window()));

    click(living);

    ASSERT_TRUE(waitUntil([&] { return !popover().isShown(); }));
    ASSERT_TRUE(isIn(windowOf(living)));
    EXPECT_TRUE(isKey(*windowOf(living)));
    expectThatItLives();
}

TEST_F(BrowserMoveTest, TheAddressFieldKeepsWhatIsBeingTyped)
{
    browser->toolbar().urlTextField->setStringValue("half an addr");

    controller->openDetachedWindow(living);
    ASSERT_TRUE(isIn(windowOf(living)));
    EXPECT_EQ(browser->toolbar().urlTextField->stringValue(), "half an addr");
    windowOf(living)->close();
    click(living);
    ASSERT_TRUE(isInPopover());

    EXPECT_EQ(browser->toolbar().urlTextField->stringValue(), "half an addr");
}

} // namespace
