#pragma once

#include "platform/appkit/Cursor.h"

#import <AppKit/AppKit.h>

namespace appkit {

struct Cursor::Native {
    NSCursor* cursor;
};

} // namespace appkit
