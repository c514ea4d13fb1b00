#include "ui/SettingsTest.h"

namespace {

using appkit::Alert;
using appkit::AlertStyle;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Settings, and a site that has left a cookie and a text.
class SettingsCacheTest : public SettingsTest {
protected:
    SettingsCacheTest()
    {
        server.serve(
            "/keeps", { .body = "<title>Keeps</title>", .headers = { { "Set-Cookie", "kept=yes; Max-Age=3600" } } });
        open("/keeps");
        EXPECT_TRUE(waitForValue("localStorage.setItem('kept', 'yes'); localStorage.getItem('kept')", "yes"));
        EXPECT_EQ(cookieSent(), "kept=yes");
    }

    /// With a new visit to the site.
    [[nodiscard]] std::string cookieSent()
    {
        const auto before = server.requestCount("/second");
        load(server.url("/second"));
        EXPECT_TRUE(
            perchly::test::waitUntil([&] { return server.requestCount("/second") > before && !webView->isLoading(); }));
        for (const auto& request : server.requests()) {
            if (request.path == "/second")
                cookie = request.header("Cookie");
        }
        return cookie;
    }

    std::string cookie;
};

TEST_F(SettingsCacheTest, ClearingAsksFirst)
{
    clickAndAnswer("Clear Cache", cancel, [](const Alert& alert) {
        EXPECT_EQ(alert.messageText, "Clear Cache?");
        EXPECT_EQ(alert.informativeText, "");
        EXPECT_EQ(alert.style, Alert().style);
        EXPECT_THAT(alert.buttonTitles, ElementsAre("Clear", "Cancel"));
    });
}

TEST_F(SettingsCacheTest, ClearingRemovesWhatSitesKeepAndLeavesAllElse)
{
    setHomePage("home.example");
    const auto bookmarks = store().bookmarks();
    open("/keeps");
    server.clearRequests();

    clickAndAnswer("Clear Cache", confirm);

    EXPECT_TRUE(waitForValue("document.cookie", ""));
    EXPECT_TRUE(waitForValue("String(localStorage.getItem('kept'))", "null"));
    EXPECT_THAT(server.requests(), IsEmpty()) << "the open page was loaded again";
    EXPECT_EQ(address(), server.url("/keeps"));
    EXPECT_EQ(cookieSent(), "");
    EXPECT_EQ(homePage(), "home.example");
    EXPECT_EQ(store().bookmarks(), bookmarks);
    EXPECT_THAT(announced, IsEmpty());
    EXPECT_EQ(Alert::running(), nullptr);
    EXPECT_EQ(Alert::sheetOf(*window), nullptr);
}

TEST_F(SettingsCacheTest, CancellingKeepsWhatSitesKeep)
{
    clickAndAnswer("Clear Cache", cancel);

    EXPECT_EQ(cookieSent(), "kept=yes");
    EXPECT_TRUE(waitForValue("localStorage.getItem('kept')", "yes"));
    EXPECT_THAT(announced, IsEmpty());
}

TEST_F(SettingsCacheTest, AResetLeavesWhatSitesKeep)
{
    clickAndAnswer("Reset All Data", confirm);

    EXPECT_EQ(cookieSent(), "kept=yes");
    EXPECT_TRUE(waitForValue("localStorage.getItem('kept')", "yes"));
}

/// Settings of a user with a home page and one bookmark.
class SettingsResetTest : public SettingsTest {
protected:
    SettingsResetTest()
    {
        while (!store().bookmarks().empty())
            store().removeBookmark(std::string(store().bookmarks().front().id));
        store().addBookmark({ .title = "Mine", .url = "mine.example" });
        setHomePage("home.example");
        show();
    }
};

TEST_F(SettingsResetTest, AsksFirst)
{
    clickAndAnswer("Reset All Data", cancel, [](const Alert& alert) {
        EXPECT_EQ(alert.messageText, "Reset Everything?");
        EXPECT_EQ(alert.informativeText, "");
        EXPECT_EQ(alert.style, AlertStyle::Critical);
        EXPECT_THAT(alert.buttonTitles, ElementsAre("Reset", "Cancel"));
    });
}

TEST_F(SettingsResetTest, CancelledItChangesAndAnnouncesNothing)
{
    const auto bookmarks = store().bookmarks();
    field().setStringValue("typed.example");

    clickAndAnswer("Reset All Data", cancel);

    EXPECT_EQ(homePage(), "home.example");
    EXPECT_EQ(field().stringValue(), "typed.example");
    EXPECT_EQ(store().bookmarks(), bookmarks);
    EXPECT_THAT(announced, IsEmpty());
}

TEST_F(SettingsResetTest, GoesBackToAFirstStartStepByStep)
{
    whenSettingsChange = [this] {
        EXPECT_EQ(homePage(), std::nullopt);
        EXPECT_EQ(field().stringValue(), "");
        EXPECT_THAT(store().bookmarks(), SizeIs(1));
    };
    whenBookmarksChange = [] { EXPECT_THAT(store().bookmarks(), SizeIs(5)); };

    clickAndAnswer("Reset All Data", confirm);

    EXPECT_THAT(announced, ElementsAre("settings", "bookmarks"));
    EXPECT_EQ(homePage(), std::nullopt);
    EXPECT_EQ(field().stringValue(), "");
    std::vector<std::string> titles;
    for (const auto& bookmark : store().bookmarks())
        titles.push_back(bookmark.title);
    EXPECT_THAT(titles, ElementsAre("Google Translate", "Youtube", "ChatGPT", "Slack", "Perchly"));
    EXPECT_EQ(Alert::running(), nullptr);
}

TEST_F(SettingsResetTest, TheSettingsStayUsableAfterIt)
{
    clickAndAnswer("Reset All Data", confirm);

    save("again.example");

    EXPECT_EQ(homePage(), "again.example");
}

} // namespace
