#include "platform/linux/statusarea/SymbolicIcon.h"

#include "platform/linux/desktop/GObject.h"
#include "platform/linux/foundation/UserDirectory.h"

#include <fcntl.h>
#include <fstream>
#include <glib/gstdio.h>
#include <iterator>
#include <locale>
#include <map>
#include <sstream>
#include <unistd.h>

namespace desktop {
namespace {

std::string contentsOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

} // namespace

std::optional<std::filesystem::path> madeIconsFolder()
{
    const auto caches = foundation::userDirectory("XDG_CACHE_HOME", ".cache");
    return caches ? std::optional(*caches / "Perchly" / "icons") : std::nullopt;
}

std::optional<std::string> withRoom(const std::string& drawing, int percent)
{
    constexpr std::string_view attribute = "viewBox=\"";
    const auto found = drawing.find(attribute);
    if (found == std::string::npos)
        return std::nullopt;
    const auto begin = found + attribute.size();
    const auto end = drawing.find('"', begin);
    std::istringstream numbers(drawing.substr(begin, end - begin));
    numbers.imbue(std::locale::classic());
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    if (!(numbers >> x >> y >> width >> height) || width != height || width <= 0 || percent < 1)
        return std::nullopt;
    const auto side = width * 100 / percent;
    const auto room = (side - width) / 2;
    std::ostringstream box;
    box.imbue(std::locale::classic());
    box << x - room << ' ' << y - room << ' ' << side << ' ' << side;
    return drawing.substr(0, begin) + box.str() + drawing.substr(end);
}

namespace {

bool write(const std::filesystem::path& file, const std::string& drawing)
{
    if (contentsOf(file) == drawing)
        return true;
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    auto unfinished = (file.parent_path() / ".new-XXXXXX").string();
    const auto descriptor = g_mkstemp_full(unfinished.data(), O_WRONLY | O_CLOEXEC, 0644);
    if (descriptor < 0)
        return false;
    // Not opened anew: to truncate a file has some file systems write it to the disk when it is closed.
    const auto written = ::write(descriptor, drawing.data(), drawing.size());
    const bool isWritten = g_close(descriptor, nullptr) && written == static_cast<gssize>(drawing.size());
    if (isWritten)
        std::filesystem::rename(unfinished, file, error);
    const bool isKept = isWritten && !error;
    if (!isKept)
        std::filesystem::remove(unfinished, error);
    return isKept;
}

using Icons = std::map<std::filesystem::path, std::weak_ptr<const MadeIcon>>;

/// Those that are shown, by their files.
Icons& shownIcons()
{
    // Never destroyed: items show their icons until the very end.
    static auto& icons = *new Icons;
    return icons;
}

void removeUnusedIconsLater()
{
    constexpr unsigned patience = 30000;
    static const auto removal = callAfter(patience, removeUnusedIcons);
}

} // namespace

std::shared_ptr<const MadeIcon> MadeIcon::keep(const std::string& name, const std::string& drawing)
{
    const auto folder = madeIconsFolder();
    const auto file = folder ? *folder / (name + ".svg") : std::filesystem::path();
    if (!folder || drawing.empty() || !write(file, drawing))
        return nullptr;
    removeUnusedIconsLater();
    auto& known = shownIcons()[file];
    auto icon = known.lock();
    if (!icon)
        known = icon = std::shared_ptr<const MadeIcon>(new MadeIcon(file));
    return icon;
}

MadeIcon::~MadeIcon()
{
    shownIcons().erase(file_);
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
}

void removeUnusedIcons()
{
    const auto folder = madeIconsFolder();
    if (!folder)
        return;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(*folder, ignored)) {
        if (!shownIcons().contains(entry.path()))
            std::filesystem::remove(entry.path(), ignored);
    }
}

std::string madeIconName(const std::string& drawing)
{
    const GLibPointer<> sum(g_compute_checksum_for_data(
        G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(drawing.data()), drawing.size()));
    return "perchly-" + std::string(sum.get()).substr(0, 20) + "-symbolic";
}

} // namespace desktop
