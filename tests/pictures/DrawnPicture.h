#pragma once

#include "platform/linux/statusarea/Picture.h"

#include <cstddef>
#include <string>
#include <vector>

namespace perchly::test {

struct Pixel {
    int alpha;
    int red;
    int green;
    int blue;
    bool operator==(const Pixel&) const = default;
};

/// The first and the last row or column that have ink; the last comes before the first where there is none.
struct Extent {
    int first;
    int last;
    [[nodiscard]] int length() const { return last - first + 1; }
};

/// A status item's pixmap.
class DrawnPicture {
public:
    DrawnPicture(int size, std::vector<unsigned char> bytes);

    [[nodiscard]] int size() const { return size_; }
    [[nodiscard]] Pixel at(int x, int y) const;
    /// The sum of all pixels' alpha, in whole pixels.
    [[nodiscard]] double coverage() const;
    [[nodiscard]] Extent columns() const;
    [[nodiscard]] Extent rows() const;

private:
    int size_;
    std::vector<unsigned char> bytes_;
};

/// What a host that asks for the picture gets; empty where there is nothing to draw.
[[nodiscard]] std::vector<DrawnPicture> drawn(const std::shared_ptr<desktop::Picture>& picture);
[[nodiscard]] std::vector<DrawnPicture> drawn(const desktop::Picture::Subject& subject);

/// The largest of them: 64 pixels, unless the picture is too small for that.
[[nodiscard]] DrawnPicture drawnLarge(const desktop::Picture::Subject& subject);

[[nodiscard]] std::vector<DrawnPicture> pixmapsIn(GVariant* pixmaps);

[[nodiscard]] std::string pictureFile(const std::string& name);

} // namespace perchly::test
