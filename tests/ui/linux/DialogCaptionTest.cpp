#include "bookmarks/Bookmark.h"
#include "pinned/CustomIconDialog.h"
#include "platform/appkit/Alert.h"
#include "platform/appkit/View.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/linux/appkit/ViewNative.h"
#include "statusbar/BookmarkDialog.h"
#include "support/MainLoop.h"
#include "support/UserFolders.h"

#include <gtest/gtest.h>

namespace {

using appkit::Alert;

/// What stands above the fields of a dialog.
class DialogCaptionTest : public testing::Test {
protected:
    /// To be looked at by the dialog that is opened next, which is then cancelled.
    static void expectCaptions(bool areDim)
    {
        foundation::dispatchMainAsync([areDim] {
            ASSERT_NE(Alert::running(), nullptr);
            auto captions = 0;
            for (const auto& view : Alert::running()->accessoryView->subviews()) {
                auto* widget = appkit::widgetOf(*view);
                if (!GTK_IS_LABEL(widget))
                    continue;
                ++captions;
                EXPECT_EQ(gtk_widget_has_css_class(widget, "dim-label") != FALSE, areDim);
            }
            EXPECT_GT(captions, 0);
            Alert::running()->performClick(1);
        });
    }

    perchly::test::UserFolders folders;
    perchly::Bookmark bookmark { .title = "Mail", .url = "mail.example" };
};

TEST_F(DialogCaptionTest, IsDimInTheBookmarkDialog)
{
    expectCaptions(true);

    EXPECT_EQ(perchly::askForBookmark(bookmark), std::nullopt);
}

TEST_F(DialogCaptionTest, IsNotDimInTheDialogForIcons)
{
    expectCaptions(false);

    EXPECT_EQ(perchly::askForCustomIcon(bookmark), std::nullopt);
}

} // namespace
