#include "platform/appkit/SearchField.h"

#include "platform/linux/appkit/ViewNative.h"

namespace appkit {

SearchField::SearchField()
    : TextField(makeNative(gtk_search_entry_new))
{
    setSendsActionOnEndEditing(false);
    // The entry's own signal for searching lets a moment pass after the last key.
    native().typing = desktop::connect<void()>(widgetOf(*this), "changed", [this] {
        // Held until the operation has returned, which may take the field away.
        if (const auto self = weak_from_this().lock())
            action().send(*this);
    });
}

} // namespace appkit
