#pragma once

#include "platform/linux/popover/PopoverPlacement.h"

#include <gtk/gtk.h>

#include <optional>

namespace desktop {

/// The bubble, measured in the toolkit's own pixels.
struct PopoverBackgroundShape {
    int contentWidth = 0;
    int contentHeight = 0;
    PanelSide side = PanelSide::Top;
    /// Where the arrow stands on its edge of the box; none for a bubble without one.
    std::optional<double> arrow {};
    /// Without a compositor nothing can be transparent: a plain rectangle.
    bool isPlain = false;
};

/// A box with rounded corners, a hairline border, a soft shadow and an arrow, in the theme's colours. Holds one widget
/// at most, which gets exactly the content size; that widget may be unparented by anyone.
[[nodiscard]] GtkWidget* makePopoverBackground();

void setPopoverContent(GtkWidget* background, GtkWidget* content);
[[nodiscard]] GtkWidget* popoverContent(GtkWidget* background);

void setPopoverShape(GtkWidget* background, const PopoverBackgroundShape& shape);

/// The visible part, inside the shadow's margins: what takes the pointer.
[[nodiscard]] cairo_rectangle_int_t popoverBox(GtkWidget* background);

/// The sizes that placing needs, for a content size in the toolkit's pixels.
[[nodiscard]] BubbleShape bubbleShape(int contentWidth, int contentHeight, int scale, bool isPlain);

/// The other way round: the content, in the toolkit's pixels, that a box of that size on the screen has room for.
[[nodiscard]] PixelSize contentSizeIn(PixelSize box, int scale);

} // namespace desktop
