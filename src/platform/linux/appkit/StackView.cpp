#include "platform/appkit/StackView.h"

#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/StackContainer.h"

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
    : View(makeNative([orientation] { return desktop::makeStackContainer(nativeOrientation(orientation)); }))
{
    native().frame = frame;
    if (frame != foundation::Rect {})
        gtk_widget_set_size_request(widgetOf(*this), pixels(frame.size.width), pixels(frame.size.height));
}

void StackView::setSpacing(double spacing)
{
    desktop::setSpacing(widgetOf(*this), pixels(spacing));
}

void StackView::setCustomSpacing(double spacing, const View& after)
{
    desktop::setSpacingAfter(widgetOf(after), pixels(spacing));
}

void StackView::setAlignment(StackAlignment alignment)
{
    alignment_ = alignment;
}

void StackView::setEdgeInsets(const EdgeInsets& insets)
{
    desktop::setInsets(widgetOf(*this),
        { .top = pixels(insets.top),
            .start = pixels(insets.left),
            .bottom = pixels(insets.bottom),
            .end = pixels(insets.right) });
}

void StackView::addArrangedSubview(std::shared_ptr<View> view)
{
    auto* widget = widgetOf(*view);
    if (desktop::orientationOf(widgetOf(*this)) == GTK_ORIENTATION_VERTICAL)
        gtk_widget_set_halign(widget, alignmentAcross(alignment_));
    else
        gtk_widget_set_valign(widget, alignmentAcross(alignment_));
    addSubview(std::move(view));
}

} // namespace appkit
