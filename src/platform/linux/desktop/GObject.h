#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

/// The side's own handles on GLib's objects, so that ownership is a type.
namespace desktop {

struct ObjectUnref {
    void operator()(void* object) const { g_object_unref(object); }
};

/// Owns one reference to a GObject.
template <class T>
using ObjectPointer = std::unique_ptr<T, ObjectUnref>;

/// Takes over a reference that the caller owns.
template <class T>
[[nodiscard]] ObjectPointer<T> adopt(T* object)
{
    return ObjectPointer<T>(object);
}

/// Adds a reference, or takes over the floating one of a new object.
template <class T>
[[nodiscard]] ObjectPointer<T> retain(T* object)
{
    return ObjectPointer<T>(static_cast<T*>(g_object_ref_sink(object)));
}

struct FreeGLibMemory {
    void operator()(void* memory) const { g_free(memory); }
};

/// Owns memory that GLib allocated, most often a text.
template <class T = char>
using GLibPointer = std::unique_ptr<T, FreeGLibMemory>;

struct VariantUnref {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};

using VariantPointer = std::unique_ptr<GVariant, VariantUnref>;

/// Takes over a new variant, floating or not.
[[nodiscard]] inline VariantPointer adoptVariant(GVariant* variant)
{
    return VariantPointer(g_variant_take_ref(variant));
}

/// Receives a GError, `call(..., error.out())`, and frees it.
class ErrorPointer {
public:
    ErrorPointer() = default;
    ErrorPointer(const ErrorPointer&) = delete;
    ErrorPointer& operator=(const ErrorPointer&) = delete;
    ~ErrorPointer() { g_clear_error(&error_); }

    [[nodiscard]] GError** out()
    {
        g_clear_error(&error_);
        return &error_;
    }
    explicit operator bool() const { return error_ != nullptr; }
    [[nodiscard]] std::string message() const { return error_ ? error_->message : ""; }
    [[nodiscard]] bool matches(GQuark domain, int code) const { return g_error_matches(error_, domain, code); }

private:
    GError* error_ = nullptr;
};

/// A signal handler that ends with this object. The emitter may go first.
class SignalConnection {
public:
    SignalConnection() = default;
    SignalConnection(gpointer emitter, gulong handler)
        : emitter_(G_OBJECT(emitter))
        , handler_(handler)
    {
        g_object_add_weak_pointer(emitter_, reinterpret_cast<gpointer*>(&emitter_));
    }
    SignalConnection(SignalConnection&& other) noexcept { *this = std::move(other); }
    SignalConnection& operator=(SignalConnection&& other) noexcept
    {
        if (this == &other)
            return *this;
        disconnect();
        if (!other.emitter_)
            return *this;
        emitter_ = other.emitter_;
        handler_ = std::exchange(other.handler_, 0);
        g_object_add_weak_pointer(emitter_, reinterpret_cast<gpointer*>(&emitter_));
        g_object_remove_weak_pointer(other.emitter_, reinterpret_cast<gpointer*>(&other.emitter_));
        other.emitter_ = nullptr;
        return *this;
    }
    ~SignalConnection() { disconnect(); }

    /// Leaves the handler to the emitter, with which it then ends.
    void keep()
    {
        if (emitter_)
            g_object_remove_weak_pointer(emitter_, reinterpret_cast<gpointer*>(&emitter_));
        emitter_ = nullptr;
    }

    void block() const
    {
        if (emitter_)
            g_signal_handler_block(emitter_, handler_);
    }
    void unblock() const
    {
        if (emitter_)
            g_signal_handler_unblock(emitter_, handler_);
    }

    void disconnect()
    {
        if (!emitter_)
            return;
        g_object_remove_weak_pointer(emitter_, reinterpret_cast<gpointer*>(&emitter_));
        g_signal_handler_disconnect(std::exchange(emitter_, nullptr), std::exchange(handler_, 0));
    }

private:
    GObject* emitter_ = nullptr;
    gulong handler_ = 0;
};

/// Connects a closure. `Signature` is the handler's C signature without the emitter and the user data:
/// connect<gboolean(guint, guint)>(widget, "key-pressed", [](guint key, guint code) -> gboolean {...}).
template <class Signature, class Handler>
[[nodiscard]] SignalConnection connect(gpointer emitter, const char* signal, Handler handler)
{
    using Function = std::function<Signature>;
    auto trampoline = []<class Result, class... Arguments>(std::type_identity<Result(Arguments...)>) {
        return +[](gpointer, Arguments... arguments, gpointer data) -> Result {
            // A copy, because the handler may end its own connection.
            auto call = *static_cast<Function*>(data);
            return call(arguments...);
        };
    }(std::type_identity<Signature> {});
    auto destroy = +[](gpointer data, GClosure*) { delete static_cast<Function*>(data); };
    const auto id = g_signal_connect_data(
        emitter, signal, G_CALLBACK(trampoline), new Function(std::move(handler)), destroy, G_CONNECT_DEFAULT);
    return { emitter, id };
}

/// While it lives, the connection's handler is not called.
class SignalBlock {
public:
    explicit SignalBlock(const SignalConnection& connection)
        : connection_(connection)
    {
        connection_.block();
    }
    ~SignalBlock() { connection_.unblock(); }
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

private:
    const SignalConnection& connection_;
};

struct SourceDestroy {
    void operator()(GSource* source) const
    {
        g_source_destroy(source);
        g_source_unref(source);
    }
};

/// A source of the main loop that ends with this object, whether or not it has fired.
using SourceHandle = std::unique_ptr<GSource, SourceDestroy>;

/// Runs the work once on the main thread, after the delay, unless the handle goes before.
[[nodiscard]] inline SourceHandle callAfter(unsigned milliseconds, std::function<void()> work)
{
    using Work = std::function<void()>;
    auto* source = g_timeout_source_new(milliseconds);
    auto call = +[](gpointer data) -> gboolean {
        // A copy, because the work may drop the handle.
        auto once = *static_cast<Work*>(data);
        once();
        return G_SOURCE_REMOVE;
    };
    auto destroy = +[](gpointer data) { delete static_cast<Work*>(data); };
    g_source_set_callback(source, call, new Work(std::move(work)), destroy);
    g_source_attach(source, nullptr);
    return SourceHandle(source);
}

} // namespace desktop
