#pragma once

#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "bookmarks/Preferences.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Window.h"
#include "platform/foundation/UserDefaults.h"
#include "settings/SettingsViewController.h"
#include "ui/AnsweredAlert.h"
#include "ui/WebViewTest.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// The settings in a window, of a user who has changed nothing, and a page that keeps something.
class SettingsTest : public WebViewTest {
protected:
    static constexpr std::size_t confirm = 0;
    static constexpr std::size_t cancel = 1;

    SettingsTest()
    {
        EXPECT_THAT(store().bookmarks(), testing::SizeIs(5));
        show();
    }

    [[nodiscard]] static perchly::BookmarkManager& store() { return perchly::BookmarkManager::shared(); }
    [[nodiscard]] static std::optional<std::string> homePage()
    {
        return foundation::UserDefaults::standard().stringForKey(perchly::preferences::homePageURL);
    }
    static void setHomePage(std::string_view address)
    {
        foundation::UserDefaults::standard().setString(address, perchly::preferences::homePageURL);
    }

    /// The settings as they are built now.
    void show()
    {
        settings = std::make_shared<perchly::SettingsViewController>();
        window->setContentViewController(settings);
        window->makeKeyAndOrderFront();
        EXPECT_TRUE(perchly::test::waitUntil(
            [&] { return window->isKeyWindow() && settings->homePageTextField()->frame().size.width > 0; }));
    }

    [[nodiscard]] appkit::TextField& field() const { return *settings->homePageTextField(); }

    /// There must be one of that title.
    [[nodiscard]] std::shared_ptr<appkit::Button> button(std::string_view title) const
    {
        for (const auto& each : viewsIn<appkit::Button>(*settings->view())) {
            if (each->title() == title)
                return each;
        }
        throw std::runtime_error("No button " + std::string(title));
    }

    [[nodiscard]] std::vector<std::string> texts() const
    {
        std::vector<std::string> texts;
        for (const auto& label : viewsIn<appkit::TextField>(*settings->view())) {
            if (label != settings->homePageTextField())
                texts.push_back(label->stringValue());
        }
        return texts;
    }

    /// Clicks the button and answers the alert that it opens.
    void clickAndAnswer(
        std::string_view title, std::size_t answer,
        const std::function<void(appkit::Alert&)>& look = [](appkit::Alert&) {})
    {
        openAndAnswer([&] { button(title)->performClick(); }, answer, look);
    }

    void save(std::string_view text)
    {
        field().setStringValue(text);
        clickAndAnswer("Save URL", confirm);
    }

    /// The views of that type below, each before those inside of it.
    template <class Type>
    [[nodiscard]] static std::vector<std::shared_ptr<Type>> viewsIn(const appkit::View& view)
    {
        std::vector<std::shared_ptr<Type>> found;
        collect(view, found);
        return found;
    }

    template <class Type>
    static void collect(const appkit::View& view, std::vector<std::shared_ptr<Type>>& found)
    {
        for (const auto& subview : view.subviews()) {
            if (auto typed = std::dynamic_pointer_cast<Type>(subview))
                found.push_back(std::move(typed));
            collect(*subview, found);
        }
    }

    std::function<void()> whenSettingsChange = [] {};
    std::function<void()> whenBookmarksChange = [] {};
    std::vector<std::string> announced;
    foundation::ObservationToken settingsObservation = foundation::NotificationCenter::defaultCenter().addObserver(
        perchly::notifications::settingsDidChange, [this] {
            announced.emplace_back("settings");
            whenSettingsChange();
        });
    foundation::ObservationToken bookmarksObservation = foundation::NotificationCenter::defaultCenter().addObserver(
        perchly::notifications::bookmarksDidChange, [this] {
            announced.emplace_back("bookmarks");
            whenBookmarksChange();
        });
    std::shared_ptr<perchly::SettingsViewController> settings;
    std::shared_ptr<appkit::Window> window = appkit::Window::create(
        { {}, { 450, 420 } }, appkit::WindowStyleMask::Titled | appkit::WindowStyleMask::Closable);
};
