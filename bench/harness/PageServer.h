#pragma once

#include <gio/gio.h>

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// Serves pages whose background is one unmistakable colour; see Pages.h. Answers on threads of its own.
class PageServer {
public:
    static constexpr std::uint32_t colour = 0xc0178a;

    PageServer();
    ~PageServer();
    PageServer(const PageServer&) = delete;
    PageServer& operator=(const PageServer&) = delete;

    [[nodiscard]] std::string origin() const { return "http://127.0.0.1:" + std::to_string(port_); }
    [[nodiscard]] std::string address() const { return origin() + "/"; }

private:
    GSocketService* service_;
    std::uint16_t port_;
};

/// Several, each an origin of its own.
class PageServers {
public:
    explicit PageServers(std::size_t count)
        : servers_(count)
    {
    }

    /// The page below that path of each.
    [[nodiscard]] std::vector<std::string> addresses(const std::string& path) const
    {
        std::vector<std::string> addresses;
        for (const auto& server : servers_)
            addresses.push_back(server.address() + path);
        return addresses;
    }

private:
    std::vector<PageServer> servers_;
};

} // namespace bench
