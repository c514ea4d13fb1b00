#pragma once

#include "platform/appkit/Action.h"

namespace perchly {

/// Shows a new window that says what Perchly is. It is kept until the user closes it. Main thread.
void showAboutWindow(appkit::Action visitWebsite);

} // namespace perchly
