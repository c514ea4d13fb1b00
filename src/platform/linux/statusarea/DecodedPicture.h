#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace desktop {

/// A picture from outside, made harmless.
struct DecodedPicture {
    /// A square PNG file of at most 128 pixels and some 16 kB.
    std::string png;
    /// The file of a drawing that status areas recolour and that covers the same; empty for a picture of pixels.
    std::string outline;
};

/// Decodes the bytes of a picture's file in a process of its own that gets little of the machine (drawing/Limits.h).
/// None where they do not decode. Any thread; waits for it, and for others where several are at work.
[[nodiscard]] std::optional<DecodedPicture> decodePicture(std::string_view bytes);

} // namespace desktop
