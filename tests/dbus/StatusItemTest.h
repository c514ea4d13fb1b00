#pragma once

#include "FakeWatcher.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/Menu.h"
#include "platform/appkit/StatusBar.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/appkit/StatusItem.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>

class Clicks : public std::enable_shared_from_this<Clicks> {
public:
    void count() { ++count_; }
    [[nodiscard]] appkit::Action action() { return appkit::Action("click", weak_from_this(), &Clicks::count); }
    [[nodiscard]] int number() const { return count_; }

private:
    int count_ = 0;
};

class StatusItemTest : public testing::Test {
protected:
    void SetUp() override
    {
        g_unsetenv("DISPLAY");
        g_unsetenv("XDG_CURRENT_DESKTOP");
    }

    /// Made and furnished in one turn of the main loop, as the application does.
    std::shared_ptr<appkit::StatusItem> makeItem(bool withMenu)
    {
        auto item = appkit::StatusBar::systemStatusBar().statusItem();
        item->button()->setImage(appkit::Image::systemSymbol("star"));
        item->button()->setAction(clicks_->action());
        if (withMenu)
            item->setMenu(menu("Quit"));
        return item;
    }

    std::shared_ptr<appkit::Menu> menu(const char* title)
    {
        auto menu = std::make_shared<appkit::Menu>();
        menu->addItem(title, clicks_->action());
        return menu;
    }

    /// Splits what a watcher keeps into the call's target.
    static testbus::Call target(const std::string& item, std::string interface)
    {
        const auto slash = item.find('/');
        return { item.substr(0, slash), item.substr(slash), std::move(interface) };
    }

    std::string print(const testbus::Call& target, const char* method, GVariant* parameters) const
    {
        const auto reply = testbus::call(host_, target, method, parameters);
        return reply ? desktop::GLibPointer<>(g_variant_print(reply.get(), TRUE)).get() : "error";
    }

    std::string property(const std::string& item, const char* name) const
    {
        return print(
            target(item, "org.freedesktop.DBus.Properties"), "Get", g_variant_new("(ss)", itemInterface, name));
    }

    /// As Xfce's panel does.
    void readAll(const std::string& item) const
    {
        EXPECT_NE(print(target(item, "org.freedesktop.DBus.Properties"), "GetAll", g_variant_new("(s)", itemInterface)),
            "error");
    }

    bool appears(const FakeWatcher& watcher, std::size_t number = 1) const
    {
        return testbus::waitUntil([&] { return watcher.items().size() == number; });
    }

    std::shared_ptr<Clicks> clicks_ = std::make_shared<Clicks>();
    testbus::Connection host_ = testbus::connect();
};
