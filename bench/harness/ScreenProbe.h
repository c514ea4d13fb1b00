#pragma once

#include <cstdint>
#include <vector>

#include <glib.h>

struct _XDisplay;

namespace bench {

/// Looks at the pixels on the screen, as composed. While one of these lives, each change of the screen wakes the main
/// loop: a wait for a colour ends within a fraction of a millisecond, and takes no time from those who paint.
class ScreenProbe {
public:
    ScreenProbe();
    ~ScreenProbe();
    ScreenProbe(const ScreenProbe&) = delete;
    ScreenProbe& operator=(const ScreenProbe&) = delete;

    /// Whether at least 300 pixels of the screen's middle line have the colour. A window of 600 x 700 always crosses
    /// it.
    [[nodiscard]] bool shows(std::uint32_t colour);

private:
    void noteDamage();
    void readLine();

    _XDisplay* display_;
    unsigned long damage_ = 0;
    int firstEvent_ = 0;
    bool isStale_ = true;
    std::vector<std::uint32_t> line_;
    unsigned source_ = 0;
};

} // namespace bench
