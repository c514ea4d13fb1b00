#pragma once

namespace appkit {

enum class FontWeight { Regular, Medium, Bold };

/// A font of the system's own family.
struct Font {
    double pointSize = 13;
    FontWeight weight = FontWeight::Regular;
    bool operator==(const Font&) const = default;

    [[nodiscard]] static constexpr Font systemFont(double pointSize, FontWeight weight = FontWeight::Regular)
    {
        return { pointSize, weight };
    }
};

} // namespace appkit
