#pragma once

#include "platform/linux/desktop/GObject.h"

#include <functional>
#include <string>

/// The bus that TestBus.cpp's main starts for the tests alone.
namespace testbus {

using Connection = desktop::ObjectPointer<GDBusConnection>;

[[nodiscard]] Connection connect();

[[nodiscard]] std::string nameOf(const Connection& connection);

/// Runs the main loop until the condition holds. False if it never does within the deadline.
[[nodiscard]] bool waitUntil(const std::function<bool()>& condition);

/// Runs the main loop until everything that was sent before has been delivered and answered.
void settle(const Connection& connection);

struct Call {
    std::string service;
    std::string path;
    std::string interface;
};

/// Calls a method and runs the main loop until the answer is there; null for an error.
[[nodiscard]] desktop::VariantPointer call(
    const Connection& connection, const Call& target, const char* method, GVariant* parameters);

} // namespace testbus
