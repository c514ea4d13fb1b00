#pragma once

#include "platform/foundation/Geometry.h"

#include <cmath>
#include <glib.h>
#include <optional>

namespace desktop {

/// A size that was asked for and is not there yet: for a moment it counts as if it were, because a window manager
/// takes its time, and the next step of a drag must not begin at the size before the last one. It may also refuse,
/// and then what is really there counts again.
class RequestedSize {
public:
    void request(foundation::Size size)
    {
        size_ = size;
        requested_ = g_get_monotonic_time();
    }

    [[nodiscard]] foundation::Size orElse(foundation::Size actual) const
    {
        if (!size_)
            return actual;
        // Pixels are larger than points may be small.
        const auto isThere = std::abs(size_->width - actual.width) < 1 && std::abs(size_->height - actual.height) < 1;
        return isThere || g_get_monotonic_time() - requested_ < patience ? *size_ : actual;
    }

private:
    static constexpr gint64 patience = 250 * G_TIME_SPAN_MILLISECOND;

    std::optional<foundation::Size> size_;
    gint64 requested_ = 0;
};

} // namespace desktop
