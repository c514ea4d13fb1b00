#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace perchly::tests {

/// One text that a JSON decoder has to judge.
struct JsonCase {
    std::string name;
    std::string text;
};

/// What the grammar of RFC 8259 derives.
[[nodiscard]] std::vector<JsonCase> wellFormedCases();

/// What it does not derive.
[[nodiscard]] std::vector<JsonCase> malformedCases();

/// Where the RFC leaves the choice: what we accept.
[[nodiscard]] std::vector<JsonCase> acceptedChoices();

/// Where the RFC leaves the choice: what we refuse.
[[nodiscard]] std::vector<JsonCase> refusedChoices();

} // namespace perchly::tests
