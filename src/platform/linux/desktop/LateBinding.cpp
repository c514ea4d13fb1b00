#include "platform/linux/desktop/LateBinding.h"

#include "platform/foundation/FatalError.h"

#include <array>
#include <dlfcn.h>
#include <string>

// The slots that LateBindingEntries.S jumps through. Each starts at lateBindingUnbound and is filled when its
// library is loaded. LateBindingSymbols.inc is made by the build from the functions that the side really calls.
extern "C" {
#define LATE_FUNCTION(library, symbol) extern void* lateSlot_##symbol;
#include "LateBindingSymbols.inc"
#undef LATE_FUNCTION

[[noreturn]] void lateBindingUnbound();
}

void lateBindingUnbound()
{
    foundation::fatalError("A library was used before it was loaded");
}

namespace desktop {
namespace {

struct Slot {
    LateLibrary library;
    const char* symbol;
    void** target;
};

constexpr auto slots = std::to_array<Slot>({
#define LATE_FUNCTION(library, symbol) { LateLibrary::library, #symbol, &lateSlot_##symbol },
#include "LateBindingSymbols.inc"
#undef LATE_FUNCTION
});

constexpr std::array<const char*, 2> sonames { PERCHLY_TOOLKIT_SONAME, PERCHLY_ENGINE_SONAME };
std::array<bool, sonames.size()> loaded {};

struct Foundation {
    LateLibrary library;
    const char* soname;
};

constexpr auto foundations = std::to_array<Foundation>({
#define LATE_FOUNDATION(library, soname) { LateLibrary::library, soname },
#include "LateBindingFoundations.inc"
#undef LATE_FOUNDATION
});

/// Each symbol of a library is searched for in all that is being opened together with it, which is well over a hundred
/// libraries for the engine. Opened one by one beforehand, those that it stands on search only among their own few.
void openFoundations(LateLibrary library)
{
    for (const auto& foundation : foundations) {
        // One that is not there is not needed any more, or it is missed when the library itself is opened.
        if (foundation.library == library)
            dlopen(foundation.soname, RTLD_LAZY | RTLD_LOCAL);
    }
}

void bind(LateLibrary library)
{
    const auto* soname = sonames.at(static_cast<std::size_t>(library));
    openFoundations(library);
    // Symbols are looked up in the library and in all that it stands on.
    void* handle = dlopen(soname, RTLD_LAZY | RTLD_LOCAL);
    if (!handle)
        foundation::fatalError(dlerror());
    for (const auto& slot : slots) {
        if (slot.library != library)
            continue;
        *slot.target = dlsym(handle, slot.symbol);
        if (!*slot.target)
            foundation::fatalError(std::string(soname) + " has no " + slot.symbol);
    }
}

} // namespace

bool isLibraryLoaded(LateLibrary library)
{
    return loaded.at(static_cast<std::size_t>(library));
}

void loadLibrary(LateLibrary library)
{
    for (auto index = 0U; index <= static_cast<unsigned>(library); ++index) {
        if (loaded.at(index))
            continue;
        bind(static_cast<LateLibrary>(index));
        loaded.at(index) = true;
    }
}

} // namespace desktop
