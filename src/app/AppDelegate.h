#pragma once

#include "platform/appkit/Application.h"

#include <memory>

namespace perchly {

class StatusBarController;

/// Starts the application: an accessory without a Dock icon whose status item is all that shows. Main thread.
class AppDelegate : public appkit::ApplicationDelegate, public std::enable_shared_from_this<AppDelegate> {
public:
    AppDelegate();
    ~AppDelegate() override;

    /// Only queues completeLaunch: set-up belongs to the first turn of the running main loop.
    void applicationDidFinishLaunching() override;

    /// Brings up the general browser, as soon as set-up has run.
    void applicationStartedAgain() override;

    /// Null until set-up has run.
    [[nodiscard]] const std::shared_ptr<StatusBarController>& statusBarController() const
    {
        return statusBarController_;
    }

private:
    void completeLaunch();

    std::shared_ptr<StatusBarController> statusBarController_;
    bool startedAgain_ = false;
};

} // namespace perchly
