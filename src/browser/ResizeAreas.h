#pragma once

#include <functional>
#include <memory>

namespace appkit {
class View;
} // namespace appkit

namespace perchly {

class ResizeArea;

/// The strips over the left, right and bottom edges of a browser.
/// A drag away from the middle of the browser makes it larger.
class ResizeAreas {
public:
    /// Adds the strips above all that `root` has so far. `resizeBy` gets what each step of a drag adds to width and
    /// height, in points.
    ResizeAreas(appkit::View& root, const std::function<void(double deltaWidth, double deltaHeight)>& resizeBy);

    const std::shared_ptr<ResizeArea> leftResizeArea;
    const std::shared_ptr<ResizeArea> rightResizeArea;
    const std::shared_ptr<ResizeArea> bottomResizeArea;

private:
    void layOut(appkit::View& root);
};

} // namespace perchly
