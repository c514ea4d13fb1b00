#include "platform/foundation/Bundle.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace perchly::tests {

namespace {

const foundation::Bundle& bundle()
{
    return foundation::Bundle::mainBundle();
}

std::filesystem::path programFolder()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

} // namespace

TEST(BundleTest, FindsAResourceBesideTheProgramInTheBuildFolder)
{
    const auto folder = programFolder() / "share" / "perchly";
    std::filesystem::create_directories(folder);
    const auto name = "test-resource-" + std::to_string(::getpid());
    std::ofstream(folder / name) << "resource";

    EXPECT_EQ(bundle().pathForResource(name), folder / name);

    std::filesystem::remove(folder / name);
    EXPECT_EQ(bundle().pathForResource(name), std::nullopt);
}

TEST(BundleTest, HasNoResourceWithoutAName)
{
    EXPECT_EQ(bundle().pathForResource(""), std::nullopt);
}

} // namespace perchly::tests
