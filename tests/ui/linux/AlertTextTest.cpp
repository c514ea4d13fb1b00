#include "platform/appkit/Alert.h"
#include "platform/foundation/DispatchQueue.h"
#include "support/MainLoop.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <string>
#include <vector>

namespace {

using appkit::Alert;
using perchly::test::waitUntil;

constexpr std::size_t megabyte = 1'000'000;

std::string filledWith(std::string_view text)
{
    std::string filled;
    while (filled.size() < megabyte)
        filled += text;
    return filled;
}

GtkWidget* shownAlert()
{
    GtkWidget* found = nullptr;
    auto* windows = gtk_window_list_toplevels();
    for (auto* link = windows; link; link = link->next) {
        if (gtk_widget_get_mapped(GTK_WIDGET(link->data)))
            found = GTK_WIDGET(link->data);
    }
    g_list_free(windows);
    return found;
}

/// The texts in the window, from above.
void collectTexts(GtkWidget* widget, std::vector<std::string>& texts)
{
    if (GTK_IS_LABEL(widget))
        texts.emplace_back(gtk_label_get_text(GTK_LABEL(widget)));
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child))
        collectTexts(child, texts);
}

/// Which of the classes that themes know the default button has.
std::string lookOfDefault(GtkWidget* window)
{
    auto* button = gtk_window_get_default_widget(GTK_WINDOW(window));
    for (const auto* look : { "suggested-action", "destructive-action" }) {
        if (button && gtk_widget_has_css_class(button, look))
            return look;
    }
    return {};
}

struct ShownAlert {
    std::string look;
    int width = 0;
    int height = 0;
    std::vector<std::string> texts;
};

/// What the user sees of the question before he confirms it.
ShownAlert shown(Alert alert)
{
    ShownAlert seen;
    foundation::dispatchMainAsync([&] {
        EXPECT_TRUE(waitUntil([] { return shownAlert() && gtk_window_is_active(GTK_WINDOW(shownAlert())); }));
        if (auto* window = shownAlert()) {
            seen.width = gtk_widget_get_width(window);
            seen.height = gtk_widget_get_height(window);
            collectTexts(window, seen.texts);
            seen.look = lookOfDefault(window);
        }
        alert.performClick(0);
    });
    alert.runModal();
    return seen;
}

TEST(AlertTextTest, AMegabyteFitsOnTheScreen)
{
    for (const auto* text : { "x", "word ", "\n", "two\nlines ", "\u4E16\u754C" }) {
        Alert alert;
        alert.messageText = filledWith(text);
        alert.informativeText = filledWith(text);

        const auto seen = shown(alert);

        EXPECT_LE(seen.width, 640) << text;
        EXPECT_LE(seen.height, 1000) << text;
        ASSERT_GE(seen.texts.size(), 2U);
        for (std::size_t label = 0; label < 2; ++label)
            EXPECT_TRUE(seen.texts[label].ends_with("\u2026")) << text;
    }
}

TEST(AlertTextTest, TextsOfAnOrdinaryLengthAreShownInFull)
{
    Alert alert;
    alert.messageText = "Question?";
    alert.informativeText = std::string(400, 'x') + "\nand\nfour\nlines";

    const auto seen = shown(alert);

    ASSERT_GE(seen.texts.size(), 2U);
    EXPECT_EQ(seen.texts[0], alert.messageText);
    EXPECT_EQ(seen.texts[1], alert.informativeText);
}

TEST(AlertTextTest, WhatEndsATextInCEndsNoneHere)
{
    Alert alert;
    alert.messageText = std::string("before\0after", 12);

    const auto seen = shown(alert);

    ASSERT_FALSE(seen.texts.empty());
    EXPECT_EQ(seen.texts[0], "before\u2400after");
}

TEST(AlertTextTest, OnlyTheChoiceOfACriticalQuestionLooksDestructive)
{
    Alert alert;
    alert.style = appkit::AlertStyle::Critical;
    EXPECT_EQ(shown(alert).look, "suggested-action");

    alert.buttonTitles = { "Reset", "Cancel" };
    EXPECT_EQ(shown(alert).look, "destructive-action");

    alert.style = appkit::AlertStyle::Warning;
    EXPECT_EQ(shown(alert).look, "suggested-action");
}

} // namespace
