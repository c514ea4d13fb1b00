#pragma once

#include "platform/linux/popover/RenderNode.h"

#include <string>

namespace desktop {

/// A frame with rounded corners inside, in the toolkit's pixels and in the coordinates of what it is drawn into.
struct FrameShape {
    int width = 0;
    int height = 0;
    /// What the frame goes around. Without its corners it is of one opaque colour.
    cairo_rectangle_int_t inside {};
    int cornerRadius = 0;
    int scale = 1;
    bool operator==(const FrameShape& other) const;
};

/// Draws a frame that most often looks as it did before. It is kept as pixels then, because a shadow takes a tenth
/// of a showing to blur. Pixels are only made for the second one of its looks: it may be growing, or appearing.
class FramePicture {
public:
    void append(GtkSnapshot* target, GskRenderNode* frame, const FrameShape& shape);

private:
    FrameShape shape_;
    /// All of how the frame looks.
    std::string look_;
    /// The same in pixels; null before they are made.
    RenderNodePointer pixels_;
};

} // namespace desktop
