#include "platform/appkit/Alert.h"
#include "platform/appkit/Application.h"
#include "platform/foundation/DispatchQueue.h"
#include "support/MainLoop.h"
#include "support/linux/ToplevelTitled.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <string_view>

namespace {

using appkit::Alert;
using perchly::test::toplevelTitled;
using perchly::test::waitUntil;

TEST(AlertForwardTest, ActivatingTheApplicationBringsItsAlertForward)
{
    Alert alert;
    alert.messageText = "A question";
    auto cameForward = false;
    foundation::dispatchMainAsync([&] {
        auto* question = toplevelTitled("A question");
        ASSERT_NE(question, nullptr);
        ASSERT_TRUE(waitUntil([&] { return gtk_window_is_active(question); }));
        auto* other = GTK_WINDOW(gtk_window_new());
        gtk_window_present(other);
        ASSERT_TRUE(waitUntil([&] { return gtk_window_is_active(other) && !gtk_window_is_active(question); }));

        appkit::Application::sharedApplication().activateIgnoringOtherApps();

        cameForward = waitUntil([&] { return gtk_window_is_active(question); });
        gtk_window_destroy(other);
        alert.performClick(0);
    });

    alert.runModal();

    EXPECT_TRUE(cameForward);
}

} // namespace
