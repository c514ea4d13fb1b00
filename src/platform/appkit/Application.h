#pragma once

#include "platform/appkit/Event.h"

#include <memory>
#include <optional>

namespace appkit {

class Image;
class Menu;

class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;
    virtual void applicationDidFinishLaunching() = 0;

    /// The program was started once more while it runs; comes where each start is a process of its own.
    virtual void applicationStartedAgain() = 0;
};

enum class ActivationPolicy { Regular, Accessory };

/// The running program: its main loop, its main menu and its place among the others. Main thread.
class Application {
public:
    static Application& sharedApplication();

    void setDelegate(std::weak_ptr<ApplicationDelegate> delegate);

    /// Runs the main loop until terminate(); the exit status. A program that runs already is told of the second
    /// start instead, and 0 is returned at once.
    int run(int argc, char** argv);

    void setActivationPolicy(ActivationPolicy policy);
    [[nodiscard]] ActivationPolicy activationPolicy() const;

    /// Its key equivalents work in every window of the application, also where the menu itself is not shown.
    void setMainMenu(std::shared_ptr<Menu> menu);
    [[nodiscard]] const std::shared_ptr<Menu>& mainMenu() const;

    /// The event whose handling is under way; none between events.
    [[nodiscard]] std::optional<Event> currentEvent() const;

    /// The application's own icon.
    [[nodiscard]] std::shared_ptr<Image> applicationIconImage() const;

    /// Makes the application the active one, even over another that the user works with.
    void activateIgnoringOtherApps();

    void terminate();

    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

private:
    Application();
    ~Application();

    struct Native;
    std::unique_ptr<Native> native_;
};

} // namespace appkit
