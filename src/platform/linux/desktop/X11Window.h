#pragma once

#include "platform/linux/desktop/PixelGeometry.h"

#include <gtk/gtk.h>

#include <cstdint>

namespace desktop {

/// What GTK 4 leaves to the window manager's protocol, for a realized toplevel on X11. Borrows the window.
class X11Window {
public:
    explicit X11Window(GtkWidget* toplevel);

    /// A window that helps for a moment: of the type DIALOG and in no list of windows. Before it is mapped.
    void setAuxiliary();

    /// Asks for that place and size, as the user's own wish. The toolkit forgets it at each layout, so ask again
    /// right after mapping.
    void place(const PixelRect& frame);
    /// Until the window is drawn anew, what was drawn stays where it is on the screen while the frame changes.
    void keepPicture(const PixelRect& before, const PixelRect& after);
    /// Where the window's inside is, without what the window manager puts around it. A round trip.
    [[nodiscard]] PixelPoint position() const;

    /// Asks for that place of the inside when the window is mapped. The toolkit forgets it, so ask again right after
    /// mapping.
    void hintPosition(PixelPoint inside);
    /// Moves a window that is mapped.
    void move(PixelPoint inside);
    /// What the window manager has put around the window: thicknesses on the left, right, top and bottom. A round trip.
    struct Frame {
        int left = 0;
        int right = 0;
        int top = 0;
        int bottom = 0;
    };
    [[nodiscard]] Frame frame() const;

    /// Whether the window stays above others. Window managers forget it when the window is hidden.
    void setAbove(bool isAbove);

    /// The server's present time, also noted as the last time that the user turned to this window: the leave to take
    /// the keyboard after a click that the window itself never saw. A round trip.
    [[nodiscard]] std::uint32_t takeUserTime();

    /// True while the window manager counts this window as the active one, even if another client has the keyboard.
    [[nodiscard]] bool isActiveWindow() const;

    [[nodiscard]] unsigned long id() const { return id_; }

private:
    [[nodiscard]] GdkDisplay* display() const { return gdk_surface_get_display(surface_); }

    GdkSurface* surface_;
    unsigned long id_;
};

} // namespace desktop
