#include "platform/appkit/ImageView.h"

#include "platform/appkit/Application.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/StackView.h"
#include "ui/ContentWindow.h"

namespace {

using appkit::ImageView;

class ImageViewTest : public ContentWindowTest { };

TEST_F(ImageViewTest, ShowsTheApplicationsIconAtTheSizeThatItIsGiven)
{
    const auto icon = appkit::Application::sharedApplication().applicationIconImage();
    ASSERT_NE(icon, nullptr);
    const auto stack = std::make_shared<appkit::StackView>(appkit::LayoutOrientation::Vertical);
    const auto view = std::make_shared<ImageView>(icon);
    stack->addArrangedSubview(view);
    appkit::activateConstraints({
        view->widthAnchor().equalToConstant(80),
        view->heightAnchor().equalToConstant(80),
    });

    showAtTop(stack);

    EXPECT_EQ(view->image(), icon);
    EXPECT_FALSE(icon->isTemplate());
    EXPECT_EQ(view->frame().size, (foundation::Size { 80, 80 }));
}

/// A window that is centred stands in the middle of the screen's width, with more room below than above.
class CenterTest : public ContentWindowTest { };

TEST_F(CenterTest, PutsAWindowInTheMiddleBeforeItIsShown)
{
    window->center();
    showWindow(content());
    const auto shown = window->frame();

    window->center();

    // The title bar, which is known only when the window is shown, makes the difference.
    EXPECT_TRUE(perchly::test::waitUntil([&] { return std::abs(window->frame().origin.x - shown.origin.x) <= 1; }));
    EXPECT_LT(std::abs(window->frame().origin.y - shown.origin.y), 40);
}

TEST_F(CenterTest, TakesAWindowToBeAsLargeAsItsContentWillMakeIt)
{
    const auto wide = appkit::Button::withTitle("Wide", {});
    content().addSubview(wide);
    appkit::activateConstraints({
        wide->widthAnchor().equalToConstant(contentSize.width + 100),
        wide->leadingAnchor().equalTo(content().leadingAnchor()),
        wide->trailingAnchor().equalTo(content().trailingAnchor()),
        wide->topAnchor().equalTo(content().topAnchor()),
    });
    window->center();
    window->makeKeyAndOrderFront();
    ASSERT_TRUE(perchly::test::waitUntil(
        [&] { return window->isKeyWindow() && content().frame().size.width == contentSize.width + 100; }));

    const auto asWide = appkit::Window::create(
        { {}, { contentSize.width + 100, contentSize.height } }, appkit::WindowStyleMask::Titled);
    asWide->center();
    asWide->makeKeyAndOrderFront();
    ASSERT_TRUE(perchly::test::waitUntil([&] { return asWide->isKeyWindow(); }));
    EXPECT_LE(std::abs(window->frame().origin.x - asWide->frame().origin.x), 1);
    asWide->close();
}

TEST_F(CenterTest, PutsAWindowOnTheScreenInTheMiddle)
{
    showWindow(content());
    const auto before = window->frame().origin;
    ASSERT_NE(before.x, 0);

    window->center();

    EXPECT_TRUE(perchly::test::waitUntil([&] { return window->frame().origin != before; }));
}

} // namespace
