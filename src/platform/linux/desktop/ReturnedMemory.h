#pragma once

#include "platform/linux/desktop/GObject.h"

#include <malloc.h>

namespace desktop {

/// Gives memory that is no longer used back to the system, once for all that is freed within moments. Main thread.
inline void returnMemorySoon()
{
    constexpr unsigned patience = 500;
    static SourceHandle returning;
    returning = callAfter(patience, [] {
        returning.reset();
        malloc_trim(0);
    });
}

} // namespace desktop
