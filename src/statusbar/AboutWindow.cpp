#include "statusbar/AboutWindow.h"

#include "Product.h"
#include "platform/appkit/Application.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/ImageView.h"
#include "platform/appkit/LayoutConstraint.h"
#include "platform/appkit/StackView.h"
#include "platform/appkit/TextField.h"
#include "platform/appkit/ViewController.h"
#include "platform/appkit/Window.h"
#include "platform/foundation/DispatchQueue.h"

#include <map>

namespace perchly {
namespace {

using appkit::Button;
using appkit::Color;
using appkit::Font;
using appkit::FontWeight;
using appkit::TextField;
using appkit::Window;

constexpr foundation::Rect contentRect { {}, { 300, 350 } };

std::string text(std::initializer_list<std::string_view> parts)
{
    std::string whole;
    for (const auto part : parts)
        whole += part;
    return whole;
}

std::shared_ptr<TextField> makeLabel(const std::string& string, const Font& font, Color color = Color::Label)
{
    auto label = TextField::label(string);
    label->setFont(font);
    label->setTextColor(color);
    label->setAlignment(appkit::TextAlignment::Center);
    return label;
}

std::shared_ptr<Button> makeWebsiteButton(appkit::Action visitWebsite)
{
    auto button = Button::withTitle("Visit Website", std::move(visitWebsite));
    button->setBezelStyle(appkit::BezelStyle::Recessed);
    button->setBordered(false);
    button->setContentTintColor(Color::Link);
    button->setFont(Font::systemFont(12, FontWeight::Medium));
    return button;
}

std::shared_ptr<Button> makeCloseButton(const std::shared_ptr<Window>& window)
{
    auto button = Button::withTitle("OK", { "close", std::weak_ptr(window), &Window::close });
    button->setBezelStyle(appkit::BezelStyle::Rounded);
    return button;
}

std::shared_ptr<appkit::StackView> makeStack(appkit::Action visitWebsite, const std::shared_ptr<Button>& close)
{
    auto stack = std::make_shared<appkit::StackView>(appkit::LayoutOrientation::Vertical);
    stack->setSpacing(10);
    stack->setAlignment(appkit::StackAlignment::CenterX);
    const auto icon
        = std::make_shared<appkit::ImageView>(appkit::Application::sharedApplication().applicationIconImage());
    stack->addArrangedSubview(icon);
    stack->addArrangedSubview(makeLabel(std::string(product::name), Font::systemFont(18, FontWeight::Bold)));
    stack->addArrangedSubview(makeLabel(text({ "Version ", product::version, " (Build ", product::build, ")" }),
        Font::systemFont(12), Color::SecondaryLabel));
    stack->addArrangedSubview(makeLabel(text({ "Made by ", product::maker }), Font::systemFont(12)));
    stack->addArrangedSubview(makeWebsiteButton(std::move(visitWebsite)));
    auto rights = makeLabel(
        text({ "© 2025 ", product::maker, "\nAll rights reserved." }), Font::systemFont(11), Color::SecondaryLabel);
    stack->addArrangedSubview(rights);
    stack->setCustomSpacing(25, *rights);
    stack->addArrangedSubview(close);
    appkit::activateConstraints({
        icon->widthAnchor().equalToConstant(80),
        icon->heightAnchor().equalToConstant(80),
        close->widthAnchor().equalToConstant(100),
    });
    return stack;
}

/// Builds its view from what the window's is to be.
class AboutViewController : public appkit::ViewController {
public:
    AboutViewController(const std::shared_ptr<Window>& window, appkit::Action visitWebsite)
        : visitWebsite_(std::move(visitWebsite))
        , closeButton_(makeCloseButton(window))
    {
    }

    [[nodiscard]] const std::shared_ptr<Button>& closeButton() const { return closeButton_; }

protected:
    void loadView() override
    {
        auto root = std::make_shared<appkit::View>(foundation::Rect { {}, contentRect.size });
        const auto stack = makeStack(visitWebsite_, closeButton_);
        constexpr auto margin = 20.0;
        stack->setTranslatesAutoresizingMaskIntoConstraints(false);
        root->addSubview(stack);
        appkit::activateConstraints({
            stack->centerXAnchor().equalTo(root->centerXAnchor()),
            stack->centerYAnchor().equalTo(root->centerYAnchor()),
            stack->leadingAnchor().equalTo(root->leadingAnchor(), margin),
            stack->trailingAnchor().equalTo(root->trailingAnchor(), -margin),
        });
        setView(std::move(root));
    }

private:
    appkit::Action visitWebsite_;
    std::shared_ptr<Button> closeButton_;
};

struct OpenWindow {
    std::shared_ptr<Window> window;
    foundation::ObservationToken willClose;
};

/// A window goes with its last owner, and these have no other.
std::map<const Window*, OpenWindow>& openWindows()
{
    static auto& windows = *new std::map<const Window*, OpenWindow>;
    return windows;
}

void keepUntilClosed(const std::shared_ptr<Window>& window)
{
    auto willClose = window->observeWillClose([key = window.get()] {
        // Later, because the window is still at work.
        foundation::dispatchMainAsync([key] { openWindows().erase(key); });
    });
    openWindows().emplace(window.get(), OpenWindow { window, std::move(willClose) });
}

} // namespace

std::weak_ptr<Window> showAboutWindow(appkit::Action visitWebsite)
{
    appkit::Application::sharedApplication().activateIgnoringOtherApps();
    const auto window
        = Window::create(contentRect, appkit::WindowStyleMask::Titled | appkit::WindowStyleMask::Closable);
    window->setTitle("About");
    window->setLevel(appkit::WindowLevel::Floating);
    const auto content = std::make_shared<AboutViewController>(window, std::move(visitWebsite));
    window->setContentViewController(content);
    window->setInitialFirstResponder(*content->closeButton());
    window->center();
    keepUntilClosed(window);
    window->makeKeyAndOrderFront();
    return window;
}

} // namespace perchly
