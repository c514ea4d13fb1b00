#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/popover/FramePicture.h"
#include "platform/linux/popover/RoundedContent.h"
#include "support/linux/ToolkitFunction.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

namespace {

using desktop::FramePicture;
using desktop::FrameShape;
using desktop::RenderNodePointer;
using perchly::test::toolkitFunction;

constexpr int width = 120;
constexpr int height = 90;
constexpr float radius = 11;
constexpr graphene_rect_t box { { 18, 10 }, { 84, 62 } };
constexpr GdkRGBA paper { 0.96F, 0.96F, 0.95F, 1 };
constexpr GdkRGBA night { 0.2F, 0.2F, 0.22F, 1 };
constexpr GdkRGBA glass { 0.9F, 0.2F, 0.1F, 0.6F };

class PopoverDrawingTest : public testing::Test {
protected:
    void SetUp() override { desktop::loadToolkit(); }
};

using Pixels = std::vector<unsigned char>;
using Draw = std::function<void(GtkSnapshot*)>;

RenderNodePointer record(const Draw& draw)
{
    auto* snapshot = gtk_snapshot_new();
    draw(snapshot);
    return RenderNodePointer(gtk_snapshot_free_to_node(snapshot));
}

Pixels drawn(const Draw& draw, int scale = 1)
{
    auto* image = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width * scale, height * scale);
    cairo_surface_set_device_scale(image, scale, scale);
    auto* context = cairo_create(image);
    const auto node = record(draw);
    gsk_render_node_draw(node.get(), context);
    cairo_destroy(context);
    cairo_surface_flush(image);
    const auto* data = cairo_image_surface_get_data(image);
    constexpr std::size_t pixel = 4;
    const auto size = pixel * width * height * static_cast<std::size_t>(scale * scale);
    Pixels pixels(data, data + size);
    cairo_surface_destroy(image);
    return pixels;
}

/// How far the two are apart where they differ most.
int difference(const Pixels& first, const Pixels& second)
{
    auto most = first.size() == second.size() ? 0 : 255;
    for (std::size_t index = 0; most < 255 && index < first.size(); ++index)
        most = std::max(most, std::abs(first[index] - second[index]));
    return most;
}

void appendColor(GtkSnapshot* snapshot, const GdkRGBA& color, const graphene_rect_t& place)
{
    const RenderNodePointer node(gsk_color_node_new(&color, &place));
    gtk_snapshot_append_node(snapshot, node.get());
}

/// A box with rounded corners and a soft shadow.
RenderNodePointer frameOf(const GdkRGBA& color)
{
    return record([&](GtkSnapshot* snapshot) {
        const auto appendShadow = toolkitFunction<void (*)(GtkSnapshot*, const GskRoundedRect*, const GdkRGBA*, float,
            float, float, float)>("gtk_snapshot_append_outset_shadow");
        GskRoundedRect outline;
        gsk_rounded_rect_init_from_rect(&outline, &box, radius + 1);
        constexpr GdkRGBA shadow { 0, 0, 0, 0.3F };
        appendShadow(snapshot, &outline, &shadow, 0, 3, 1, 11);
        gtk_snapshot_push_rounded_clip(snapshot, &outline);
        appendColor(snapshot, color, box);
        gtk_snapshot_pop(snapshot);
    });
}

FrameShape shapeAt(int scale)
{
    return { width, height, { 19, 11, 82, 60 }, static_cast<int>(radius), scale };
}

TEST_F(PopoverDrawingTest, AFrameThatIsKeptLooksAsItWasDrawn)
{
    for (const auto& [color, scale] : { std::pair(paper, 1), std::pair(paper, 2), std::pair(glass, 1) }) {
        FramePicture picture;
        const auto frame = frameOf(color);
        const auto shape = shapeAt(scale);
        const auto append = [&](GtkSnapshot* snapshot) { picture.append(snapshot, frame.get(), shape); };
        const auto direct
            = drawn([&](GtkSnapshot* snapshot) { gtk_snapshot_append_node(snapshot, frame.get()); }, scale);
        EXPECT_EQ(difference(drawn(append, scale), direct), 0);
        for (auto again = 0; again < 3; ++again)
            EXPECT_LE(difference(drawn(append, scale), direct), 1) << "at scale " << scale << ", " << color.alpha;
    }
}

