#pragma once

#include "platform/linux/desktop/GObject.h"

#include <string>

namespace desktop {

/// A call that came over the bus. It must be answered, now or later, by returning on `invocation`.
struct BusCall {
    std::string_view interface;
    std::string_view method;
    GVariant* parameters;
    GDBusMethodInvocation* invocation;

    [[nodiscard]] bool isPropertyRead() const { return interface == "org.freedesktop.DBus.Properties"; }
    void reply(GVariant* tuple) const { g_dbus_method_invocation_return_value(invocation, tuple); }
    void fail(const char* reason) const
    {
        g_dbus_method_invocation_return_error_literal(invocation, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS, reason);
    }
};

/// An object that is on a bus connection while this lives. Reading a property arrives as a call of
/// org.freedesktop.DBus.Properties, so that it may be answered later. Main thread.
class ExportedObject {
public:
    using Handler = std::function<void(const BusCall&)>;

    /// `interface` must outlive the connection.
    ExportedObject(GDBusConnection* connection, std::string path, GDBusInterfaceInfo* interface, Handler handler);
    ~ExportedObject();
    ExportedObject(const ExportedObject&) = delete;
    ExportedObject& operator=(const ExportedObject&) = delete;

    void emit(const char* signal, GVariant* parameters) const;

private:
    ObjectPointer<GDBusConnection> connection_;
    std::string path_;
    GDBusInterfaceInfo* interface_;
    guint registration_;
};

/// Answers Get and GetAll, given what returns a property's value by its name, or null for an unknown one. The value is
/// a new floating one, or one that somebody else keeps.
void replyToPropertyRead(
    const BusCall& call, GDBusInterfaceInfo* interface, const std::function<GVariant*(std::string_view)>& valueOf);

} // namespace desktop
