#pragma once

namespace appkit {

/// A colour by its meaning; what it looks like follows the desktop's theme.
enum class Color { Label, SecondaryLabel, Link, SystemRed };

} // namespace appkit
