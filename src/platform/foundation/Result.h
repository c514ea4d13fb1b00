#pragma once

#include <string>
#include <utility>
#include <variant>

namespace foundation {

/// What went wrong, in words for a log line or an alert.
struct Error {
    std::string localizedDescription;
};

/// A value, or the error that prevented it.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value)
        : content_(std::move(value))
    {
    }
    Result(Error error)
        : content_(std::move(error))
    {
    }

    [[nodiscard]] bool hasValue() const { return std::holds_alternative<T>(content_); }
    explicit operator bool() const { return hasValue(); }

    [[nodiscard]] T& value() & { return std::get<T>(content_); }
    [[nodiscard]] const T& value() const& { return std::get<T>(content_); }
    [[nodiscard]] T&& value() && { return std::get<T>(std::move(content_)); }
    [[nodiscard]] const Error& error() const { return std::get<Error>(content_); }

private:
    std::variant<T, Error> content_;
};

/// Success without a value, or an error.
using Status = Result<std::monostate>;

inline Status success()
{
    return Status(std::monostate {});
}

} // namespace foundation
