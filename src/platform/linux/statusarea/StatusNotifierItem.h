#pragma once

#include "platform/linux/statusarea/ExportedObject.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace desktop {

class MadeIcon;
class Picture;

/// An org.kde.StatusNotifierItem object: what a status area knows of an item. Main thread.
class StatusNotifierItem : public std::enable_shared_from_this<StatusNotifierItem> {
public:
    struct Appearance {
        /// A themed icon that hosts recolour, and the folder to look it up in. Empty: only the picture.
        std::string iconName;
        std::string iconThemePath;
        /// Keeps that icon's file there; null where it needs no keeping.
        std::shared_ptr<const MadeIcon> iconFile;
        /// For hosts that show text beside or in place of the picture.
        std::string label;
        std::shared_ptr<Picture> picture;
        /// What the item is called, also in the status area's own lists.
        std::string title;

        bool operator==(const Appearance&) const = default;
    };

    struct Configuration {
        std::string path;
        std::string id;
        std::string menuPath;
        /// A click opens the menu.
        bool isMenu = false;
        /// Hosts that know Activate call it before they think of the menu.
        bool hasActivate = true;
    };

    /// Which call of the host's it was: that for a click, for a click with the middle button, or for a menu that the
    /// host cannot show itself.
    enum class Click { Activate, SecondaryActivate, ContextMenu };

    /// In the coordinates that the host gave: no two hosts mean the same by them.
    using ClickHandler = std::function<void(Click, std::pair<int, int>)>;

    [[nodiscard]] static std::shared_ptr<StatusNotifierItem> create(
        GDBusConnection* connection, Configuration configuration, Appearance appearance, ClickHandler clicked);

    void setAppearance(Appearance appearance);
    [[nodiscard]] const Appearance& appearance() const { return appearance_; }

private:
    StatusNotifierItem(Configuration configuration, Appearance appearance, ClickHandler clicked);

    void handle(const BusCall& call);
    void answerPropertyRead(const BusCall& call, GVariant* pixmaps) const;
    [[nodiscard]] GVariant* propertyValue(std::string_view name, GVariant* pixmaps) const;
    [[nodiscard]] GVariant* textProperty(std::string_view name) const;
    void click(const BusCall& call);

    Configuration configuration_;
    Appearance appearance_;
    ClickHandler clicked_;
    GDBusInterfaceInfo* interface_;
    std::optional<ExportedObject> object_;
};

} // namespace desktop
