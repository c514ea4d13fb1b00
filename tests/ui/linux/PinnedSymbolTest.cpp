#include "platform/linux/appkit/ImageNative.h"
#include "ui/PinnedTest.h"

namespace {

/// How large and how bold a bookmark's symbol is drawn, which the image itself keeps to its side.
class PinnedSymbolTest : public PinnedTest {
protected:
    void expectDrawnAt(double points) const
    {
        const auto& image = buttonOf(bookmark)->image();
        ASSERT_NE(image, nullptr);
        const auto& configuration = image->native().configuration;
        ASSERT_TRUE(configuration.has_value());
        EXPECT_EQ(configuration->pointSize, points);
        EXPECT_EQ(configuration->weight, appkit::FontWeight::Medium);
    }

    perchly::Bookmark bookmark = bookmarkNamed("This");
};

TEST_F(PinnedSymbolTest, IsOfMediumWeightAndFifteenPointsOrTheBookmarksSize)
{
    bookmark.sfSymbolName = "safari";
    added(bookmark);
    expectDrawnAt(15);

    bookmark.menubarIconSize = 22;
    change(bookmark);

    expectDrawnAt(22);
}

} // namespace
