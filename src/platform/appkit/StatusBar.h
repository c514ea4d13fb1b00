#pragma once

#include <memory>

namespace appkit {

class StatusItem;

/// The system's status bar, beside the clock. Main thread.
class StatusBar {
public:
    static StatusBar& systemStatusBar();

    /// A new item of variable length. It appears as soon as the bar is there, and again whenever the bar returns.
    [[nodiscard]] std::shared_ptr<StatusItem> statusItem();

    /// Takes the item out of the bar, whoever has it still.
    void removeStatusItem(StatusItem& item);
};

} // namespace appkit
