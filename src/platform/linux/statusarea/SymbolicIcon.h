#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace desktop {

/// Where drawings that are made while Perchly runs are kept for status areas to find; none without a home folder.
/// Its last component is "icons", which some of them insist on.
[[nodiscard]] std::optional<std::filesystem::path> madeIconsFolder();

/// The drawing with so much room around it that it takes that percentage of the square. None for a text that is no
/// drawing with a square box.
[[nodiscard]] std::optional<std::string> withRoom(const std::string& drawing, int percent);

/// A file in the folder of made icons, which goes with the last who shows it. Main thread.
class MadeIcon {
public:
    /// Sees to it that the file is there, whole at any moment. Null where it cannot.
    [[nodiscard]] static std::shared_ptr<const MadeIcon> keep(const std::string& name, const std::string& drawing);
    ~MadeIcon();
    MadeIcon(const MadeIcon&) = delete;
    MadeIcon& operator=(const MadeIcon&) = delete;

private:
    explicit MadeIcon(std::filesystem::path file)
        : file_(std::move(file))
    {
    }

    std::filesystem::path file_;
};

/// Removes what an earlier run has left in the folder, which is what nobody shows. Done of itself some time after the
/// first icon was made, when those that are shown at a start are there and need not be made again.
void removeUnusedIcons();

/// A name that drawings with other contents do not get.
[[nodiscard]] std::string madeIconName(const std::string& drawing);

} // namespace desktop
