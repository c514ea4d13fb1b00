#include "platform/appkit/SearchField.h"

#include "platform/macos/appkit/TextFieldNative.h"

namespace appkit {

SearchField::SearchField()
    : TextField(makeNativeField([[NSSearchField alloc] init]))
{
    setSendsActionOnEndEditing(false);
}

} // namespace appkit
