#include "pinned/StatusItemIcon.h"

#include "Product.h"
#include "bookmarks/Address.h"
#include "bookmarks/Bookmark.h"
#include "bookmarks/BookmarkPresets.h"
#include "bookmarks/Preferences.h"
#include "bookmarks/UserAgents.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/foundation/Character.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/URLSession.h"
#include "platform/foundation/UserDefaults.h"

#include <algorithm>

namespace perchly {
namespace {

using appkit::Font;
using appkit::FontWeight;
using appkit::Image;
using appkit::StatusBarButton;
using foundation::URL;
using foundation::URLSession;

constexpr double letterSize = 13;

void showImage(StatusBarButton& button, std::shared_ptr<Image> image)
{
    button.setImage(std::move(image));
    button.setTitle({});
    button.setImagePosition(appkit::ImagePosition::ImageOnly);
}

void showText(StatusBarButton& button, std::string_view text, const Font& font)
{
    button.setImage(nullptr);
    button.setTitle(text);
    button.setImagePosition(appkit::ImagePosition::NoImage);
    button.setFont(font);
}

void showDownloaded(StatusBarButton& button, std::shared_ptr<Image> image, double size, bool isTemplate)
{
    image->setSize({ size, size });
    image->setTemplate(isTemplate);
    showImage(button, std::move(image));
}

bool isDrawing(std::string_view address)
{
    constexpr std::string_view ending = ".svg";
    if (address.size() < ending.size())
        return false;
    const auto isSame = [](char left, char right) { return (left >= 'A' && left <= 'Z' ? left + 32 : left) == right; };
    return std::ranges::equal(address.substr(address.size() - ending.size()), ending, isSame);
}

/// The button keeps what it shows until the icon is there; where none comes, for good.
void downloadIcon(const URL& url, const Bookmark& bookmark, double size, ButtonFinder findButton)
{
    foundation::URLRequest request { .url = url };
    request.headerFields = { { "User-Agent", std::string(agents::safari17) } };
    auto finish = [title = bookmark.title, isTemplate = isDrawing(*bookmark.iconURL), size,
                      findButton = std::move(findButton)](const foundation::Result<std::string>& data) {
        if (!data)
            return foundation::log("DEBUG: Icon load error for " + title + ": " + data.error().localizedDescription);
        auto image = Image::withData(data.value());
        if (!image)
            return;
        foundation::dispatchMainAsync([image = std::move(image), isTemplate, size, findButton] {
            if (const auto button = findButton())
                showDownloaded(*button, image, size, isTemplate);
        });
    };
    URLSession::sharedSession().dataTask(request, std::move(finish));
}

void downloadFavicon(const URL& url, const Bookmark& bookmark, double size, ButtonFinder findButton)
{
    auto finish = [title = bookmark.title, size, findButton = std::move(findButton)](
                      const foundation::Result<std::string>& data) {
        auto image = data ? Image::withData(data.value()) : nullptr;
        foundation::dispatchMainAsync([image = std::move(image), title, size, findButton] {
            const auto button = findButton();
            if (!button)
                return;
            if (image)
                return showDownloaded(*button, image, size, false);
            showText(
                *button, foundation::uppercasedFirstCharacter(title), Font::systemFont(letterSize, FontWeight::Bold));
        });
    };
    URLSession::sharedSession().dataTask({ .url = url }, std::move(finish));
}

std::string faviconAddress(const Bookmark& bookmark)
{
    const auto page = URL::parse(addressWithScheme(bookmark.url));
    return faviconService(foundation::UserDefaults::standard().stringForKey(preferences::faviconServiceURL))
        + "/s2/favicons?sz=64&domain=" + (page ? page->host() : "");
}

/// The system's symbol of that name, or the name itself as a text.
void showSymbolOrText(StatusBarButton& button, const std::string& name, double size)
{
    if (const auto symbol = Image::systemSymbol(name)) {
        auto image = symbol->withSymbolConfiguration({ size, FontWeight::Medium });
        image->setTemplate(true);
        return showImage(button, std::move(image));
    }
    showText(button, name, Font::systemFont(size, FontWeight::Medium));
}

} // namespace

std::string faviconService(const std::optional<std::string>& preferred)
{
    const bool isOfTheWeb = preferred && (preferred->starts_with("http://") || preferred->starts_with("https://"));
    return isOfTheWeb && URL::parse(*preferred) ? *preferred : std::string(product::faviconService);
}

void applyIcon(StatusBarButton& button, const Bookmark& bookmark, ButtonFinder findButton)
{
    const auto drawnSize = bookmark.menubarIconSize.value_or(defaultIconSize);
    const auto downloadedSize = bookmark.menubarIconSize.value_or(defaultDownloadedIconSize);
    button.setTitle({});
    button.setImagePosition(appkit::ImagePosition::ImageOnly);

    if (bookmark.iconURL && !bookmark.iconURL->empty()) {
        if (const auto url = URL::parse(*bookmark.iconURL))
            return downloadIcon(*url, bookmark, downloadedSize, std::move(findButton));
    }
    if (bookmark.sfSymbolName && !bookmark.sfSymbolName->empty())
        return showSymbolOrText(button, *bookmark.sfSymbolName, drawnSize);
    if (bookmark.customEmoji)
        return showText(button, *bookmark.customEmoji, Font::systemFont(drawnSize));
    if (const auto url = URL::parse(faviconAddress(bookmark)))
        downloadFavicon(*url, bookmark, downloadedSize, std::move(findButton));
}

} // namespace perchly
