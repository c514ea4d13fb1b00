#include "platform/linux/appkit/ImageNative.h"

#include "platform/foundation/Bundle.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>

namespace appkit {
namespace {

using Aliases = std::map<std::string, std::string, std::less<>>;

const foundation::Bundle& bundle()
{
    return foundation::Bundle::mainBundle();
}

Aliases readAliases()
{
    Aliases aliases;
    const auto path = bundle().pathForResource("symbol-aliases.txt");
    if (!path)
        return aliases;
    std::ifstream file(*path);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string symbol;
        std::string drawing;
        if (words >> symbol >> drawing && !symbol.starts_with('#'))
            aliases.emplace(std::move(symbol), std::move(drawing));
    }
    return aliases;
}

std::optional<std::filesystem::path> fileOfDrawing(const std::string& drawing)
{
    return bundle().pathForResource("symbols/" + drawing + ".svg");
}

/// What the icon set calls the symbol, if it has it. Users type these names, so any text may come.
std::optional<std::string> drawingOfSymbol(std::string_view name)
{
    if (name.empty() || name.find_first_of("/_") != std::string_view::npos || name.find('\0') != std::string_view::npos)
        return std::nullopt;
    std::string drawing(name);
    std::ranges::replace(drawing, '.', '_');
    if (fileOfDrawing(drawing))
        return drawing;
    static const auto aliases = readAliases();
    const auto alias = aliases.find(name);
    if (alias == aliases.end() || !fileOfDrawing(alias->second))
        return std::nullopt;
    return alias->second;
}

constexpr std::string_view assetIconName = "org.perchly.Perchly-symbolic";

} // namespace

Image::Image(std::string_view name, std::string_view accessibilityDescription, std::unique_ptr<Native> native)
    : name_(name)
    , accessibilityDescription_(accessibilityDescription)
    , native_(std::move(native))
{
}

Image::~Image() = default;

std::shared_ptr<Image> Image::imageNamed(std::string_view name)
{
    const auto path = bundle().pathForResource(std::string(name) + ".svg");
    if (!path)
        return nullptr;
    auto native = std::make_unique<Native>();
    native->path = *path;
    if (name == "AppStatusBarIcon")
        native->iconName = assetIconName;
    return std::shared_ptr<Image>(new Image(name, {}, std::move(native)));
}

std::shared_ptr<Image> Image::systemSymbol(std::string_view name, std::string_view accessibilityDescription)
{
    const auto drawing = drawingOfSymbol(name);
    if (!drawing)
        return nullptr;
    auto native = std::make_unique<Native>();
    native->path = fileOfDrawing(*drawing).value();
    native->iconName = "perchly-" + *drawing + "-symbolic";
    auto image = std::shared_ptr<Image>(new Image(name, accessibilityDescription, std::move(native)));
    image->setTemplate(true);
    return image;
}

void Image::setTemplate(bool isTemplate)
{
    isTemplate_ = isTemplate;
}

std::shared_ptr<desktop::Picture> pictureOf(const Image& image)
{
    using Subject = desktop::Picture::Subject;
    return desktop::Picture::of(
        { Subject::Kind::File, image.native().path.string(), image.isTemplate() ? desktop::templateColour : "" });
}

const std::string& iconFolder()
{
    static const auto folder = bundle().pathForResource("icons").value_or("").string();
    return folder;
}

} // namespace appkit
