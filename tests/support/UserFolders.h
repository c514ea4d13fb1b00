#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace perchly::test {

/// Fresh, empty folders for all that a program keeps for its user; removed at the end. Make one before anything asks
/// where they are.
class UserFolders {
public:
    UserFolders()
    {
        auto pattern = (std::filesystem::temp_directory_path() / "perchly-test-XXXXXX").string();
        root_ = mkdtemp(pattern.data());
        for (const auto* variable : { "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME" }) {
            const auto folder = root_ / variable;
            std::filesystem::create_directory(folder);
            setenv(variable, folder.c_str(), 1);
        }
        setenv("CFFIXED_USER_HOME", root_.c_str(), 1);
    }
    ~UserFolders()
    {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    UserFolders(const UserFolders&) = delete;
    UserFolders& operator=(const UserFolders&) = delete;

private:
    std::filesystem::path root_;
};

} // namespace perchly::test
