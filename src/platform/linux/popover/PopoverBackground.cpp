#include "platform/linux/popover/PopoverBackground.h"

#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/popover/FramePicture.h"
#include "platform/linux/popover/RoundedContent.h"

#include <algorithm>

namespace desktop {
namespace {

constexpr auto border = 1;
constexpr auto cornerRadius = 12;
constexpr auto insideRadius = cornerRadius - border;
constexpr auto arrowLength = 10;
/// The arrow is a square on its corner, sunk into the box by the border.
constexpr auto arrowSquare = 17;
constexpr auto shadow = 18;
constexpr auto gap = 4;
constexpr auto iconReach = 14;
constexpr auto panelReach = 96;

constexpr auto style = R"(
window.perchly-popover { background: none; box-shadow: none; }
popoverbackground > popoverbox {
  background-color: @theme_bg_color; background-clip: padding-box; border-radius: 12px;
  border: 1px solid alpha(@theme_fg_color, 0.2); box-shadow: 0 3px 11px 1px alpha(black, 0.3);
}
popoverbackground > popoverarrow {
  background-color: @theme_bg_color; background-clip: padding-box; border: 1px solid alpha(@theme_fg_color, 0.2);
}
popoverbackground.plain > popoverbox {
  border-radius: 0; box-shadow: none; border-color: mix(@theme_bg_color, @theme_fg_color, 0.3);
}
popoverbackground.animated > * { animation: perchly-popover-appear 120ms ease-out; }
@keyframes perchly-popover-appear { from { opacity: 0; } }
)";

struct Background {
    GtkWidget widget;
    GtkWidget* box;
    GtkWidget* arrow;
    PopoverBackgroundShape* shape;
    FramePicture* frame;
};

Background* self(gpointer widget)
{
    return static_cast<Background*>(widget);
}

const GtkWidgetClass* parentClass()
{
    return GTK_WIDGET_CLASS(g_type_class_peek(GTK_TYPE_WIDGET));
}

int margin(const PopoverBackgroundShape& shape, PanelSide side)
{
    if (shape.isPlain)
        return 0;
    return side == shape.side ? arrowLength : shadow;
}

/// The box with its border, in the background's coordinates.
cairo_rectangle_int_t boxOf(const PopoverBackgroundShape& shape)
{
    return { margin(shape, PanelSide::Left), margin(shape, PanelSide::Top), shape.contentWidth + 2 * border,
        shape.contentHeight + 2 * border };
}

/// The box without its border.
cairo_rectangle_int_t insideOf(const PopoverBackgroundShape& shape)
{
    const auto box = boxOf(shape);
    return { box.x + border, box.y + border, shape.contentWidth, shape.contentHeight };
}

graphene_point_t arrowMiddle(const PopoverBackgroundShape& shape)
{
    const auto box = boxOf(shape);
    const auto along = static_cast<float>(*shape.arrow);
    const auto left = static_cast<float>(box.x);
    const auto top = static_cast<float>(box.y);
    switch (shape.side) {
    case PanelSide::Top:
        return { left + along, top + border };
    case PanelSide::Bottom:
        return { left + along, top + static_cast<float>(box.height - border) };
    case PanelSide::Left:
        return { left + border, top + along };
    case PanelSide::Right:
        break;
    }
    return { left + static_cast<float>(box.width - border), top + along };
}

/// What of the arrow may be seen: all that is not inside the box's border.
graphene_rect_t arrowClip(const PopoverBackgroundShape& shape, int width, int height)
{
    const auto box = boxOf(shape);
    auto left = 0;
    auto top = 0;
    auto right = width;
    auto bottom = height;
    switch (shape.side) {
    case PanelSide::Top:
        bottom = box.y + border;
        break;
    case PanelSide::Bottom:
        top = box.y + box.height - border;
        break;
    case PanelSide::Left:
        right = box.x + border;
        break;
    case PanelSide::Right:
        left = box.x + box.width - border;
        break;
    }
    graphene_rect_t clip;
    graphene_rect_init(&clip, static_cast<float>(left), static_cast<float>(top), static_cast<float>(right - left),
        static_cast<float>(bottom - top));
    return clip;
}

void measure(GtkWidget* widget, GtkOrientation orientation, int, int* minimum, int* natural, int* minimumBaseline,
    int* naturalBaseline)
{
    const auto& shape = *self(widget)->shape;
    const auto box = boxOf(shape);
    const auto isWidth = orientation == GTK_ORIENTATION_HORIZONTAL;
    *minimum = *natural = isWidth ? box.x + box.width + margin(shape, PanelSide::Right)
                                  : box.y + box.height + margin(shape, PanelSide::Bottom);
    *minimumBaseline = *naturalBaseline = -1;
}

/// Widgets must be measured before they are given a place.
void measureAnyway(GtkWidget* widget)
{
    gtk_widget_measure(widget, GTK_ORIENTATION_HORIZONTAL, -1, nullptr, nullptr, nullptr, nullptr);
}

void allocatePart(GtkWidget* part, const cairo_rectangle_int_t& place)
{
    measureAnyway(part);
    gtk_widget_size_allocate(part, &place, -1);
}

void allocateArrow(GtkWidget* arrow, const PopoverBackgroundShape& shape)
{
    measureAnyway(arrow);
    const auto middle = arrowMiddle(shape);
    const graphene_point_t half { -arrowSquare / 2.0F, -arrowSquare / 2.0F };
    auto* transform = gsk_transform_translate(nullptr, &middle);
    transform = gsk_transform_translate(gsk_transform_rotate(transform, 45), &half);
    gtk_widget_allocate(arrow, arrowSquare, arrowSquare, -1, transform);
}

/// Compositors need not look at what is below. (The toolkit asks only whether the whole window is opaque.)
void setOpaqueRegion(GtkWidget* widget, const PopoverBackgroundShape& shape)
{
    const auto inside = insideOf(shape);
    const auto corner = shape.isPlain ? 0 : insideRadius;
    const cairo_rectangle_int_t across { inside.x, inside.y + corner, inside.width, inside.height - 2 * corner };
    const cairo_rectangle_int_t down { inside.x + corner, inside.y, inside.width - 2 * corner, inside.height };
    auto* region = cairo_region_create_rectangle(&across);
    cairo_region_union_rectangle(region, &down);
    gdk_surface_set_opaque_region(gtk_native_get_surface(gtk_widget_get_native(widget)), region);
    cairo_region_destroy(region);
}

void allocate(GtkWidget* widget, int, int, int)
{
    const auto* background = self(widget);
    allocatePart(background->box, boxOf(*background->shape));
    if (background->shape->arrow)
        allocateArrow(background->arrow, *background->shape);
    if (auto* content = popoverContent(widget))
        allocatePart(content, insideOf(*background->shape));
    setOpaqueRegion(widget, *background->shape);
}

void snapshotContent(GtkWidget* widget, GtkWidget* content, GtkSnapshot* target)
{
    const auto& shape = *self(widget)->shape;
    const auto inside = insideOf(shape);
    if (shape.isPlain || inside.height < 2 * insideRadius)
        return gtk_widget_snapshot_child(widget, content, target);
    auto* recorder = gtk_snapshot_new();
    gtk_widget_snapshot_child(widget, content, recorder);
    const RenderNodePointer node(gtk_snapshot_free_to_node(recorder));
    if (node)
        appendRounded(target, node.get(), toGraphene(inside), insideRadius);
}

/// The box with its shadow, and the arrow; null for none.
RenderNodePointer recordFrame(GtkWidget* widget)
{
    const auto* background = self(widget);
    auto* recorder = gtk_snapshot_new();
    gtk_widget_snapshot_child(widget, background->box, recorder);
    if (background->shape->arrow) {
        const auto clip = arrowClip(*background->shape, gtk_widget_get_width(widget), gtk_widget_get_height(widget));
        gtk_snapshot_push_clip(recorder, &clip);
        gtk_widget_snapshot_child(widget, background->arrow, recorder);
        gtk_snapshot_pop(recorder);
    }
    return RenderNodePointer(gtk_snapshot_free_to_node(recorder));
}

void snapshotFrame(GtkWidget* widget, GtkSnapshot* target)
{
    const auto node = recordFrame(widget);
    if (!node)
        return;
    const auto& shape = *self(widget)->shape;
    if (shape.isPlain || insideOf(shape).height < 2 * insideRadius)
        gtk_snapshot_append_node(target, node.get());
    else
        self(widget)->frame->append(target, node.get(),
            { gtk_widget_get_width(widget), gtk_widget_get_height(widget), insideOf(shape), insideRadius,
                gtk_widget_get_scale_factor(widget) });
}

void snapshot(GtkWidget* widget, GtkSnapshot* target)
{
    snapshotFrame(widget, target);
    if (auto* content = popoverContent(widget))
        snapshotContent(widget, content, target);
}

void dispose(GObject* object)
{
    auto* background = self(object);
    setPopoverContent(GTK_WIDGET(object), nullptr);
    g_clear_pointer(&background->box, gtk_widget_unparent);
    g_clear_pointer(&background->arrow, gtk_widget_unparent);
    G_OBJECT_CLASS(parentClass())->dispose(object);
}

void finalize(GObject* object)
{
    delete self(object)->shape;
    delete self(object)->frame;
    G_OBJECT_CLASS(parentClass())->finalize(object);
}

void initializeClass(gpointer instanceClass, gpointer)
{
    auto* objectClass = G_OBJECT_CLASS(instanceClass);
    objectClass->dispose = dispose;
    objectClass->finalize = finalize;
    auto* widgetClass = GTK_WIDGET_CLASS(instanceClass);
    widgetClass->measure = measure;
    widgetClass->size_allocate = allocate;
    widgetClass->snapshot = snapshot;
    gtk_widget_class_set_css_name(widgetClass, "popoverbackground");
}

/// A child of the given CSS name that is drawn by the style alone.
GtkWidget* addPart(Background* background, const char* name)
{
    auto* part = GTK_WIDGET(g_object_new(GTK_TYPE_BOX, "css-name", name, nullptr));
    gtk_widget_set_layout_manager(part, gtk_bin_layout_new());
    gtk_widget_set_parent(part, &background->widget);
    return part;
}

void initialize(GTypeInstance* instance, gpointer)
{
    auto* background = reinterpret_cast<Background*>(instance);
    background->shape = new PopoverBackgroundShape;
    background->frame = new FramePicture;
    background->box = addPart(background, "popoverbox");
    background->arrow = addPart(background, "popoverarrow");
    gtk_widget_set_can_target(background->arrow, FALSE);
}

GType registerType()
{
    addStyle(style);
    return g_type_register_static_simple(GTK_TYPE_WIDGET, "PerchlyPopoverBackground", sizeof(GtkWidgetClass),
        initializeClass, sizeof(Background), initialize, static_cast<GTypeFlags>(0));
}

} // namespace

