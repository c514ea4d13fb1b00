#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace foundation {

/// A parsed web address.
class URL {
public:
    /// Characters that an address may not hold are percent-encoded where that is possible (path, query, fragment).
    /// None when the text is no address: no scheme, no host after "//", blanks or control characters in the host.
    [[nodiscard]] static std::optional<URL> parse(std::string_view text);

    [[nodiscard]] const std::string& absoluteString() const { return absoluteString_; }

private:
    explicit URL(std::string absoluteString)
        : absoluteString_(std::move(absoluteString))
    {
    }

    std::string absoluteString_;
};

} // namespace foundation
