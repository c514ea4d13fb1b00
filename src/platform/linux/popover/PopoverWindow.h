#pragma once

#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/WindowContent.h"
#include "platform/linux/popover/PopoverDismissal.h"
#include "platform/linux/popover/PopoverPlacement.h"
#include "platform/linux/popover/PressWatch.h"

#include <gtk/gtk.h>

#include <array>
#include <functional>
#include <optional>

namespace desktop {

/// The popover's window: one content in a bubble, at its place on the screen. It watches for what makes a popover
/// close, but leaves the closing to its owner. While hidden it watches nothing.
class PopoverWindow {
public:
    /// Closes is called when the popover ought to be hidden.
    explicit PopoverWindow(std::function<void()> closes);
    ~PopoverWindow();
    PopoverWindow(const PopoverWindow&) = delete;
    PopoverWindow& operator=(const PopoverWindow&) = delete;

    void setTransient(bool isTransient) { dismissal_.setTransient(isTransient); }
    void setAnimates(bool animates);

    /// The content that was there leaves; null for none. Takes the widget out of wherever it is. While hidden the
    /// window keeps its last content until another comes or somebody takes it: most often it is the next one again,
    /// and putting a page back is a fifth of a showing.
    void setContent(GtkWidget* content)
    {
        if (content || isShown_)
            content_.set(content);
    }
    void setContentSize(int width, int height);

    /// Brings the bubble to the anchor and gives it the keyboard, whether or not it is shown already.
    void show(std::optional<PixelPoint> anchor);
    void hide();
    [[nodiscard]] bool isShown() const { return isShown_; }

    /// The click that a status item tells of now has already closed the popover: it lost the keyboard to it.
    [[nodiscard]] bool wasClosedByClick() const;

    [[nodiscard]] GtkWindow* window() const { return GTK_WINDOW(window_); }

private:
    void connectSignals();
    void layOut();
    void setInputRegion();
    void present();
    void startWatching();
    void stopWatching();

    void activeChanged();
    void pressed(const PressWatch::Press& press);
    void apply(const PopoverDismissal::Decision& decision);
    [[nodiscard]] bool isPlain() const;
    [[nodiscard]] bool isOurs(const PressWatch::Press& press) const;
    [[nodiscard]] bool hasDialog() const;
    [[nodiscard]] PopoverDismissal::Surroundings surroundings() const;

    std::function<void()> closes_;
    GtkWidget* window_;
    GtkWidget* background_;
    WindowContent content_;
    int contentWidth_ = 1;
    int contentHeight_ = 1;
    std::optional<PixelPoint> anchor_;
    PixelRect frame_;
    bool isShown_ = false;
    bool isPlaceChecked_ = false;

    PopoverDismissal dismissal_;
    std::optional<PressWatch> presses_;
    SourceHandle waking_;
    std::array<SignalConnection, 4> connections_;
};

} // namespace desktop
