#pragma once

#include <gio/gio.h>

#include <cstdint>
#include <string>

namespace bench {

/// Serves one page whose background is one unmistakable colour. Answers on threads of its own.
class PageServer {
public:
    static constexpr std::uint32_t colour = 0xc0178a;

    PageServer();
    ~PageServer();
    PageServer(const PageServer&) = delete;
    PageServer& operator=(const PageServer&) = delete;

    [[nodiscard]] std::string address() const { return "http://127.0.0.1:" + std::to_string(port_) + "/"; }

private:
    GSocketService* service_;
    std::uint16_t port_;
};

} // namespace bench
