#pragma once

#include "platform/webkit/WebView.h"

namespace perchly::test {

/// Whether the view shows a dialog of its page.
[[nodiscard]] bool showsDialog(const webkit::WebView& view);

/// Presses a button of the dialog that the view shows, as its user does.
void answerDialog(const webkit::WebView& view);

} // namespace perchly::test
