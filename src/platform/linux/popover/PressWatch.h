#pragma once

#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/PixelGeometry.h"

#include <gtk/gtk.h>

#include <functional>
#include <optional>

namespace desktop {

/// While it lives, tells of each pointer button that goes down anywhere on the X11 screen, also over the desktop, a
/// panel or another program's window, without taking the press away from whoever it is for.
class PressWatch {
public:
    enum class Under {
        /// A window of this program.
        OurWindow,
        /// A menu, a tip or the like of another program, which comes and goes without the keyboard.
        ForeignMenu,
        Elsewhere,
    };

    struct Press {
        Under under = Under::Elsewhere;
        /// Our window, if it is one.
        GdkSurface* surface = nullptr;
        PixelPoint point;
    };

    using Handler = std::function<void(const Press&)>;

    PressWatch(GdkDisplay* display, Handler handler);
    ~PressWatch();
    PressWatch(const PressWatch&) = delete;
    PressWatch& operator=(const PressWatch&) = delete;

private:
    /// The press that an event of the X server's tells of.
    [[nodiscard]] std::optional<Press> pressIn(void* event);
    void select(bool isSelected);

    GdkDisplay* display_;
    Handler handler_;
    int inputExtension_ = 0;
    /// The window of ours that the pointer is in by the events so far, or 0: then it may still be in one.
    unsigned long entered_ = 0;
    SignalConnection events_;
};

} // namespace desktop
