#include "platform/linux/statusarea/MenuLabel.h"

#include <gmock/gmock.h>

namespace {

using desktop::menuLabel;

std::string repeated(const char* text, int count)
{
    std::string result;
    for (auto index = 0; index < count; ++index)
        result += text;
    return result;
}

TEST(MenuLabelTest, AnOrdinaryTitleStaysItself)
{
    EXPECT_EQ(menuLabel("a_b & <c> \u00e9"), "a_b & <c> \u00e9");
}

TEST(MenuLabelTest, ControlCharactersBecomeBlanks)
{
    EXPECT_EQ(menuLabel(std::string("one\0two", 7)), "one two");
    EXPECT_EQ(menuLabel("one\ntwo\tthree\x7f"), "one two three ");
    EXPECT_EQ(menuLabel("one\u2028two\u2029three\u0085four"), "one two three four");
}

TEST(MenuLabelTest, ALongTitleEndsWithAnEllipsis)
{
    EXPECT_EQ(menuLabel(repeated("x", 60)), repeated("x", 60));
    EXPECT_EQ(menuLabel(repeated("x", 61)), repeated("x", 59) + "\u2026");
    EXPECT_EQ(menuLabel(repeated("x", 32000)), repeated("x", 59) + "\u2026");
}

TEST(MenuLabelTest, CountsCharactersAndCutsNoneApart)
{
    EXPECT_EQ(menuLabel(repeated("\U0001f680", 60)), repeated("\U0001f680", 60));
    EXPECT_EQ(menuLabel(repeated("\U0001f680", 61)), repeated("\U0001f680", 59) + "\u2026");
}

TEST(MenuLabelTest, ATitleWithoutAnythingToSeeStillHasARow)
{
    for (const auto* title : { "", " ", "\n\n" })
        EXPECT_EQ(menuLabel(title), "\u00a0");
}

TEST(MenuLabelTest, WhatIsNoTextIsMarked)
{
    EXPECT_EQ(menuLabel("one\xff"), "one\ufffd");
}

} // namespace
