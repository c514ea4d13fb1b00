#pragma once

#include "platform/appkit/SavePanel.h"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

namespace appkit {

[[nodiscard]] UTType* nativeContentType(ContentType type);

/// Shows the panel; one for opening is a kind of save panel, too.
void begin(NSSavePanel* panel, SavePanel::CompletionHandler completionHandler);

} // namespace appkit
