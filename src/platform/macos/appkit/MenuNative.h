#pragma once

#include "platform/appkit/Menu.h"

#import <AppKit/AppKit.h>

/// Fills an NSMenu from a menu's description each time it is about to be shown.
@interface PerchlyMenuSource : NSObject <NSMenuDelegate>
@property (nonatomic) std::shared_ptr<appkit::Menu> menu;
@end

namespace appkit {

/// A menu with the rows of the description as they are now.
[[nodiscard]] NSMenu* makeNativeMenu(const Menu& menu);

} // namespace appkit
