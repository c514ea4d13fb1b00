#pragma once

#include "Waiting.h"

#include <cstdint>
#include <optional>
#include <vector>

#include <glib.h>

struct _XDisplay;

namespace bench {

/// In pixels.
struct ScreenArea {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// Looks at the pixels on the screen, as composed. While one of these lives, each change of the screen wakes the main
/// loop: a wait for a colour ends within a fraction of a millisecond, and takes no time from those who paint.
class ScreenProbe {
public:
    /// For the screen's middle line. A window of 600 x 700 always crosses it.
    ScreenProbe();
    explicit ScreenProbe(const ScreenArea& area);
    ~ScreenProbe();
    ScreenProbe(const ScreenProbe&) = delete;
    ScreenProbe& operator=(const ScreenProbe&) = delete;

    /// Whether at least 300 pixels of the area have the colour.
    [[nodiscard]] bool shows(std::uint32_t colour);

    /// From now on notes when the area looks different than before.
    void watch();
    /// When it did so last. None if it hasn't since.
    [[nodiscard]] const std::optional<Clock::time_point>& lastChange() const { return lastChange_; }

private:
    void noteDamage();
    void look();
    void readArea();

    _XDisplay* display_;
    unsigned long damage_ = 0;
    int firstEvent_ = 0;
    bool isStale_ = true;
    ScreenArea area_;
    bool isWatching_ = false;
    std::vector<std::uint32_t> pixels_;
    std::optional<Clock::time_point> lastChange_;
    unsigned source_ = 0;
};

} // namespace bench
