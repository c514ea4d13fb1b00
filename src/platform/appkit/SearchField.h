#pragma once

#include "platform/appkit/TextField.h"

namespace appkit {

/// A field for what is searched for, with a button that clears it. Sends its action while the user types and when the
/// field is cleared; setting the text sends nothing.
class SearchField : public TextField {
public:
    SearchField();
};

} // namespace appkit
