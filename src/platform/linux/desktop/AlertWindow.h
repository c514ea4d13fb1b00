#pragma once

#include <gtk/gtk.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace desktop {

struct AlertContent {
    std::string message;
    std::string details;
    /// The first confirms, the last declines.
    std::vector<std::string> buttonTitles;
    /// Shown above the buttons; null for none. Not owned.
    GtkWidget* accessory = nullptr;
    /// What is confirmed can't be taken back.
    bool isDestructive = false;
};

/// Makes, and does not yet show, the window of a question or notice in front of the parent (or null). `answer` is
/// called with a button's index; Escape and closing the window answer with the last one.
[[nodiscard]] GtkWindow* makeAlertWindow(
    const AlertContent& content, GtkWindow* parent, const std::function<void(std::size_t)>& answer);

/// Shows the window before all others, those that float included, and gives it the keyboard.
void presentAbove(GtkWindow* window);

/// Shows the window in the middle of the parent, where a program may choose the place.
void presentOver(GtkWindow* window, GtkWindow* parent);

} // namespace desktop
