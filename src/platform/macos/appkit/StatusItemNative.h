#pragma once

#include "platform/appkit/Menu.h"
#include "platform/appkit/StatusItem.h"

#import <AppKit/AppKit.h>

@class PerchlyMenuSource;

namespace appkit {

struct StatusItem::Native {
    /// Nil once it is removed.
    NSStatusItem* item;
    std::shared_ptr<StatusBarButton> button;
    PerchlyMenuSource* menuSource;

    /// Out of the status bar for good; a second time does nothing.
    void remove()
    {
        if (item)
            [NSStatusBar.systemStatusBar removeStatusItem:item];
        item = nil;
    }
};

} // namespace appkit
