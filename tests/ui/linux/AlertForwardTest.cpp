#include "platform/appkit/Alert.h"
#include "platform/appkit/Application.h"
#include "platform/foundation/DispatchQueue.h"
#include "support/MainLoop.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <string_view>

namespace {

using appkit::Alert;
using perchly::test::waitUntil;

GtkWindow* windowTitled(std::string_view title)
{
    GtkWindow* found = nullptr;
    auto* windows = gtk_window_list_toplevels();
    for (auto* link = windows; link; link = link->next) {
        const auto* own = gtk_window_get_title(GTK_WINDOW(link->data));
        if (own && own == title)
            found = GTK_WINDOW(link->data);
    }
    g_list_free(windows);
    return found;
}

TEST(AlertForwardTest, ActivatingTheApplicationBringsItsAlertForward)
{
    Alert alert;
    alert.messageText = "A question";
    auto cameForward = false;
    foundation::dispatchMainAsync([&] {
        auto* question = windowTitled("A question");
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
