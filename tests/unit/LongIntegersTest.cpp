#include "bookmarks/LongIntegers.h"

#include <gtest/gtest.h>

namespace perchly {

TEST(LongIntegersTest, AShortNumberIsLeftAlone)
{
    for (const std::string_view document : { "", "[]", "[123456789012345678]", "[-0]", "[1.2345678901234567890123]",
             "[12345678901234567890e1]", R"(["12345678901234567890123"])" })
        EXPECT_EQ(withLongIntegersAsFloats(document, 0), std::nullopt) << document;
}

TEST(LongIntegersTest, ALongIntegerBecomesAFloat)
{
    EXPECT_EQ(withLongIntegersAsFloats("[1234567890123456789]", 0), "[1234567890123456789e0]");
    EXPECT_EQ(withLongIntegersAsFloats("[-12345678901234567890,1]", 0), "[-12345678901234567890e0,1]");
    EXPECT_EQ(withLongIntegersAsFloats("12345678901234567890", 0), "12345678901234567890e0");
}

TEST(LongIntegersTest, TextsAreSteppedOverWithTheirEscapes)
{
    EXPECT_EQ(withLongIntegersAsFloats(R"({"a\"1":"\\","b":12345678901234567890})", 0),
        R"({"a\"1":"\\","b":12345678901234567890e0})");
    EXPECT_EQ(withLongIntegersAsFloats(R"([12345678901234567890,"unfinished \)", 0),
        R"([12345678901234567890e0,"unfinished \)");
}

TEST(LongIntegersTest, WhatIsNoIntegerStaysWrong)
{
    for (const std::string_view document : { "[01234567890123456789]", "[--12345678901234567890]",
             "[1234567890-1234567890123]", "[+12345678901234567890]" }) {
        const auto rewritten = withLongIntegersAsFloats(document, 0);
        EXPECT_TRUE(!rewritten || rewritten->starts_with("[+")) << document;
    }
}

TEST(LongIntegersTest, TheCopyHasTheSpareCapacityThatWasAskedFor)
{
    const auto rewritten = withLongIntegersAsFloats("[12345678901234567890]", 64);

    ASSERT_TRUE(rewritten);
    EXPECT_GE(rewritten->capacity() - rewritten->size(), 64u);
}

} // namespace perchly
