#pragma once

#include <string>

namespace desktop {

/// A title as a row of a desktop's menu can show it: one line, of 60 characters at most, never without any.
[[nodiscard]] std::string menuLabel(std::string title);

} // namespace desktop
