#include "platform/linux/statusarea/ExportedObject.h"

#include "platform/foundation/FatalError.h"

namespace desktop {
namespace {

void handleCall(GDBusConnection*, const char*, const char*, const char* interface, const char* method,
    GVariant* parameters, GDBusMethodInvocation* invocation, gpointer data)
{
    (*static_cast<ExportedObject::Handler*>(data))({ interface, method, parameters, invocation });
}

void releaseHandler(gpointer data)
{
    delete static_cast<ExportedObject::Handler*>(data);
}

constexpr GDBusInterfaceVTable callTable { handleCall, nullptr, nullptr, {} };

} // namespace

ExportedObject::ExportedObject(
    GDBusConnection* connection, std::string path, GDBusInterfaceInfo* interface, Handler handler)
    : connection_(retain(connection))
    , path_(std::move(path))
    , interface_(interface)
{
    ErrorPointer error;
    registration_ = g_dbus_connection_register_object(connection, path_.c_str(), interface_, &callTable,
        new Handler(std::move(handler)), releaseHandler, error.out());
    if (registration_ == 0)
        foundation::fatalError(error.message());
}

ExportedObject::~ExportedObject()
{
    g_dbus_connection_unregister_object(connection_.get(), registration_);
}

void ExportedObject::emit(const char* signal, GVariant* parameters) const
{
    // Fails only once the connection is closed, when nobody is left to hear it.
    g_dbus_connection_emit_signal(
        connection_.get(), nullptr, path_.c_str(), interface_->name, signal, parameters, nullptr);
}

void replyToPropertyRead(
    const BusCall& call, GDBusInterfaceInfo* interface, const std::function<GVariant*(std::string_view)>& valueOf)
{
    if (call.method == "Get") {
        const char* name = nullptr;
        g_variant_get(call.parameters, "(&s&s)", nullptr, &name);
        if (auto* value = valueOf(name))
            return call.reply(g_variant_new("(v)", value));
        return call.fail("No such property");
    }
    if (call.method != "GetAll")
        return call.fail("The properties can only be read");
    GVariantBuilder values;
    g_variant_builder_init(&values, G_VARIANT_TYPE_VARDICT);
    for (auto** property = interface->properties; property && *property; ++property)
        g_variant_builder_add(&values, "{sv}", (*property)->name, valueOf((*property)->name));
    call.reply(g_variant_new("(a{sv})", &values));
}

} // namespace desktop
