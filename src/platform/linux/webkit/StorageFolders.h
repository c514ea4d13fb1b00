#pragma once

#include <filesystem>

namespace webkit {

/// Takes away what the engine leaves of its storage below its data folder after it has removed all data: for each site
/// with a page still open a folder without data, in which a file names the site. Data that a page has written since
/// stays.
void removeEmptyStorage(const std::filesystem::path& dataFolder);

/// Takes away the database in which tracking prevention takes notes of the sites, below the engine's data folder. Only
/// while that is switched off.
void removeTrackingNotes(const std::filesystem::path& dataFolder);

} // namespace webkit
