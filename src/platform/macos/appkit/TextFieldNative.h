#pragma once

#include "platform/appkit/TextField.h"
#include "platform/macos/appkit/ViewNative.h"

namespace appkit {

/// The field with a target and delegate that tell its TextField what the user does.
[[nodiscard]] std::unique_ptr<View::Native> makeNativeField(NSTextField* field);

} // namespace appkit
