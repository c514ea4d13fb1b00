#pragma once

#include <string_view>

namespace foundation {

/// Writes one line, whatever line breaks are in it, to the system log (standard error where that is not the log
/// already). Any thread.
void log(std::string_view line);

} // namespace foundation
