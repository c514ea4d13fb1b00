#include "platform/linux/webkit/StorageFolders.h"

#include <algorithm>
#include <vector>

namespace webkit {
namespace {

namespace fs = std::filesystem;

/// Names the site that the data around it belongs to.
constexpr auto nameFile = "origin";

std::vector<fs::path> foldersIn(const fs::path& folder)
{
    std::vector<fs::path> folders;
    std::error_code isMissing;
    for (const auto& entry : fs::directory_iterator(folder, isMissing)) {
        if (entry.is_directory(isMissing))
            folders.push_back(entry.path());
    }
    return folders;
}

bool holdsData(const fs::path& folder)
{
    std::error_code isGone;
    const fs::recursive_directory_iterator entries(folder, isGone);
    return std::any_of(begin(entries), end(entries),
        [&isGone](const auto& entry) { return entry.is_regular_file(isGone) && entry.path().filename() != nameFile; });
}

/// What is in a folder whose name file was taken away, the engine can't find by itself in a later run.
bool isNameless(const fs::path& folder)
{
    std::error_code isUnknown;
    return !fs::exists(folder / nameFile, isUnknown);
}

} // namespace

void removeEmptyStorage(const std::filesystem::path& dataFolder)
{
    std::error_code ignored;
    // One folder for each site in whose page others may be embedded, with one for each of these.
    for (const auto& site : foldersIn(dataFolder / "storage")) {
        for (const auto& embedded : foldersIn(site)) {
            if (!holdsData(embedded) || isNameless(embedded))
                fs::remove_all(embedded, ignored);
        }
        fs::remove(site, ignored); // only when nothing is left in it
    }
}

void removeTrackingNotes(const std::filesystem::path& dataFolder)
{
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(dataFolder / "itp", ignored))
        fs::remove(entry.path(), ignored);
}

} // namespace webkit
