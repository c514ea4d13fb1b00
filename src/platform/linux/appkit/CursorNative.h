#pragma once

#include "platform/appkit/Cursor.h"

namespace appkit {

struct Cursor::Native {
    /// In cursor themes.
    const char* name;
};

} // namespace appkit
