#include "platform/appkit/StackView.h"

#include "platform/linux/appkit/ViewNative.h"

namespace appkit {
namespace {

GtkOrientation nativeOrientation(LayoutOrientation orientation)
{
    return orientation == LayoutOrientation::Horizontal ? GTK_ORIENTATION_HORIZONTAL : GTK_ORIENTATION_VERTICAL;
}

GtkAlign alignmentAcross(StackAlignment alignment)
{
    return alignment == StackAlignment::Leading ? GTK_ALIGN_START : GTK_ALIGN_CENTER;
}

int pixels(double points)
{
    return static_cast<int>(points);
}

} // namespace

StackView::StackView(LayoutOrientation orientation, foundation::Rect frame)
    : View(makeNative([orientation] { return gtk_box_new(nativeOrientation(orientation), 0); }))
{
    native().frame = frame;
    if (frame != foundation::Rect {})
        gtk_widget_set_size_request(widgetOf(*this), pixels(frame.size.width), pixels(frame.size.height));
}

void StackView::setSpacing(double spacing)
{
    gtk_box_set_spacing(GTK_BOX(widgetOf(*this)), pixels(spacing));
}

void StackView::setAlignment(StackAlignment alignment)
{
    alignment_ = alignment;
}

void StackView::setEdgeInsets(const EdgeInsets& insets)
{
    auto* box = widgetOf(*this);
    gtk_widget_set_margin_top(box, pixels(insets.top));
    gtk_widget_set_margin_start(box, pixels(insets.left));
    gtk_widget_set_margin_bottom(box, pixels(insets.bottom));
    gtk_widget_set_margin_end(box, pixels(insets.right));
}

void StackView::addArrangedSubview(std::shared_ptr<View> view)
{
    auto* widget = widgetOf(*view);
    const auto isColumn = gtk_orientable_get_orientation(GTK_ORIENTABLE(widgetOf(*this))) == GTK_ORIENTATION_VERTICAL;
    if (isColumn)
        gtk_widget_set_halign(widget, alignmentAcross(alignment_));
    else
        gtk_widget_set_valign(widget, alignmentAcross(alignment_));
    addSubview(std::move(view));
}

} // namespace appkit
