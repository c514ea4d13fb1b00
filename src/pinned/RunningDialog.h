#pragma once

#include "platform/appkit/Alert.h"
#include "platform/appkit/Application.h"

namespace perchly {

/// Whether a dialog waits for its answer. Then nothing else may start: the dialog comes forward instead.
[[nodiscard]] inline bool isHeldUpByDialog()
{
    if (!appkit::Alert::running())
        return false;
    appkit::Application::sharedApplication().activateIgnoringOtherApps();
    return true;
}

} // namespace perchly
