#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace foundation {

/// The application's preferences, kept over restarts. An absent value and an empty one differ. Main thread.
class UserDefaults {
public:
    static UserDefaults& standard();

    [[nodiscard]] std::optional<std::string> stringForKey(std::string_view key) const;
    void setString(std::string_view value, std::string_view key);
    void removeObjectForKey(std::string_view key);

    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;

private:
    UserDefaults();
    ~UserDefaults();

    struct Native;
    std::unique_ptr<Native> native_;
};

} // namespace foundation
