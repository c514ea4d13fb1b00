#pragma once

#include <string>

namespace foundation {

/// A fresh random (version 4) UUID in its 36-character form: upper-case hexadecimal, 8-4-4-4-12.
[[nodiscard]] std::string makeUUIDString();

} // namespace foundation
