#pragma once

#include "platform/appkit/Image.h"
#include "platform/linux/statusarea/Picture.h"

#include <filesystem>

namespace appkit {

/// A drawing in a file. Nothing is loaded or drawn before a picture is asked for.
struct Image::Native {
    std::filesystem::path path;

    /// The same drawing as a themed icon that is recoloured, in the folder of `iconFolder`.
    std::string iconName;
};

/// The image for status areas and menus.
[[nodiscard]] std::shared_ptr<desktop::Picture> pictureOf(const Image& image);

/// The folder of themed icons, or empty.
[[nodiscard]] const std::string& iconFolder();

} // namespace appkit
