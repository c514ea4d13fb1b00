#pragma once

#include <cstdint>

struct _XDisplay;

namespace bench {

/// Looks at the pixels on the screen, as composed.
class ScreenProbe {
public:
    ScreenProbe();
    ~ScreenProbe();
    ScreenProbe(const ScreenProbe&) = delete;
    ScreenProbe& operator=(const ScreenProbe&) = delete;

    /// Whether at least 300 pixels of the screen's middle line have the colour. A window of 600 x 700 always crosses
    /// it.
    [[nodiscard]] bool shows(std::uint32_t colour) const;

private:
    _XDisplay* display_;
};

} // namespace bench
