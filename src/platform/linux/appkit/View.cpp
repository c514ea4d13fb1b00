#include "platform/appkit/View.h"

#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/appkit/WindowNative.h"
#include "platform/linux/desktop/ConstraintView.h"

#include <cmath>

namespace appkit {

View::View(foundation::Rect frame)
    : View(makeNative(desktop::makeConstraintView))
{
    native_->frame = frame;
    setFrameSize(frame.size);
}

View::View(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

View::~View()
{
    native_->connections.clear();
    for (const auto& subview : subviews_)
        subview->superview_ = nullptr;
    if (gtk_widget_get_parent(native_->widget.get()) && superview_)
        gtk_widget_unparent(native_->widget.get());
}

void View::addSubview(std::shared_ptr<View> subview)
{
    gtk_widget_insert_before(widgetOf(*subview), native_->widget.get(), nullptr);
    subview->superview_ = this;
    subviews_.push_back(std::move(subview));
}

foundation::Rect View::frame() const
{
    auto* widget = native_->widget.get();
    auto* parent = gtk_widget_get_parent(widget);
    graphene_rect_t bounds;
    if (!parent || gtk_widget_get_width(widget) == 0 || !gtk_widget_compute_bounds(widget, parent, &bounds))
        return native_->frame;
    const auto height = static_cast<double>(bounds.size.height);
    return { { bounds.origin.x, gtk_widget_get_height(parent) - static_cast<double>(bounds.origin.y) - height },
        { bounds.size.width, height } };
}

void View::setFrameSize(foundation::Size size)
{
    native_->frame.size = size;
}

void View::setTranslatesAutoresizingMaskIntoConstraints(bool /*translates*/)
{
    // Widgets in a constraint layout never have constraints that nobody asked for.
}

void View::setHidden(bool hidden)
{
    gtk_widget_set_visible(native_->widget.get(), !hidden);
}

bool View::isHidden() const
{
    return !gtk_widget_get_visible(native_->widget.get());
}

void View::setToolTip(std::string_view text)
{
    toolTip_ = text;
    gtk_widget_set_tooltip_text(native_->widget.get(), toolTip_.empty() ? nullptr : toolTip_.c_str());
}

std::shared_ptr<Window> View::window() const
{
    return windowOf(native_->widget.get());
}

} // namespace appkit
