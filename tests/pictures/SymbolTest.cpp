#include "DrawnPicture.h"
#include "platform/appkit/Image.h"
#include "platform/linux/appkit/ImageNative.h"
#include "platform/linux/statusarea/SymbolicIcon.h"
#include "support/UserFolders.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

namespace {

using appkit::Image;
using desktop::Picture;
using perchly::test::drawnLarge;

/// What Perchly itself shows.
constexpr const char* usedNames[] = { "arrow.clockwise", "chevron.left", "chevron.right", "globe", "minus.circle",
    "pin", "pin.fill", "plus.circle", "safari" };

std::vector<std::pair<std::string, std::string>> aliases()
{
    std::vector<std::pair<std::string, std::string>> pairs;
    std::ifstream file(PERCHLY_SYMBOL_ALIASES);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string name;
        std::string drawing;
        if (words >> name >> drawing && !name.starts_with('#'))
            pairs.emplace_back(name, drawing);
    }
    return pairs;
}

std::string contentsOf(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    return { std::istreambuf_iterator<char>(stream), {} };
}

/// Draws the symbol in the middle of a square twice as wide as its box. What its box would cut off is outside of that.
void expectWholeDrawing(const std::string& name)
{
    const auto symbol = Image::systemSymbol(name);
    ASSERT_TRUE(symbol) << name;
    const auto wide = desktop::withRoom(contentsOf(symbol->native().path), 50);
    ASSERT_TRUE(wide) << name;
    const auto icon = desktop::MadeIcon::keep("wide", *wide);
    ASSERT_TRUE(icon);

    const auto picture
        = drawnLarge({ Picture::Subject::Kind::File, desktop::madeIconsFolder().value() / "wide.svg", "#808080", 100 });

    EXPECT_GT(picture.coverage(), 32 * 32 * 0.02) << name;
    // A faint pixel of the edge aside.
    EXPECT_GE(picture.columns().first, 15) << name;
    EXPECT_GE(picture.rows().first, 15) << name;
    EXPECT_LE(picture.columns().last, 48) << name;
    EXPECT_LE(picture.rows().last, 48) << name;
}

TEST(SymbolTest, WhatPerchlyShowsIsDrawnWhole)
{
    const perchly::test::UserFolders folders;
    for (const auto* name : usedNames)
        expectWholeDrawing(name);
}

TEST(SymbolTest, EveryDrawingOfTheSetIsDrawnWhole)
{
    const perchly::test::UserFolders folders;
    const auto folder = Image::systemSymbol("star")->native().path.parent_path();
    std::size_t number = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        auto name = file.path().stem().string();
        std::ranges::replace(name, '_', '.');
        if (file.path().extension() != ".svg")
            continue;
        expectWholeDrawing(name);
        ++number;
    }
    EXPECT_GT(number, 1000U);
}

TEST(SymbolTest, EveryAliasHasADrawing)
{
    const auto pairs = aliases();
    EXPECT_GE(pairs.size(), 150U);
    for (const auto& [name, drawing] : pairs)
        EXPECT_TRUE(Image::systemSymbol(name)) << name;
}

TEST(SymbolTest, EveryAliasIsNeededAndStandsOnce)
{
    std::set<std::string> seen;
    for (const auto& [name, drawing] : aliases()) {
        EXPECT_TRUE(seen.insert(name).second) << name;
        EXPECT_EQ(Image::systemSymbol(name)->native().path.stem(), drawing) << name << " has a drawing of its own";
    }
}

} // namespace
