#pragma once

#include "platform/appkit/View.h"

#include <memory>

namespace appkit {

enum class LayoutOrientation { Horizontal, Vertical };
enum class StackAlignment { Leading, CenterX, CenterY };

struct EdgeInsets {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;
};

/// A row or column of views, each of its own size. Hidden views take no room.
class StackView : public View {
public:
    explicit StackView(LayoutOrientation orientation, foundation::Rect frame = {});

    void setSpacing(double spacing);
    /// In place of the usual spacing, after a view that was added.
    void setCustomSpacing(double spacing, const View& after);
    /// Of the views that are added from now on.
    void setAlignment(StackAlignment alignment);
    void setEdgeInsets(const EdgeInsets& insets);

    /// Appends the view.
    void addArrangedSubview(std::shared_ptr<View> view);

private:
    StackAlignment alignment_ = StackAlignment::Leading;
};

} // namespace appkit