TEST_F(PopoverDrawingTest, AFrameIsOnlyKeptWhileItLooksTheSame)
{
    FramePicture picture;
    const auto day = frameOf(paper);
    const auto dark = frameOf(night);
    const auto append = [&](const RenderNodePointer& frame) {
        return drawn([&](GtkSnapshot* snapshot) { picture.append(snapshot, frame.get(), shapeAt(1)); });
    };
    const auto light = append(day);
    EXPECT_LE(difference(append(day), light), 1);
    const auto inTheDark = append(dark);
    EXPECT_GT(difference(inTheDark, light), 100);
    EXPECT_LE(difference(append(dark), inTheDark), 1);
    EXPECT_LE(difference(append(day), light), 1);
}

TEST_F(PopoverDrawingTest, AFrameIsKeptAsPixels)
{
    FramePicture picture;
    const auto frame = frameOf(paper);
    const auto kindOfPieces = [&] {
        const auto node = record([&](GtkSnapshot* snapshot) { picture.append(snapshot, frame.get(), shapeAt(1)); });
        return gsk_render_node_get_node_type(gsk_container_node_get_child(node.get(), 1));
    };
    EXPECT_NE(kindOfPieces(), GSK_CAIRO_NODE);
    EXPECT_EQ(kindOfPieces(), GSK_CAIRO_NODE);
}

/// A page of two colours below a bar with a button that is drawn elsewhere than at its own origin.
RenderNodePointer pageWithBar()
{
    return record([](GtkSnapshot* snapshot) {
        constexpr GdkRGBA bar { 0.8F, 0.1F, 0.1F, 1 };
        constexpr GdkRGBA page { 0.1F, 0.5F, 0.9F, 1 };
        constexpr GdkRGBA button { 0, 0.6F, 0, 0.5F };
        constexpr graphene_point_t corner { 18, 10 };
        constexpr graphene_rect_t barPlace { { 0, 0 }, { 84, 20 } };
        constexpr graphene_rect_t pagePlace { { 0, 20 }, { 84, 42 } };
        constexpr graphene_rect_t buttonPlace { { -4, -4 }, { 12, 16 } };
        constexpr graphene_point_t buttonCorner { 6, 5 };
        gtk_snapshot_translate(snapshot, &corner);
        appendColor(snapshot, bar, barPlace);
        appendColor(snapshot, page, pagePlace);
        gtk_snapshot_save(snapshot);
        gtk_snapshot_translate(snapshot, &buttonCorner);
        toolkitFunction<void (*)(GtkSnapshot*, float)>("gtk_snapshot_rotate")(snapshot, 8);
        appendColor(snapshot, button, buttonPlace);
        gtk_snapshot_restore(snapshot);
    });
}

TEST_F(PopoverDrawingTest, RoundedContentLooksAsThroughARoundedClip)
{
    const auto content = pageWithBar();
    for (const auto scale : { 1, 2 }) {
        const auto clipped = drawn(
            [&](GtkSnapshot* snapshot) {
                GskRoundedRect rounded;
                gsk_rounded_rect_init_from_rect(&rounded, &box, radius);
                gtk_snapshot_push_rounded_clip(snapshot, &rounded);
                gtk_snapshot_append_node(snapshot, content.get());
                gtk_snapshot_pop(snapshot);
            },
            scale);
        const auto rounded = drawn(
            [&](GtkSnapshot* snapshot) { desktop::appendRounded(snapshot, content.get(), box, radius); }, scale);
        EXPECT_LE(difference(rounded, clipped), 2) << "at scale " << scale;
    }
}

} // namespace
