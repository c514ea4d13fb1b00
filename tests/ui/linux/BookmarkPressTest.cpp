#include "platform/linux/appkit/ViewNative.h"
#include "support/linux/ScreenPointer.h"
#include "support/linux/ToolkitFunction.h"
#include "ui/BookmarkListTest.h"

#include <gtk/gtk.h>

namespace {

using perchly::test::middleOf;
using perchly::test::ScreenPointer;
using perchly::test::waitUntil;

/// The list changes while the user presses a button of its second row, Beta's.
class BookmarkPressTest : public BookmarkListTest {
protected:
    [[nodiscard]] GtkWidget* widgetAt(std::size_t row) const { return appkit::widgetOf(*buttonAt(row, Pin)); }

    [[nodiscard]] bool isPressed(std::size_t row) const
    {
        return waitUntil([&] { return gtk_widget_get_state_flags(widgetAt(row)) & GTK_STATE_FLAG_ACTIVE; });
    }

    void pressBeta()
    {
        perchly::test::handlePendingEvents();
        ASSERT_TRUE(pointer.moveTo(middleOf(*buttonAt(1, Pin))));
        pointer.press();
        ASSERT_TRUE(isPressed(1));
    }

    /// Clicks on the button of the first row, too: what the pointer did before has then come to its end.
    void releaseAndPinFirst(const perchly::Bookmark& first)
    {
        pointer.release();
        ASSERT_TRUE(pointer.moveTo(middleOf(*buttonAt(0, Pin))));
        pointer.press();
        pointer.release();
        ASSERT_TRUE(waitUntil([&] { return storedLike(first).isPinned; }));
    }

    /// As Return and the space bar do.
    static void activate(GtkWidget* widget)
    {
        perchly::test::toolkitFunction<gboolean (*)(GtkWidget*)>("gtk_widget_activate")(widget);
    }

    ScreenPointer pointer;
};

TEST_F(BookmarkPressTest, APressBelongsToTheBookmarkThatWasThere)
{
    pressBeta();
    store().removeBookmark(alpha.id);
    announce();

    releaseAndPinFirst(beta);

    EXPECT_FALSE(storedLike(gamma).isPinned);
}

TEST_F(BookmarkPressTest, APressOutlivesAReloadOfItsBookmark)
{
    pressBeta();
    announce();

    releaseAndPinFirst(alpha);

    EXPECT_TRUE(storedLike(beta).isPinned);
}

TEST_F(BookmarkPressTest, AKeyBelongsToTheBookmarkThatWasThere)
{
    auto* button = widgetAt(1);
    activate(button);
    store().removeBookmark(alpha.id);
    announce();

    ASSERT_EQ(widgetAt(1), button);
    ASSERT_TRUE(waitUntil([&] { return !gtk_widget_has_css_class(button, "keyboard-activating"); }));
    EXPECT_FALSE(storedLike(gamma).isPinned);
    EXPECT_FALSE(storedLike(beta).isPinned);

    activate(button);
    EXPECT_TRUE(waitUntil([&] { return storedLike(gamma).isPinned; }));
}

} // namespace
