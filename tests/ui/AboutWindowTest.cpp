#include "statusbar/AboutWindow.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/ImageView.h"
#include "platform/appkit/StackView.h"
#include "platform/appkit/TextField.h"
#include "platform/appkit/ViewController.h"
#include "platform/appkit/Window.h"
#include "support/MainLoop.h"
#include "support/UserFolders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using appkit::Button;
using appkit::TextField;
using appkit::View;
using appkit::Window;
using testing::SizeIs;

struct Visitor {
    void visit() { ++visits; }
    int visits = 0;
};

class AboutWindowTest : public testing::Test {
public:
    ~AboutWindowTest() override { close(window); }

protected:
    AboutWindowTest()
    {
        EXPECT_TRUE(perchly::test::waitUntil([&] { return viewsIn(*window.lock()).back()->frame().size.width > 0; }));
    }

    [[nodiscard]] std::weak_ptr<Window> show() const
    {
        return perchly::showAboutWindow({ "visit", std::weak_ptr(visitor), &Visitor::visit });
    }

    [[nodiscard]] static const View& stackIn(const Window& shown)
    {
        return *shown.contentViewController()->view()->subviews().front();
    }

    [[nodiscard]] static const std::vector<std::shared_ptr<View>>& viewsIn(const Window& shown)
    {
        return stackIn(shown).subviews();
    }

    [[nodiscard]] std::string textAt(std::size_t index) const
    {
        const auto label = std::dynamic_pointer_cast<TextField>(viewsIn(*window.lock()).at(index));
        return label ? label->stringValue() : "no label";
    }

    /// There must be one.
    [[nodiscard]] static Button& buttonAt(const Window& shown, std::size_t index)
    {
        return *std::dynamic_pointer_cast<Button>(viewsIn(shown).at(index));
    }

    static void close(const std::weak_ptr<Window>& shown)
    {
        if (const auto held = shown.lock())
            held->close();
    }

    [[nodiscard]] static bool isGone(const std::weak_ptr<Window>& shown)
    {
        return perchly::test::waitUntil([&] { return shown.expired(); });
    }

    static constexpr std::size_t website = 4;
    static constexpr std::size_t ok = 6;

    perchly::test::UserFolders folders;
    std::shared_ptr<Visitor> visitor = std::make_shared<Visitor>();
    std::weak_ptr<Window> window = show();
};

TEST_F(AboutWindowTest, IsAFloatingWindowInTheMiddleWithTheKeyboard)
{
    const auto shown = window.lock();

    EXPECT_EQ(shown->title(), "About");
    EXPECT_EQ(shown->level(), appkit::WindowLevel::Floating);
    EXPECT_EQ(shown->contentViewController()->view()->frame().size, (foundation::Size { 300, 350 }));
    EXPECT_TRUE(shown->isVisible());
    EXPECT_TRUE(perchly::test::waitUntil([&] { return shown->isKeyWindow(); }));
}

TEST_F(AboutWindowTest, SaysWhatPerchlyIs)
{
    const auto shown = window.lock();
    ASSERT_THAT(viewsIn(*shown), SizeIs(7));

    const auto icon = std::dynamic_pointer_cast<appkit::ImageView>(viewsIn(*shown)[0]);
    ASSERT_NE(icon, nullptr);
    EXPECT_NE(icon->image(), nullptr);
    EXPECT_EQ(icon->frame().size, (foundation::Size { 80, 80 }));
    EXPECT_EQ(textAt(1), "Perchly");
    EXPECT_EQ(textAt(2), "Version 1.4.4 (Build 10)");
    EXPECT_THAT(textAt(3), testing::HasSubstr("Perchly"));
    EXPECT_EQ(buttonAt(*shown, website).title(), "Visit Website");
    EXPECT_THAT(textAt(5), testing::MatchesRegex("[^\n]*2025[^\n]*\n[^\n]*[Rr]ights reserved[^\n]*"));
    EXPECT_EQ(buttonAt(*shown, ok).title(), "OK");
}

TEST_F(AboutWindowTest, StandsInTheMiddleOneBelowTheOther)
{
    const auto shown = window.lock();
    const auto& stack = stackIn(*shown);
    const auto& views = viewsIn(*shown);
    const auto root = shown->contentViewController()->view()->frame().size;

    EXPECT_EQ(stack.frame().origin.x, 20);
    EXPECT_EQ(stack.frame().size.width, root.width - 40);
    EXPECT_NEAR(stack.frame().origin.y * 2 + stack.frame().size.height, root.height, 1);
    for (const auto& view : views)
        EXPECT_NEAR(view->frame().origin.x * 2 + view->frame().size.width, stack.frame().size.width, 1);
    for (std::size_t index = 1; index < views.size(); ++index) {
        const auto& below = views[index]->frame();
        const auto spacing = index == ok ? 25 : 10;
        EXPECT_EQ(below.origin.y + below.size.height + spacing, views[index - 1]->frame().origin.y) << index;
    }
    EXPECT_EQ(views[ok]->frame().size.width, 100);
    EXPECT_GE(views.back()->frame().origin.y, 0);
}

TEST_F(AboutWindowTest, VisitsTheWebsite)
{
    buttonAt(*window.lock(), website).performClick();

    EXPECT_EQ(visitor->visits, 1);
    EXPECT_TRUE(window.lock()->isVisible());
}

TEST_F(AboutWindowTest, ItsButtonClosesIt)
{
    EXPECT_EQ(buttonAt(*window.lock(), ok).action().name(), "close");

    buttonAt(*window.lock(), ok).performClick();

    EXPECT_TRUE(isGone(window));
}

TEST_F(AboutWindowTest, ClosedByOtherMeansItGoesToo)
{
    window.lock()->close();

    EXPECT_TRUE(isGone(window));
}

TEST_F(AboutWindowTest, EachIsAWindowOfItsOwnAndClosesAlone)
{
    const auto second = show();
    ASSERT_NE(second.lock(), window.lock());
    EXPECT_TRUE(second.lock()->isVisible());
    EXPECT_TRUE(window.lock()->isVisible());

    buttonAt(*second.lock(), ok).performClick();

    EXPECT_TRUE(isGone(second));
    ASSERT_FALSE(window.expired());
    EXPECT_TRUE(window.lock()->isVisible());
    const auto third = show();
    buttonAt(*window.lock(), ok).performClick();
    EXPECT_TRUE(isGone(window));
    ASSERT_FALSE(third.expired());
    EXPECT_TRUE(third.lock()->isVisible());
    close(third);
    EXPECT_TRUE(isGone(third));
}

TEST_F(AboutWindowTest, AnotherCanBeShownAfterAllWereClosed)
{
    close(window);
    ASSERT_TRUE(isGone(window));

    window = show();

    ASSERT_FALSE(window.expired());
    EXPECT_TRUE(window.lock()->isVisible());
}

} // namespace
