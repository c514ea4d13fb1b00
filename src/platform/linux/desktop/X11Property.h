#pragma once

#include <gdk/gdk.h>

#include <memory>

namespace desktop {

[[nodiscard]] unsigned long x11Atom(GdkDisplay* display, const char* name);

/// A property of a window on X11, `count` numbers of the type XA_ATOM or the like. A round trip.
class X11Property {
public:
    X11Property(GdkDisplay* display, unsigned long window, const char* name, unsigned long type, unsigned long count);

    /// Null where there is no such property.
    [[nodiscard]] const unsigned long* values() const
    {
        return isComplete_ ? reinterpret_cast<const unsigned long*>(data_.get()) : nullptr;
    }

private:
    struct Free {
        void operator()(void* data) const;
    };
    std::unique_ptr<unsigned char, Free> data_;
    bool isComplete_ = false;
};

} // namespace desktop
