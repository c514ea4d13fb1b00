#include "platform/appkit/Window.h"

#include "platform/macos/appkit/WindowNative.h"

namespace appkit {

Window::Window(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

Window::~Window() = default;

void Window::makeKeyWindow()
{
    [native_->window makeKeyWindow];
}

bool Window::isKeyWindow() const
{
    return native_->window.isKeyWindow;
}

} // namespace appkit
