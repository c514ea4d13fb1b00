#pragma once

#include "platform/appkit/Menu.h"
#include "platform/appkit/StatusItem.h"

#import <AppKit/AppKit.h>

@class PerchlyMenuSource;

namespace appkit {

struct StatusItem::Native {
    NSStatusItem* item;
    std::shared_ptr<StatusBarButton> button;
    PerchlyMenuSource* menuSource;
};

} // namespace appkit
