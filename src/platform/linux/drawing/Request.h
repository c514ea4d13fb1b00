#pragma once

#include "platform/linux/drawing/Surface.h"

#include <optional>
#include <string>
#include <vector>

namespace drawing {

/// What is to be drawn, in which sizes, and as what.
struct Request {
    enum class Kind { File, Text, Data };

    bool isPng = false;
    Kind kind = Kind::File;
    /// The drawing's path, the text, or the bytes of a picture's file.
    std::string value;
    /// Paints the coverage, or a text's letters; without one a drawing keeps its own colours.
    std::optional<Colour> colour;
    /// How much of the square's side the drawing takes; of a text, the font's size.
    int percent = 100;
    int weight = 400;
    std::vector<int> sizes;
};

} // namespace drawing
