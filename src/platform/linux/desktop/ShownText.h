#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace desktop {

struct TextLimit {
    std::size_t characters = std::numeric_limits<std::size_t>::max();
    std::size_t lines = std::numeric_limits<std::size_t>::max();
};

/// What a widget can show of the text: UTF-8, with a sign in place of what ends a text in C. What is beyond the limit
/// is left out, and "…" stands for it.
[[nodiscard]] std::string shownText(std::string_view text, TextLimit limit = {});

} // namespace desktop
