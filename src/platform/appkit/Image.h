#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace appkit {

/// A picture from the application's resources or from the system's symbols.
class Image {
public:
    /// The asset of that name, or null.
    [[nodiscard]] static std::shared_ptr<Image> imageNamed(std::string_view name);

    /// The system symbol of that name, or null. Symbols are template images.
    [[nodiscard]] static std::shared_ptr<Image> systemSymbol(
        std::string_view name, std::string_view accessibilityDescription = {});

    ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] const std::string& accessibilityDescription() const { return accessibilityDescription_; }

    /// A template image is a mask: only its coverage counts, its colour is the surroundings'.
    [[nodiscard]] bool isTemplate() const { return isTemplate_; }
    void setTemplate(bool isTemplate);

    struct Native;
    [[nodiscard]] const Native& native() const { return *native_; }

private:
    Image(std::string_view name, std::string_view accessibilityDescription, std::unique_ptr<Native> native);

    std::string name_;
    std::string accessibilityDescription_;
    bool isTemplate_ = false;
    std::unique_ptr<Native> native_;
};

} // namespace appkit