GtkWidget* makePopoverBackground()
{
    static const auto type = registerType();
    return GTK_WIDGET(g_object_new(type, nullptr));
}

void setPopoverContent(GtkWidget* background, GtkWidget* content)
{
    auto* before = popoverContent(background);
    if (before == content)
        return;
    if (before)
        gtk_widget_unparent(before);
    if (content)
        gtk_widget_set_parent(content, background);
}

GtkWidget* popoverContent(GtkWidget* background)
{
    // The parts came first.
    auto* last = gtk_widget_get_last_child(background);
    return last && last != self(background)->box && last != self(background)->arrow ? last : nullptr;
}

void setPopoverShape(GtkWidget* background, const PopoverBackgroundShape& shape)
{
    *self(background)->shape = shape;
    gtk_widget_set_child_visible(self(background)->arrow, shape.arrow.has_value());
    if (shape.isPlain)
        gtk_widget_add_css_class(background, "plain");
    else
        gtk_widget_remove_css_class(background, "plain");
    gtk_widget_queue_resize(background);
}

cairo_rectangle_int_t popoverBox(GtkWidget* background)
{
    return boxOf(*self(background)->shape);
}

BubbleShape bubbleShape(int contentWidth, int contentHeight, int scale, bool isPlain)
{
    BubbleShape shape {
        .box = { (contentWidth + 2 * border) * scale, (contentHeight + 2 * border) * scale },
        .iconReach = iconReach * scale,
        .panelReach = panelReach * scale,
    };
    if (isPlain)
        return shape;
    shape.arrowLength = arrowLength * scale;
    shape.arrowInset = (cornerRadius + arrowLength) * scale;
    shape.shadow = shadow * scale;
    shape.gap = gap * scale;
    return shape;
}

PixelSize contentSizeIn(PixelSize box, int scale)
{
    return { std::max(1, box.width / scale - 2 * border), std::max(1, box.height / scale - 2 * border) };
}

} // namespace desktop
