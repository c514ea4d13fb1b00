#pragma once

#include <chrono>
#include <optional>

namespace desktop {

/// Decides when a popover closes. It is told of events and of the time and answers what to do; it asks nobody.
///
/// A window loses the keyboard also for a moment, to a panel's menu or a volume key. Therefore losing it only starts
/// a time of grace, and what is found at its end counts.
class PopoverDismissal {
public:
    using Time = std::chrono::milliseconds;

    /// From the loss of the keyboard to the look around.
    static constexpr Time grace { 150 };
    /// A click on an item that itself made the popover close must not open it again.
    static constexpr Time reopenGuard { 400 };

    /// Where a pointer button went down.
    enum class Press { Inside, OnItem, Elsewhere };

    /// What there is at the end of the time of grace.
    struct Surroundings {
        /// The popover has the keyboard.
        bool isActive = false;
        /// The window manager still counts the popover as the active window: someone only borrows the keyboard.
        bool isActiveWindow = false;
        /// An alert, a file chooser or a menu of ours is in front of the popover.
        bool hasDialog = false;
        bool isButtonDown = false;
    };

    struct Decision {
        bool closes = false;
        /// A dialog of ours has gone: take the keyboard back, whoever the window manager gave it to.
        bool takesKeyboard = false;
        /// Call woken() after this time.
        std::optional<Time> wakesAfter {};
        bool operator==(const Decision&) const = default;
    };

    /// Only a transient popover closes by itself. Initially it is not.
    void setTransient(bool isTransient) { isTransient_ = isTransient; }

    void shown();
    /// Whoever closed it. Comes after the decision, if it was one of these.
    void closed(Time now);

    [[nodiscard]] Decision activeChanged(bool isActive);
    [[nodiscard]] Decision woken(const Surroundings& surroundings);
    [[nodiscard]] Decision pressed(Press press, bool hasDialog);
    /// Escape, when nothing inside wanted it.
    [[nodiscard]] Decision escapePressed();

    /// True where a direct click on the popover's own item that arrives now is the click that made the popover close.
    [[nodiscard]] bool wasClosedByClick(Time now) const;

private:
    [[nodiscard]] Decision turnAway();

    bool isTransient_ = false;
    bool isShown_ = false;
    bool isInGrace_ = false;
    bool wasBehindDialog_ = false;
    bool turnedAway_ = false;
    std::optional<Time> turnedAwayAt_;
};

} // namespace desktop
