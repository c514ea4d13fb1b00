#include "TemporaryHome.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace perchly::tests {

namespace {

std::filesystem::path makeFolder()
{
    auto pattern = (std::filesystem::temp_directory_path() / "perchly-test-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        std::abort();
    return pattern;
}

void writeFile(const std::filesystem::path& path, std::string_view contents)
{
    std::ofstream(path, std::ios::binary) << contents;
    ASSERT_EQ(std::filesystem::file_size(path), contents.size());
}

void setVariable(const char* name, const std::optional<std::string>& value)
{
    if (value)
        ::setenv(name, value->c_str(), 1);
    else
        ::unsetenv(name);
}

} // namespace

TemporaryHome::TemporaryHome()
    : path_(makeFolder())
{
    ::setenv("HOME", path_.c_str(), 1);
    ::setenv("XDG_DATA_HOME", (path_ / "data").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (path_ / "config").c_str(), 1);
}

TemporaryHome::~TemporaryHome()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryHome::preferencesFile() const
{
    return path_ / "config" / "Perchly" / "preferences.ini";
}

std::filesystem::path TemporaryHome::fileHolding(std::string_view contents, std::string_view name) const
{
    auto file = path_ / name;
    writeFile(file, contents);
    return file;
}

void TemporaryHome::storeBookmarksFile(std::string_view contents) const
{
    std::filesystem::create_directories(bookmarksFolder());
    writeFile(bookmarksFile(), contents);
}

EnvironmentVariable::EnvironmentVariable(const char* name, const std::optional<std::string>& value)
    : name_(name)
{
    if (const char* former = std::getenv(name))
        former_ = former;
    setVariable(name, value);
}

EnvironmentVariable::~EnvironmentVariable()
{
    setVariable(name_, former_);
}

std::string contentsOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

} // namespace perchly::tests
