#pragma once

#include "platform/appkit/TextField.h"
#include "platform/appkit/ViewController.h"

#include <memory>

namespace appkit {
class Button;
}

namespace perchly {

/// The settings: the home page, what to clear and what to reset. Main thread.
class SettingsViewController : public appkit::ViewController,
                               public appkit::TextFieldDelegate,
                               public std::enable_shared_from_this<SettingsViewController> {
public:
    SettingsViewController() = default;

    /// Nothing: the checkbox is there for what is not built yet.
    void toggleLaunchAtLogin();
    void saveHomePage();
    /// Asks, and then removes the data of all sites.
    void clearCache();
    /// Asks, and then goes back to the settings and bookmarks of a first start.
    void resetAllData();

    /// Null until the view is loaded.
    [[nodiscard]] const std::shared_ptr<appkit::TextField>& homePageTextField() const { return homePageTextField_; }

    bool controlDoCommandBySelector(appkit::TextField& field, std::string_view selector) override;

protected:
    void loadView() override;

private:
    [[nodiscard]] std::shared_ptr<appkit::View> makeHomePageRow();

    std::shared_ptr<appkit::TextField> homePageTextField_;
};

} // namespace perchly
