#include "BookmarkCollectionProperties.h"

#include <cstddef>
#include <cstdint>

// The library of the fuzzer sets the name.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    perchly::fuzz::checkBookmarkDocument({ reinterpret_cast<const char*>(bytes), size });
    return 0;
}
