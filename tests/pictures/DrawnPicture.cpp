#include "DrawnPicture.h"

#include "support/MainLoop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace perchly::test {

DrawnPicture::DrawnPicture(int size, std::vector<unsigned char> bytes)
    : size_(size)
    , bytes_(std::move(bytes))
{
}

Pixel DrawnPicture::at(int x, int y) const
{
    const auto* pixel
        = &bytes_.at((static_cast<std::size_t>(y) * static_cast<std::size_t>(size_) + static_cast<std::size_t>(x)) * 4);
    return { pixel[0], pixel[1], pixel[2], pixel[3] };
}

double DrawnPicture::coverage() const
{
    auto sum = 0;
    for (std::size_t index = 0; index < bytes_.size(); index += 4)
        sum += bytes_[index];
    return sum / 255.0;
}

namespace {

Extent extentOf(int size, const std::function<int(int, int)>& alphaAt)
{
    // Fainter than that, nobody sees it.
    constexpr auto visible = 24;
    Extent extent { size, -1 };
    for (auto line = 0; line < size; ++line) {
        for (auto across = 0; across < size; ++across) {
            if (alphaAt(line, across) < visible)
                continue;
            extent.first = std::min(extent.first, line);
            extent.last = line;
        }
    }
    return extent;
}

} // namespace

Extent DrawnPicture::columns() const
{
    return extentOf(size_, [this](int x, int y) { return at(x, y).alpha; });
}

Extent DrawnPicture::rows() const
{
    return extentOf(size_, [this](int y, int x) { return at(x, y).alpha; });
}

std::vector<DrawnPicture> pixmapsIn(GVariant* pixmaps)
{
    std::vector<DrawnPicture> pictures;
    for (gsize index = 0; index < g_variant_n_children(pixmaps); ++index) {
        gint32 width = 0;
        gint32 height = 0;
        GVariant* pixels = nullptr;
        g_variant_get_child(pixmaps, index, "(ii@ay)", &width, &height, &pixels);
        const auto owned = desktop::adoptVariant(pixels);
        gsize count = 0;
        const auto* bytes = static_cast<const unsigned char*>(g_variant_get_fixed_array(pixels, &count, 1));
        pictures.emplace_back(width, std::vector(bytes, bytes + count));
    }
    return pictures;
}

std::vector<DrawnPicture> drawn(const std::shared_ptr<desktop::Picture>& picture)
{
    // Shared with the receiver, which may be called after this gave up.
    const auto pictures = std::make_shared<std::optional<std::vector<DrawnPicture>>>();
    picture->withPixmaps([pictures](GVariant* pixmaps) { *pictures = pixmapsIn(pixmaps); });
    EXPECT_TRUE(waitUntil([&] { return pictures->has_value(); }));
    return pictures->value_or(std::vector<DrawnPicture>());
}

std::vector<DrawnPicture> drawn(const desktop::Picture::Subject& subject)
{
    return drawn(desktop::Picture::of(subject));
}

DrawnPicture drawnLarge(const desktop::Picture::Subject& subject)
{
    const auto pictures = drawn(subject);
    if (!pictures.empty())
        return pictures.back();
    ADD_FAILURE() << "Nothing is drawn for " << subject.value;
    return { 1, { 0, 0, 0, 0 } };
}

std::string pictureFile(const std::string& name)
{
    std::ifstream file(std::string(PERCHLY_PICTURES "/") + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return { std::istreambuf_iterator<char>(file), {} };
}

} // namespace perchly::test
