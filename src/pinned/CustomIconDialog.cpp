#include "pinned/CustomIconDialog.h"

#include "bookmarks/BookmarkPresets.h"
#include "pinned/BookmarkForm.h"
#include "platform/appkit/Alert.h"
#include "platform/appkit/PopUpButton.h"
#include "platform/appkit/TextField.h"

namespace perchly {

std::optional<Bookmark> askForCustomIcon(const Bookmark& bookmark)
{
    BookmarkForm form({ 300, 160 }, 5, 290, appkit::Color::Label);
    const auto symbol = form.add("Emoji or SF Symbol (e.g. 🚀, safari):",
        makeFormField(bookmark.sfSymbolName, "Leave empty to use URL or Favicon"));
    const auto address
        = form.add("OR Icon URL (PNG/SVG):", makeFormField(bookmark.iconURL, "https://example.com/icon.svg"));
    const auto size = form.add("Icon Size:", makeIconSizeChooser(&bookmark));

    appkit::Alert alert;
    alert.messageText = "Change Custom Icon";
    alert.informativeText = "Enter an Emoji, SF Symbol name, or an Icon URL:";
    alert.buttonTitles = { "Save", "Cancel" };
    alert.accessoryView = form.stack();
    if (alert.runModal() != 0)
        return std::nullopt;

    auto changed = bookmark;
    changed.menubarIconSize = iconSizePresetAt(size->indexOfSelectedItem()).points;
    changed.sfSymbolName = textOrNone(*symbol);
    changed.iconURL = textOrNone(*address);
    return changed;
}

} // namespace perchly
