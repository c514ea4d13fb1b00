#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace desktop {

/// Where drawings that are made while Perchly runs are kept for status areas to find; none without a home folder.
/// Its last component is "icons", which some of them insist on.
[[nodiscard]] std::optional<std::filesystem::path> madeIconsFolder();

/// The drawing with so much room around it that it takes that percentage of the square. None for a text that is no
/// drawing with a square box.
[[nodiscard]] std::optional<std::string> withRoom(const std::string& drawing, int percent);

/// Sees to it that the folder of made icons has that file, whole at any moment. False where it cannot.
[[nodiscard]] bool keepMadeIcon(const std::string& name, const std::string& drawing);

/// A name that drawings with other contents do not get.
[[nodiscard]] std::string madeIconName(const std::string& drawing);

} // namespace desktop
