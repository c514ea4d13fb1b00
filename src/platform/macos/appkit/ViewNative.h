#pragma once

#include "platform/appkit/View.h"

#import <AppKit/AppKit.h>

namespace appkit {

struct View::Native {
    NSView* view;
    /// The view's target or delegate, which AppKit holds weakly; nil for a view that has none.
    NSObject* helper;
};

[[nodiscard]] inline std::unique_ptr<View::Native> makeNative(NSView* view, NSObject* helper = nil)
{
    return std::make_unique<View::Native>(View::Native { view, helper });
}

/// The view as the class that it was made of.
template <class NativeView = NSView>
[[nodiscard]] NativeView* nativeView(const View& view)
{
    return static_cast<NativeView*>(view.native().view);
}

template <class Helper>
[[nodiscard]] Helper* helperOf(const View& view)
{
    return static_cast<Helper*>(view.native().helper);
}

} // namespace appkit
