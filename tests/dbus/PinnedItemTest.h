#pragma once

#include "FakeHosts.h"
#include "FakeWatcher.h"
#include "ui/PinnedTest.h"

#include <map>
#include <string>
#include <string_view>

/// The status items of bookmarks as a status area sees them.
class PinnedItemTest : public PinnedTest {
protected:
    void SetUp() override
    {
        g_unsetenv("DISPLAY");
        g_unsetenv("XDG_CURRENT_DESKTOP");
    }

    /// Stored, and in the status area.
    perchly::Bookmark shown(perchly::Bookmark bookmark)
    {
        const auto before = watcher_.items().size();
        added(bookmark);
        EXPECT_TRUE(testbus::waitUntil([&] { return watcher_.items().size() == before + 1; }));
        names_[bookmark.id] = watcher_.items().back();
        return bookmark;
    }

    /// "name/path", as the watcher keeps it.
    [[nodiscard]] const std::string& nameOf(const perchly::Bookmark& bookmark) const { return names_.at(bookmark.id); }
    [[nodiscard]] std::string connectionOf(const perchly::Bookmark& bookmark) const
    {
        return nameOf(bookmark).substr(0, nameOf(bookmark).find('/'));
    }

    [[nodiscard]] std::string answer(
        const perchly::Bookmark& bookmark, const char* interface, const char* method, GVariant* parameters) const
    {
        const auto path = interface == std::string_view("com.canonical.dbusmenu") ? "/MenuBar" : "/StatusNotifierItem";
        const auto reply = testbus::call(host_, { connectionOf(bookmark), path, interface }, method, parameters);
        return reply ? desktop::GLibPointer<>(g_variant_print(reply.get(), TRUE)).get() : "error";
    }

    [[nodiscard]] std::string property(const perchly::Bookmark& bookmark, const char* name) const
    {
        return answer(bookmark, "org.freedesktop.DBus.Properties", "Get", g_variant_new("(ss)", itemInterface, name));
    }

    [[nodiscard]] std::string rowProperty(const perchly::Bookmark& bookmark, std::int32_t id, const char* name) const
    {
        return answer(bookmark, "com.canonical.dbusmenu", "GetProperty", g_variant_new("(is)", id, name));
    }

    void click(const perchly::Bookmark& bookmark, const char* method) const
    {
        EXPECT_EQ(answer(bookmark, itemInterface, method, g_variant_new("(ii)", 30, 12)), "()");
        testbus::settle(host_);
    }

    static void choose(const FakeHost& host, const std::string& label)
    {
        EXPECT_TRUE(
            host.call("Event", g_variant_new("(isvu)", host.idOf(label), "clicked", g_variant_new_int32(0), 0U)));
        host.settle();
    }

    /// Opens its menu as each kind of host does.
    template <class Test>
    void withEachHost(const perchly::Bookmark& bookmark, Test test) const
    {
        GtkHost gtk(connectionOf(bookmark), "/MenuBar");
        test(gtk);
        PlasmaHost plasma(connectionOf(bookmark), "/MenuBar");
        test(plasma);
        GnomeHost gnome(connectionOf(bookmark), "/MenuBar");
        test(gnome);
    }

    [[nodiscard]] bool hasLetter(const perchly::Bookmark& bookmark, std::string_view letter) const
    {
        const auto button = buttonOf(bookmark);
        return testbus::waitUntil([&] { return button->title() == letter; });
    }

    [[nodiscard]] static perchly::Bookmark withFavicon(std::string_view title)
    {
        auto bookmark = bookmarkNamed(title);
        bookmark.sfSymbolName = std::nullopt;
        return bookmark;
    }

    const FakeWatcher watcher_;
    testbus::Connection host_ = testbus::connect();

private:
    std::map<std::string, std::string> names_;
};
