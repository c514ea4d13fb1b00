#include "platform/foundation/Character.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using foundation::lowercased;
using foundation::uppercasedFirstCharacter;

TEST(CharacterTest, TheFirstLetterIsPutInUpperCase)
{
    EXPECT_EQ(uppercasedFirstCharacter("perchly"), "P");
    EXPECT_EQ(uppercasedFirstCharacter("Perchly"), "P");
    EXPECT_EQ(uppercasedFirstCharacter("p"), "P");
    EXPECT_EQ(uppercasedFirstCharacter("élan"), "É");
    EXPECT_EQ(uppercasedFirstCharacter("жук"), "Ж");
    EXPECT_EQ(uppercasedFirstCharacter("ωmega"), "Ω");
}

TEST(CharacterTest, AnEmptyTextHasNone)
{
    EXPECT_EQ(uppercasedFirstCharacter(""), "");
}

TEST(CharacterTest, WhatHasNoUpperCaseStaysAsItIs)
{
    for (const auto* text : { "7", " ", "日", "ا", "#", "€" })
        EXPECT_EQ(uppercasedFirstCharacter(std::string(text) + "x"), text);
}

TEST(CharacterTest, UpperCaseMayBeLonger)
{
    EXPECT_EQ(uppercasedFirstCharacter("ßtraße"), "SS");
    EXPECT_EQ(uppercasedFirstCharacter("ﬁn"), "FI");
}

TEST(CharacterTest, CombiningMarksBelongToTheirLetter)
{
    EXPECT_EQ(uppercasedFirstCharacter("e\u0301lan"), "E\u0301");
    EXPECT_EQ(uppercasedFirstCharacter("a\u0323\u0302b"), "A\u0323\u0302");
    EXPECT_EQ(uppercasedFirstCharacter("नि मा"), "नि");
    EXPECT_EQ(uppercasedFirstCharacter("\u0301e"), "\u0301");
}

TEST(CharacterTest, TwoRegionalLettersAreOneFlag)
{
    EXPECT_EQ(uppercasedFirstCharacter("🇩🇪🇫🇷"), "🇩🇪");
    EXPECT_EQ(uppercasedFirstCharacter("🇩x"), "🇩");
    EXPECT_EQ(uppercasedFirstCharacter("🏴󠁧󠁢󠁳󠁣󠁴󠁿 x"), "🏴󠁧󠁢󠁳󠁣󠁴󠁿");
}

TEST(CharacterTest, JoinedEmojiAreOne)
{
    EXPECT_EQ(uppercasedFirstCharacter("👩‍💻👩‍💻"), "👩‍💻");
    EXPECT_EQ(uppercasedFirstCharacter("👨‍👩‍👧‍👦x"), "👨‍👩‍👧‍👦");
    EXPECT_EQ(uppercasedFirstCharacter("👍🏽👍"), "👍🏽");
    EXPECT_EQ(uppercasedFirstCharacter("❤️‍🔥x"), "❤️‍🔥");
    EXPECT_EQ(uppercasedFirstCharacter("1️⃣2️⃣"), "1️⃣");
    EXPECT_EQ(uppercasedFirstCharacter("😀😀"), "😀");
}

TEST(CharacterTest, AHangulSyllableInPartsIsOne)
{
    EXPECT_EQ(uppercasedFirstCharacter("\u1112\u1161\u11AB\u1100"), "\u1112\u1161\u11AB");
    EXPECT_EQ(uppercasedFirstCharacter("\uD558\u11AB\uD558"), "\uD558\u11AB");
    EXPECT_EQ(uppercasedFirstCharacter("한글"), "한");
}

TEST(CharacterTest, WhatIsNoTextIsReplaced)
{
    EXPECT_EQ(uppercasedFirstCharacter("\xFF\xFEx"), "\uFFFD");
    EXPECT_EQ(uppercasedFirstCharacter(std::string_view("\0x", 2)), "\uFFFD");
    EXPECT_EQ(uppercasedFirstCharacter("\xC3"), "\uFFFD");
}

TEST(CharacterTest, NoTextIsTooLong)
{
    std::string text = "e";
    for (auto number = 0; number < 100000; ++number)
        text += "\u0301";

    EXPECT_EQ(uppercasedFirstCharacter(text + "x"), "E" + text.substr(1));
}

TEST(CharacterTest, LettersArePutInLowerCase)
{
    EXPECT_EQ(lowercased(""), "");
    EXPECT_EQ(lowercased("YouTube @[`{ 42"), "youtube @[`{ 42");
    EXPECT_EQ(lowercased("ÉLAN Straße ЖУК ΩMEGA"), "élan straße жук ωmega");
    EXPECT_EQ(lowercased("日本 🚀 e\u0301"), "日本 🚀 e\u0301");
    EXPECT_EQ(lowercased("ẞ"), "ß");
}

TEST(CharacterTest, LowerCaseMayBeLonger)
{
    EXPECT_EQ(lowercased("İstanbul"), "i\u0307stanbul");
}

TEST(CharacterTest, ASigmaEndsAWordInItsOwnForm)
{
    EXPECT_EQ(lowercased("ΟΔΟΣ"), "οδος");
    EXPECT_EQ(lowercased("ΟΔΟΣ ΣΟΦΙΑΣ, Σ"), "οδος σοφιας, σ");
}

TEST(CharacterTest, LowerCaseLeavesDamagedTextAsItIs)
{
    EXPECT_EQ(lowercased("A\xFF\xC3"), "a\xFF\xC3");
    EXPECT_EQ(lowercased("É\xE2\x82 B"), "é\xE2\x82 b");
}

TEST(CharacterTest, LowerCaseKeepsNullCharacters)
{
    EXPECT_EQ(lowercased(std::string_view("É\0B", 4)), std::string("é\0b", 4));
}

} // namespace
