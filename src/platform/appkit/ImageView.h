#pragma once

#include "platform/appkit/View.h"

#include <memory>

namespace appkit {

class Image;

/// Shows an image, scaled down to fit the view.
class ImageView : public View {
public:
    explicit ImageView(std::shared_ptr<Image> image);

    [[nodiscard]] const std::shared_ptr<Image>& image() const { return image_; }

private:
    std::shared_ptr<Image> image_;
};

} // namespace appkit
