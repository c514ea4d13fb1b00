#include "platform/foundation/UUID.h"

#include <gmock/gmock.h>
#include <set>

namespace perchly::tests {

TEST(UUIDTest, HasTheFormOfARandomUUIDInCapitals)
{
    for (int i = 0; i < 1000; ++i) {
        EXPECT_THAT(foundation::makeUUIDString(),
            testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
    }
}

TEST(UUIDTest, IsAnotherOneEveryTime)
{
    std::set<std::string> all;
    for (int i = 0; i < 1000; ++i)
        all.insert(foundation::makeUUIDString());

    EXPECT_EQ(all.size(), 1000u);
}

} // namespace perchly::tests
