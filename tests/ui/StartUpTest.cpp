#include "app/AppDelegate.h"
#include "bookmarks/Preferences.h"
#include "platform/appkit/Menu.h"
#include "platform/appkit/StatusItem.h"
#include "platform/foundation/UserDefaults.h"
#include "statusbar/StatusBarController.h"
#include "support/MainLoop.h"
#include "support/TestServer.h"
#include "support/UserFolders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

class StartUpTest : public testing::Test {
protected:
    StartUpTest()
    {
        foundation::UserDefaults::standard().setString(server.url(""), perchly::preferences::faviconServiceURL);
    }

    perchly::test::UserFolders folders;
    perchly::test::TestServer server; // of sites' icons
    std::shared_ptr<perchly::AppDelegate> delegate = std::make_shared<perchly::AppDelegate>();
    appkit::Application& application = appkit::Application::sharedApplication();
};

TEST_F(StartUpTest, NothingIsThereBeforeTheQueuedSetUpHasRun)
{
    delegate->applicationDidFinishLaunching();

    EXPECT_EQ(delegate->statusBarController(), nullptr);
    EXPECT_EQ(application.mainMenu(), nullptr);
}

TEST_F(StartUpTest, SetUpMakesAnAccessoryWithAStatusItem)
{
    delegate->applicationDidFinishLaunching();

    ASSERT_TRUE(perchly::test::waitUntil([&] { return delegate->statusBarController() != nullptr; }));
    EXPECT_EQ(application.activationPolicy(), appkit::ActivationPolicy::Accessory);
    EXPECT_NE(delegate->statusBarController()->statusItem()->menu(), nullptr);
}

TEST_F(StartUpTest, TheMainMenuHoldsTheEditingCommandsForTheFirstResponder)
{
    delegate->applicationDidFinishLaunching();
    ASSERT_TRUE(perchly::test::waitUntil([&] { return application.mainMenu() != nullptr; }));

    ASSERT_EQ(application.mainMenu()->items().size(), 1U);
    const auto& edit = *application.mainMenu()->items().front()->submenu();
    EXPECT_EQ(edit.title(), "Edit");
    std::vector<std::string> rows;
    for (const auto& item : edit.items()) {
        rows.push_back(
            item->isSeparator() ? "-" : item->title() + " " + item->action().name() + " " + item->keyEquivalent());
        EXPECT_FALSE(item->action().hasTarget());
    }
    EXPECT_THAT(rows,
        ElementsAre("Undo undo z", "Redo redo Z", "-", "Cut cut: x", "Copy copy: c", "Paste paste: v",
            "Select All selectAll: a"));
}

TEST_F(StartUpTest, AnotherStartBeforeSetUpBringsUpTheBrowserAfterIt)
{
    delegate->applicationDidFinishLaunching();
    delegate->applicationStartedAgain();
    EXPECT_EQ(delegate->statusBarController(), nullptr);

    EXPECT_TRUE(perchly::test::waitUntil([&] {
        return delegate->statusBarController() && delegate->statusBarController()->surfaces().popover().isShown();
    }));
}

} // namespace
