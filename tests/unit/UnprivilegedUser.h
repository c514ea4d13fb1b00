#pragma once

#include <filesystem>

namespace perchly::tests {

/// Makes permissions count where the tests run as root: gives the folder to another user and acts as that user until
/// it goes. Without root there is nothing to do.
class UnprivilegedUser {
public:
    explicit UnprivilegedUser(const std::filesystem::path& folder);
    ~UnprivilegedUser();
    UnprivilegedUser(const UnprivilegedUser&) = delete;
    UnprivilegedUser& operator=(const UnprivilegedUser&) = delete;

    /// False where the switch was refused.
    [[nodiscard]] bool isActive() const;
};

} // namespace perchly::tests
