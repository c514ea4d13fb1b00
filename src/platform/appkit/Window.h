#pragma once

#include <memory>

namespace appkit {

/// A window of the application's on the screen.
class Window {
public:
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// Gives the window the keyboard.
    void makeKeyWindow();
    [[nodiscard]] bool isKeyWindow() const;

    struct Native;
    explicit Window(std::unique_ptr<Native> native);
    [[nodiscard]] Native& native() const { return *native_; }

private:
    std::unique_ptr<Native> native_;
};

} // namespace appkit
