#include "UnprivilegedUser.h"

#include <cstdlib>
#include <unistd.h>

namespace perchly::tests {

namespace {

constexpr uid_t nobody = 65534;

bool give(const std::filesystem::path& path)
{
    return ::lchown(path.c_str(), nobody, static_cast<gid_t>(-1)) == 0;
}

} // namespace

UnprivilegedUser::UnprivilegedUser(const std::filesystem::path& folder)
{
    if (::geteuid() != 0)
        return;
    bool given = give(folder);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        given = give(entry.path()) && given;
    if (given && ::seteuid(nobody) != 0)
        return; // isActive() tells
}

UnprivilegedUser::~UnprivilegedUser()
{
    if (::getuid() == 0 && ::seteuid(0) != 0)
        std::abort();
}

bool UnprivilegedUser::isActive() const
{
    return ::geteuid() != 0;
}

} // namespace perchly::tests
