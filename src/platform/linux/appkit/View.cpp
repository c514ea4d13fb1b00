#include "platform/appkit/View.h"

#include "platform/appkit/Event.h"
#include "platform/appkit/KeyEquivalent.h"
#include "platform/linux/appkit/CursorNative.h"
#include "platform/linux/appkit/EventNative.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/appkit/WindowNative.h"
#include "platform/linux/desktop/ConstraintView.h"
#include "platform/linux/desktop/Shortcut.h"
#include "platform/linux/desktop/WindowContent.h"

#include <algorithm>
#include <cmath>

namespace appkit {
namespace {

guint keyvalOf(char32_t character)
{
    constexpr char32_t firstFunctionKey = 0xF704;
    constexpr char32_t functionKeys = 35;
    const auto index = character - firstFunctionKey;
    return index < functionKeys ? GDK_KEY_F1 + index : gdk_unicode_to_keyval(character);
}

} // namespace

View::View(foundation::Rect frame)
    : View(makeNative(desktop::makeConstraintView))
{
    native_->frame = frame;
}

View::View(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

View::View(HandlesMouse)
    : View(makeNative(desktop::makeConstraintView))
{
    auto* drag = gtk_gesture_drag_new();
    gtk_widget_add_controller(native_->widget.get(), GTK_EVENT_CONTROLLER(drag));
    const auto tell = [this, drag](EventType type, void (View::*handler)(const Event&)) {
        // Held until the operation has returned, which may take the view away.
        const auto self = weak_from_this().lock();
        if (!self)
            return;
        rememberEventPlace(drag);
        (this->*handler)({ type });
    };
    native_->connections.push_back(desktop::connect<void(double, double)>(drag, "drag-begin", [=](double, double) {
        gtk_gesture_set_state(drag, GTK_EVENT_SEQUENCE_CLAIMED);
        tell(EventType::LeftMouseDown, &View::mouseDown);
    }));
    native_->connections.push_back(desktop::connect<void(double, double)>(
        drag, "drag-update", [=](double, double) { tell(EventType::LeftMouseDragged, &View::mouseDragged); }));
    native_->connections.push_back(
        desktop::connect<void()>(native_->widget.get(), "realize", [this] { resetCursorRects(); }));
}

View::~View()
{
    native_->connections.clear();
    native_->typing.disconnect();
    for (const auto& subview : subviews_)
        subview->superview_ = nullptr;
    desktop::takeOut(native_->widget.get());
}

void View::addSubview(std::shared_ptr<View> subview)
{
    subview->removeFromSuperview();
    subview->superview_ = this;
    gtk_widget_insert_before(widgetOf(*subview), native_->widget.get(), nullptr);
    subviews_.push_back(std::move(subview));
}

void View::removeFromSuperview()
{
    if (!superview_)
        return;
    auto& siblings = std::exchange(superview_, nullptr)->subviews_;
    const auto place = std::ranges::find(siblings, this, &std::shared_ptr<View>::get);
    // Held until the end: the superview may be the last owner.
    const auto self = *place;
    siblings.erase(place);
    desktop::takeOut(native_->widget.get());
}

foundation::Rect View::frame() const
{
    auto* widget = native_->widget.get();
    auto* parent = gtk_widget_get_parent(widget);
    graphene_rect_t bounds;
    if (!parent || gtk_widget_get_width(widget) == 0 || !gtk_widget_compute_bounds(widget, parent, &bounds))
        return native_->frame;
    const auto size = native_->requestedSize.orElse({ bounds.size.width, bounds.size.height });
    return { { bounds.origin.x, gtk_widget_get_height(parent) - static_cast<double>(bounds.origin.y) - size.height },
        size };
}

void View::setFrameSize(foundation::Size size)
{
    native_->frame.size = size;
    native_->requestedSize.request(size);
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
    native_->nameAfterToolTip(toolTip_);
    auto* widget = native_->widget.get();
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, toolTip_.c_str(), -1);
    if (gtk_widget_get_has_tooltip(widget))
        return;
    // The text is handed over when it is due. Given beforehand, it has the toolkit ask the display each time where the
    // pointer is, which takes longer than all else that a row of buttons does.
    gtk_widget_set_has_tooltip(widget, TRUE);
    const auto tell = [this](int, int, gboolean, GtkTooltip* toolTip) -> gboolean {
        gtk_tooltip_set_text(toolTip, toolTip_.empty() ? nullptr : toolTip_.c_str());
        return !toolTip_.empty();
    };
    native_->connections.push_back(
        desktop::connect<gboolean(int, int, gboolean, GtkTooltip*)>(widget, "query-tooltip", tell));
}

void View::setAccessibilityLabel(std::string_view label)
{
    native_->hasAccessibilityLabel = true;
    gtk_accessible_update_property(
        GTK_ACCESSIBLE(native_->widget.get()), GTK_ACCESSIBLE_PROPERTY_LABEL, std::string(label).c_str(), -1);
}

void View::Native::nameAfterToolTip(const std::string& toolTip) const
{
    if (hasAccessibilityLabel || !GTK_IS_BUTTON(widget.get()) || gtk_button_get_label(GTK_BUTTON(widget.get())))
        return;
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.get()), GTK_ACCESSIBLE_PROPERTY_LABEL, toolTip.c_str(), -1);
}

void View::setAccessibilityRole(AccessibilityRole role)
{
    const auto native = role == AccessibilityRole::Splitter ? GTK_ACCESSIBLE_ROLE_SEPARATOR : GTK_ACCESSIBLE_ROLE_GROUP;
    g_object_set(native_->widget.get(), "accessible-role", native, nullptr);
}

void View::addKeyEquivalent(const KeyEquivalent& key, Action action)
{
    const auto modifiers = key.withCommand ? GDK_CONTROL_MASK : static_cast<GdkModifierType>(0);
    const auto send = [this, action = std::move(action)] {
        const auto self = weak_from_this().lock();
        if (self)
            action.send(*self);
        return self != nullptr;
    };
    desktop::addShortcut(
        native_->widget.get(), { keyvalOf(key.character), modifiers, GTK_SHORTCUT_SCOPE_MANAGED }, send);
}

void View::mouseDown(const Event& /*event*/) { }

void View::mouseDragged(const Event& /*event*/) { }

void View::resetCursorRects() { }

void View::addCursorRect(foundation::Rect /*rect*/, const Cursor& cursor)
{
    // A widget has one cursor.
    gtk_widget_set_cursor_from_name(native_->widget.get(), cursor.native().name);
}

LayoutDirection View::userInterfaceLayoutDirection() const
{
    const auto isMirrored = gtk_widget_get_direction(native_->widget.get()) == GTK_TEXT_DIR_RTL;
    return isMirrored ? LayoutDirection::RightToLeft : LayoutDirection::LeftToRight;
}

std::shared_ptr<Window> View::window() const
{
    return windowOf(native_->widget.get());
}

} // namespace appkit
