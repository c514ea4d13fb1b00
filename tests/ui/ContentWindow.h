#pragma once

#include "platform/appkit/LayoutConstraint.h"
#include "platform/appkit/View.h"
#include "platform/appkit/ViewController.h"
#include "platform/appkit/Window.h"
#include "support/MainLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

/// A window on the screen with a plain view of 400 by 300 points for its content.
class ContentWindowTest : public testing::Test {
protected:
    static constexpr foundation::Size contentSize { 400, 300 };

    class Content : public appkit::ViewController {
    protected:
        void loadView() override { setView(std::make_shared<appkit::View>(foundation::Rect { {}, contentSize })); }
    };

    ContentWindowTest() { window->setContentViewController(controller); }
    void TearDown() override { window->close(); }

    /// Shows the view at its own size in the content's leading top corner, and waits until it is laid out.
    void showAtTop(const std::shared_ptr<appkit::View>& view)
    {
        content().addSubview(view);
        appkit::activateConstraints({
            view->leadingAnchor().equalTo(content().leadingAnchor()),
            view->topAnchor().equalTo(content().topAnchor()),
        });
        showWindow(*view);
    }

    void showWindow(const appkit::View& laidOut) const
    {
        window->makeKeyAndOrderFront();
        EXPECT_TRUE(perchly::test::waitUntil([&] {
            return window->isKeyWindow() && content().frame().size == contentSize && laidOut.frame().size.height > 0;
        }));
    }

    [[nodiscard]] appkit::View& content() const { return *controller->view(); }

    std::shared_ptr<Content> controller = std::make_shared<Content>();
    std::shared_ptr<appkit::Window> window = appkit::Window::create(
        { { 200, 200 }, contentSize }, appkit::WindowStyleMask::Titled | appkit::WindowStyleMask::Closable);
};
