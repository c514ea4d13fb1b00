#include "platform/foundation/Log.h"

#include "platform/foundation/Text.h"

#include <glib.h>

namespace foundation {

void log(std::string_view line)
{
    // "Message" is the lowest level that GLib shows without being asked by an environment variable.
    constexpr const char* syslogNotice = "5";
    const auto message = inOneLine(line);
    const GLogField fields[] = {
        { "MESSAGE", message.data(), static_cast<gssize>(message.size()) },
        { "PRIORITY", syslogNotice, -1 },
        { "GLIB_DOMAIN", "Perchly", -1 },
    };
    g_log_structured_array(G_LOG_LEVEL_MESSAGE, fields, std::size(fields));
}

} // namespace foundation
