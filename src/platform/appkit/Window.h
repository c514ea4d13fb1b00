#pragma once

#include "platform/foundation/Geometry.h"
#include "platform/foundation/NotificationCenter.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace appkit {

class View;
class ViewController;

/// What a window has around its content, and what the user may do with it; to be combined.
enum class WindowStyleMask : unsigned { Borderless = 0, Titled = 1, Closable = 2, Miniaturizable = 4, Resizable = 8 };

[[nodiscard]] constexpr WindowStyleMask operator|(WindowStyleMask left, WindowStyleMask right)
{
    return static_cast<WindowStyleMask>(static_cast<unsigned>(left) | static_cast<unsigned>(right));
}

[[nodiscard]] constexpr bool contains(WindowStyleMask mask, WindowStyleMask part)
{
    return (static_cast<unsigned>(mask) & static_cast<unsigned>(part)) != 0;
}

/// Floating ones stay above the normal ones of all programs.
enum class WindowLevel { Normal = 0, Floating = 3 };

/// A window of the application's on the screen. Keeps its content alive. Main thread.
class Window : public std::enable_shared_from_this<Window> {
public:
    /// A buffered window, made at once, but not on the screen yet. It goes with its last owner; closing it only takes
    /// it off the screen. The content rectangle is moved, and made smaller, where it would put the title bar or the
    /// window's end outside of the main screen.
    [[nodiscard]] static std::shared_ptr<Window> create(foundation::Rect contentRect, WindowStyleMask styleMask);
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    void setTitle(std::string_view title);
    [[nodiscard]] std::string title() const;

    void setLevel(WindowLevel level);
    [[nodiscard]] WindowLevel level() const;

    /// Whether the window leaves the screen while the user works with another program.
    void setHidesOnDeactivate(bool hides);

    /// The window takes the size of the content's view. The content leaves whichever window it was in.
    void setContentViewController(std::shared_ptr<ViewController> content);
    [[nodiscard]] const std::shared_ptr<ViewController>& contentViewController() const { return content_; }

    /// Which view of the content has the keyboard when the window is first shown.
    void setInitialFirstResponder(const View& view);

    /// On the screen, title bar and all.
    [[nodiscard]] foundation::Rect frame() const;
    void setFrame(foundation::Rect frame);
    /// Which corner stays, the system decides.
    void setContentSize(foundation::Size size);

    /// Into the middle of the screen, a little above.
    void center();

    /// Gives the window the keyboard.
    void makeKeyWindow();
    [[nodiscard]] bool isKeyWindow() const;

    /// Brings the window to the screen, in front of those of its level, and gives it the keyboard.
    void makeKeyAndOrderFront();
    [[nodiscard]] bool isVisible() const;

    /// Takes a visible window off the screen. Observers of the closing are told before.
    void close();

    /// The handler is called whenever the window is about to close, by whomever, until the token goes.
    [[nodiscard]] foundation::ObservationToken observeWillClose(std::function<void()> handler);

    /// That of a popover's own window contains "Popover".
    [[nodiscard]] std::string className() const;

    struct Native;
    explicit Window(std::unique_ptr<Native> native);
    [[nodiscard]] Native& native() const { return *native_; }

private:
    std::unique_ptr<Native> native_;
    std::shared_ptr<ViewController> content_;
    foundation::NotificationCenter notifications_;
};

} // namespace appkit
