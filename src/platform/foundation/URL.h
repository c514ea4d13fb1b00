#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace foundation {

/// A parsed web address.
class URL {
public:
    /// Characters that an address may not hold are percent-encoded where that is possible (path, query, fragment).
    /// None when the text is no address: no scheme, no host after "//", blanks or other stray characters before
    /// the path, a port that is none, or a control character anywhere. "file:///" alone needs no host.
    [[nodiscard]] static std::optional<URL> parse(std::string_view text);

    /// An address of the page engine's own, kept to the letter where parse() would encode more.
    [[nodiscard]] static URL verbatim(std::string absoluteString, std::string host)
    {
        return { std::move(absoluteString), std::move(host) };
    }

    [[nodiscard]] const std::string& absoluteString() const { return absoluteString_; }

    /// The host without the brackets of an IPv6 literal; empty where the address has none.
    [[nodiscard]] const std::string& host() const { return host_; }

private:
    URL(std::string absoluteString, std::string host)
        : absoluteString_(std::move(absoluteString))
        , host_(std::move(host))
    {
    }

    std::string absoluteString_;
    std::string host_;
};

} // namespace foundation
