#pragma once

#include "platform/appkit/Image.h"
#include "platform/linux/statusarea/Picture.h"
#include "platform/linux/statusarea/SymbolicIcon.h"

#include <filesystem>
#include <optional>

namespace appkit {

/// A drawing in a file, or the contents of a picture from elsewhere. Nothing is loaded or drawn before a picture is
/// asked for.
struct Image::Native {
    std::filesystem::path path {};
    /// The contents of a PNG file no larger than status areas need. Empty for an image with a path.
    std::string data {};

    /// The same drawing as a themed icon that is recoloured: its name, and the folder that has its file or, of a
    /// picture from elsewhere, what is to be in it. All empty where there is none.
    std::string iconName {};
    std::filesystem::path iconFolder {};
    std::string outline {};

    /// Set for a symbol that is drawn like a letter.
    std::optional<SymbolConfiguration> configuration {};
};

/// The image for status areas and menus.
[[nodiscard]] std::shared_ptr<desktop::Picture> pictureOf(const Image& image);

/// The text for status areas.
[[nodiscard]] std::shared_ptr<desktop::Picture> pictureOf(const std::string& text, const Font& font);

/// A name and a folder by which status areas find an icon that they recolour; both empty where there is none.
struct ThemedIcon {
    std::string name;
    std::string folder;
    /// Keeps the file there where it was made.
    std::shared_ptr<const desktop::MadeIcon> file {};
};

/// May make that icon's file.
[[nodiscard]] ThemedIcon themedIconOf(const Image& image);

} // namespace appkit
