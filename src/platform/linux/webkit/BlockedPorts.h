#pragma once

#include "platform/linux/desktop/GObject.h"

#include <algorithm>
#include <array>

namespace webkit {

/// The ports that the engine loads nothing from, because other services than the web's are there; in order.
inline constexpr auto blockedPorts = std::to_array({ 1, 7, 9, 11, 13, 15, 17, 19, 20, 21, 22, 23, 25, 37, 42, 43, 53,
    69, 77, 79, 87, 95, 101, 102, 103, 104, 109, 110, 111, 113, 115, 117, 119, 123, 135, 137, 139, 143, 161, 179, 389,
    427, 465, 512, 513, 514, 515, 526, 530, 531, 532, 540, 548, 554, 556, 563, 587, 601, 636, 989, 990, 993, 995, 1719,
    1720, 1723, 2049, 3659, 4045, 4190, 5060, 5061, 6000, 6566, 6665, 6666, 6667, 6668, 6669, 6679, 6697, 10080 });

/// Whether the engine refuses the address for its port.
[[nodiscard]] inline bool hasBlockedPort(const char* address)
{
    int port = -1;
    constexpr auto flags = static_cast<GUriFlags>(G_URI_FLAGS_PARSE_RELAXED | G_URI_FLAGS_ENCODED);
    return g_uri_split_network(address, flags, nullptr, nullptr, &port, nullptr)
        && std::binary_search(blockedPorts.begin(), blockedPorts.end(), port);
}

} // namespace webkit
