#include "platform/foundation/Log.h"
#include "CapturedStandardError.h"
#include "TemporaryHome.h"

#include <gmock/gmock.h>
#include <thread>

namespace perchly::tests {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(LogTest, ALineIsShownWithItsTextUnchangedWhateverTheEnvironmentSays)
{
    const EnvironmentVariable debugging("G_MESSAGES_DEBUG", std::nullopt);
    const CapturedStandardError standardError;

    foundation::log("DEBUG: 100% of %s and %@, \"quoted\"");

    EXPECT_THAT(standardError.debugLines(), ElementsAre("DEBUG: 100% of %s and %@, \"quoted\""));
    EXPECT_THAT(standardError.text(), HasSubstr("Perchly-Message"));
}

TEST(LogTest, ALineEndsWhereItsViewEnds)
{
    const CapturedStandardError standardError;

    foundation::log(std::string_view("DEBUG: short and no more").substr(0, 12));

    EXPECT_THAT(standardError.debugLines(), ElementsAre("DEBUG: short"));
}

TEST(LogTest, ATextWithLineBreaksIsOneLineAllTheSame)
{
    const CapturedStandardError standardError;

    foundation::log("DEBUG: one\nDEBUG: two\r\nDEBUG: three\v\f\u0085\u2028\u2029DEBUG: four");

    EXPECT_THAT(standardError.debugLines(), ElementsAre("DEBUG: one DEBUG: two  DEBUG: three     DEBUG: four"));
}

TEST(LogTest, LinesMayComeFromAnyThread)
{
    const CapturedStandardError standardError;

    std::thread([] { foundation::log("DEBUG: from another thread"); }).join();

    EXPECT_THAT(standardError.debugLines(), ElementsAre("DEBUG: from another thread"));
}

} // namespace perchly::tests
