#pragma once

#include "platform/appkit/Font.h"
#include "platform/foundation/Geometry.h"

#include <memory>
#include <string>
#include <string_view>

namespace appkit {

/// How large and how bold a symbol is drawn, as if it were a letter of that font.
struct SymbolConfiguration {
    double pointSize;
    FontWeight weight;
};

/// A picture from the application's resources, from the system's symbols or from elsewhere.
class Image {
public:
    /// The asset of that name, or null.
    [[nodiscard]] static std::shared_ptr<Image> imageNamed(std::string_view name);

    /// The system symbol of that name, or null. Symbols are template images.
    [[nodiscard]] static std::shared_ptr<Image> systemSymbol(
        std::string_view name, std::string_view accessibilityDescription = {});

    /// The picture in the bytes of a file (PNG, JPEG, GIF, ICO, WebP, SVG, ...), or null. Any thread; may take a while.
    [[nodiscard]] static std::shared_ptr<Image> withData(std::string_view data);

    /// The symbol again, as the configuration says.
    [[nodiscard]] std::shared_ptr<Image> withSymbolConfiguration(const SymbolConfiguration& configuration) const;

    ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] const std::string& accessibilityDescription() const { return accessibilityDescription_; }

    /// A template image is a mask: only its coverage counts, its colour is the surroundings'.
    [[nodiscard]] bool isTemplate() const { return isTemplate_; }
    void setTemplate(bool isTemplate);

    /// What the image is drawn at, in points; zero until it is known.
    void setSize(foundation::Size size);
    [[nodiscard]] foundation::Size size() const { return size_; }

    struct Native;
    [[nodiscard]] const Native& native() const { return *native_; }

private:
    Image(std::string_view name, std::string_view accessibilityDescription, std::unique_ptr<Native> native);

    std::string name_;
    std::string accessibilityDescription_;
    bool isTemplate_ = false;
    foundation::Size size_;
    std::unique_ptr<Native> native_;
};

} // namespace appkit
