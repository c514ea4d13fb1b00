#pragma once

namespace appkit {

class View;

enum class LayoutAttribute { Leading, Trailing, Top, Bottom, CenterX, CenterY, Width, Height };

/// One edge, centre line or length of a view, to be tied to another by a constraint. A loan of the view.
struct LayoutAnchor {
    View& view;
    LayoutAttribute attribute;
};

/// first = second + constant (points), or first = constant where there is no second.
/// Constants grow towards the trailing edge and towards the bottom.
struct LayoutConstraint {
    LayoutAnchor first;
    const View* secondView;
    LayoutAttribute secondAttribute;
    double constant;
};

enum class LayoutAxis { X, Y };

/// An anchor that ties only to others of its axis.
template <LayoutAxis axis>
struct AxisAnchor : LayoutAnchor {
    [[nodiscard]] LayoutConstraint equalTo(const AxisAnchor& other, double constant = 0) const
    {
        return { *this, &other.view, other.attribute, constant };
    }
};

using XAxisAnchor = AxisAnchor<LayoutAxis::X>;
using YAxisAnchor = AxisAnchor<LayoutAxis::Y>;

struct DimensionAnchor : LayoutAnchor {
    [[nodiscard]] LayoutConstraint equalToConstant(double constant) const
    {
        return { *this, nullptr, attribute, constant };
    }
};

} // namespace appkit
