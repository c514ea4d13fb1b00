#include "platform/linux/appkit/ImageNative.h"

#include "platform/foundation/Bundle.h"
#include "platform/linux/statusarea/DecodedPicture.h"
#include "platform/linux/statusarea/SymbolicIcon.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
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

const std::string& iconFolder()
{
    static const auto folder = bundle().pathForResource("icons").value_or("").string();
    return folder;
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
    if (name == "AppStatusBarIcon") {
        native->iconName = assetIconName;
        native->iconFolder = iconFolder();
    }
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
    native->iconFolder = iconFolder();
    auto image = std::shared_ptr<Image>(new Image(name, accessibilityDescription, std::move(native)));
    image->setTemplate(true);
    return image;
}

void Image::setTemplate(bool isTemplate)
{
    isTemplate_ = isTemplate;
}

void Image::setSize(foundation::Size size)
{
    size_ = size;
}

std::shared_ptr<Image> Image::withData(std::string_view data)
{
    auto picture = desktop::decodePicture(data);
    if (!picture)
        return nullptr;
    auto native = std::make_unique<Native>();
    native->data = std::move(picture->png);
    if (!picture->outline.empty())
        native->iconName = desktop::madeIconName(picture->outline);
    native->outline = std::move(picture->outline);
    return std::shared_ptr<Image>(new Image({}, {}, std::move(native)));
}

std::shared_ptr<Image> Image::withSymbolConfiguration(const SymbolConfiguration& configuration) const
{
    auto native = std::make_unique<Native>(*native_);
    native->configuration = configuration;
    auto image = std::shared_ptr<Image>(new Image(name_, accessibilityDescription_, std::move(native)));
    image->setTemplate(isTemplate_);
    return image;
}

namespace {

/// What part of a status item's height points take: the bar of the points' home is 22 of them high, and a symbol is a
/// little larger than the letters of its size. Large ones come nearer to it, so that none are alike.
int percentOf(double points)
{
    constexpr auto fullHeight = 22.0;
    constexpr auto usualSize = 16.0;
    constexpr auto usualPercent = 84.0;
    const auto percent = points <= usualSize
        ? points * usualPercent / usualSize
        : usualPercent + (points - usualSize) * (100 - usualPercent) / (fullHeight - usualSize);
    return static_cast<int>(std::lround(std::clamp(percent, 1.0, 100.0)));
}

int percentOf(const Image& image)
{
    if (const auto& configuration = image.native().configuration)
        return percentOf(configuration->pointSize);
    return image.size().height > 0 ? percentOf(image.size().height) : 100;
}

int weightOf(const Font& font)
{
    switch (font.weight) {
    case FontWeight::Regular:
        return 400;
    case FontWeight::Medium:
        return 500;
    case FontWeight::Bold:
        break;
    }
    return 700;
}

std::string drawingOf(const Image::Native& native)
{
    if (!native.outline.empty())
        return native.outline;
    std::ifstream file(native.iconFolder / (native.iconName + ".svg"));
    return { std::istreambuf_iterator<char>(file), {} };
}

/// The image's icon, with room around it where it is not to take the whole square.
ThemedIcon madeIcon(const Image::Native& native, int percent)
{
    constexpr std::string_view ending = "-symbolic";
    std::optional<std::string> drawing = drawingOf(native);
    auto name = native.iconName;
    if (percent < 100) {
        drawing = desktop::withRoom(*drawing, percent);
        name.insert(name.size() - ending.size(), "-" + std::to_string(percent));
    }
    auto file = drawing ? desktop::MadeIcon::keep(name, *drawing) : nullptr;
    if (!file)
        return {};
    return { std::move(name), desktop::madeIconsFolder()->string(), std::move(file) };
}

} // namespace

std::shared_ptr<desktop::Picture> pictureOf(const Image& image)
{
    using Subject = desktop::Picture::Subject;
    const std::string colour = image.isTemplate() ? desktop::templateColour : "";
    if (!image.native().data.empty())
        return desktop::Picture::of({ Subject::Kind::Data, image.native().data, colour, percentOf(image) });
    return desktop::Picture::of({ Subject::Kind::File, image.native().path.string(), colour, percentOf(image) });
}

std::shared_ptr<desktop::Picture> pictureOf(const std::string& text, const Font& font)
{
    using Subject = desktop::Picture::Subject;
    // Users enter texts of any length, of which no more is drawn.
    constexpr std::size_t mostBytes = 512;
    return desktop::Picture::of({ Subject::Kind::Text, text.substr(0, mostBytes), desktop::templateColour,
        percentOf(font.pointSize), weightOf(font) });
}

ThemedIcon themedIconOf(const Image& image)
{
    const auto& native = image.native();
    if (!image.isTemplate() || native.iconName.empty())
        return {};
    const auto percent = percentOf(image);
    if (percent == 100 && !native.iconFolder.empty())
        return { native.iconName, native.iconFolder.string() };
    return madeIcon(native, percent);
}

} // namespace appkit
