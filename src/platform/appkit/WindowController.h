#pragma once

#include "platform/appkit/Window.h"

#include <memory>

namespace appkit {

/// Keeps a window while it is closed.
class WindowController {
public:
    explicit WindowController(std::shared_ptr<Window> window)
        : window_(std::move(window))
    {
    }

    [[nodiscard]] const std::shared_ptr<Window>& window() const { return window_; }

private:
    std::shared_ptr<Window> window_;
};

} // namespace appkit
