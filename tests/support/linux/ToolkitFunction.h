#pragma once

#include <dlfcn.h>

namespace perchly::test {

/// A function of the toolkit that the application itself does without. Once the toolkit is loaded.
template <class Function>
[[nodiscard]] Function toolkitFunction(const char* name)
{
    auto* library = dlopen("libgtk-4.so.1", RTLD_LAZY | RTLD_NOLOAD);
    return reinterpret_cast<Function>(dlsym(library, name));
}

} // namespace perchly::test
