#pragma once

#include <memory>
#include <string>
#include <vector>

namespace appkit {

class View;
class Window;

enum class AlertStyle { Warning, Informational, Critical };

/// A question or notice in a window of its own. Without buttons added it shows a single "OK".
class Alert {
public:
    std::string messageText;
    std::string informativeText;
    AlertStyle style = AlertStyle::Warning;
    std::vector<std::string> buttonTitles;
    /// Shown between the texts and the buttons, at its own size.
    std::shared_ptr<View> accessoryView;

    /// Shows the alert before all windows of the application and returns, when it was answered, the index of the
    /// button: Return is the first one's key, Escape the last one's. Other events are handled meanwhile.
    std::size_t runModal();

    /// Shows the alert attached to the window and returns at once; nothing waits for the answer. The alert may go.
    void beginSheetModal(const std::shared_ptr<Window>& window) const;

    /// The alert that is attached to the window now, or null.
    [[nodiscard]] static Alert* sheetOf(const Window& window);

    /// The alert whose answer runModal is waiting for, the latest of several, or null.
    [[nodiscard]] static Alert* running();

    /// Answers a running alert or a sheet.
    void performClick(std::size_t buttonIndex);

private:
    struct Native;
    Native* native_ = nullptr;
};

} // namespace appkit
