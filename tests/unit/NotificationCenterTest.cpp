#include "platform/foundation/NotificationCenter.h"
#include "bookmarks/Notifications.h"

#include <gmock/gmock.h>
#include <string>
#include <thread>
#include <vector>

namespace perchly::tests {

using foundation::NotificationCenter;
using foundation::ObservationToken;
using testing::ElementsAre;
using testing::IsEmpty;

class NotificationCenterTest : public testing::Test {
protected:
    [[nodiscard]] ObservationToken observe(std::string_view name, const std::string& mark)
    {
        return center_.addObserver(name, [this, mark] { heard_.push_back(mark); });
    }

    NotificationCenter center_;
    std::vector<std::string> heard_;
};

TEST_F(NotificationCenterTest, TheNamesAreThoseThatTheRoomsAgreeOn)
{
    EXPECT_EQ(notifications::bookmarksDidChange, "BookmarksDidChange");
    EXPECT_EQ(notifications::settingsDidChange, "SettingsDidChange");
}

TEST_F(NotificationCenterTest, ObserversOfTheNameHearInTheOrderOfObserving)
{
    const auto first = observe("A", "first"), other = observe("B", "other"), second = observe("A", "second");

    center_.post("A");
    center_.post("a");

    EXPECT_THAT(heard_, ElementsAre("first", "second"));
}

TEST_F(NotificationCenterTest, APostWithoutObserversDoesNothing)
{
    center_.post("A");

    EXPECT_THAT(heard_, IsEmpty());
}

TEST_F(NotificationCenterTest, AnObservationEndsWithItsToken)
{
    {
        const auto token = observe("A", "gone");
    }
    const auto kept = observe("A", "kept");
    center_.post("A");

    EXPECT_THAT(heard_, ElementsAre("kept"));
}

TEST_F(NotificationCenterTest, AMovedTokenKeepsItsObservationAndEndsTheOneItHeld)
{
    auto token = observe("A", "first");
    token = observe("A", "second");
    const auto moved = std::move(token);
    center_.post("A");

    EXPECT_THAT(heard_, ElementsAre("second"));
}

TEST_F(NotificationCenterTest, AnObserverThatWentDuringTheDeliveryIsNotCalled)
{
    ObservationToken second;
    const auto first = center_.addObserver("A", [&] { second = ObservationToken(); });
    second = observe("A", "second");

    center_.post("A");

    EXPECT_THAT(heard_, IsEmpty());
}

TEST_F(NotificationCenterTest, AnObserverMayEndItself)
{
    ObservationToken own;
    own = center_.addObserver("A", [&] {
        heard_.emplace_back("once");
        own = ObservationToken();
    });
    const auto next = observe("A", "next");

    center_.post("A");
    center_.post("A");

    EXPECT_THAT(heard_, ElementsAre("once", "next", "next"));
}

TEST_F(NotificationCenterTest, AnObserverThatCameDuringTheDeliveryHearsTheNextOne)
{
    std::vector<ObservationToken> added;
    const auto first = center_.addObserver("A", [&] { added.push_back(observe("A", "added")); });

    center_.post("A");
    EXPECT_THAT(heard_, IsEmpty());
    center_.post("A");

    EXPECT_THAT(heard_, ElementsAre("added"));
}

TEST_F(NotificationCenterTest, AHandlerMayPostItself)
{
    const auto outer = center_.addObserver("A", [&] { center_.post("B"); });
    const auto inner = observe("B", "inner"), after = observe("A", "after");

    center_.post("A");

    EXPECT_THAT(heard_, ElementsAre("inner", "after"));
}

TEST_F(NotificationCenterTest, ATokenMayOutliveTheCentre)
{
    ObservationToken token;
    {
        NotificationCenter brief;
        token = brief.addObserver("A", [this] { heard_.emplace_back("A"); });
        brief.post("A");
    }
    token = ObservationToken();

    EXPECT_THAT(heard_, ElementsAre("A"));
}

TEST_F(NotificationCenterTest, TheDefaultCentreIsOne)
{
    EXPECT_EQ(&NotificationCenter::defaultCenter(), &NotificationCenter::defaultCenter());
}

TEST_F(NotificationCenterTest, PostingOffTheMainThreadEndsTheProcess)
{
    EXPECT_DEATH(std::thread([this] { center_.post("A"); }).join(), "Fatal error: called off the main thread");
}

} // namespace perchly::tests
