#include "SmallDisk.h"

#include <sched.h>
#include <sys/mount.h>

namespace perchly::tests {

bool mountSmallDisk(const std::filesystem::path& folder)
{
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=64k") == 0;
}

} // namespace perchly::tests
