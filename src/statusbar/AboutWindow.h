#pragma once

#include "platform/appkit/Action.h"

#include <memory>

namespace appkit {
class Window;
}

namespace perchly {

/// Shows a new window that says what Perchly is. It keeps itself until the user closes it. Main thread.
std::weak_ptr<appkit::Window> showAboutWindow(appkit::Action visitWebsite);

} // namespace perchly
