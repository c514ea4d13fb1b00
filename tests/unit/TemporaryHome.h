#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace perchly::tests {

/// A home folder of the test's own: the user's folders all lie in it, and it goes with its holder.
class TemporaryHome {
public:
    TemporaryHome();
    ~TemporaryHome();
    TemporaryHome(const TemporaryHome&) = delete;
    TemporaryHome& operator=(const TemporaryHome&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path bookmarksFolder() const { return path_ / "data" / "Perchly"; }
    [[nodiscard]] std::filesystem::path bookmarksFile() const { return bookmarksFolder() / "bookmarks.json"; }
    [[nodiscard]] std::filesystem::path preferencesFile() const;

    /// Writes a file of that name into the home folder, by other means than those under test.
    [[nodiscard]] std::filesystem::path fileHolding(std::string_view contents, std::string_view name = "file") const;

    /// Creates the folder of bookmarks with that file.
    void storeBookmarksFile(std::string_view contents) const;

private:
    std::filesystem::path path_;
};

/// An environment variable's value, or its absence, until the holder goes.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* name, const std::optional<std::string>& value);
    ~EnvironmentVariable();
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    const char* name_;
    std::optional<std::string> former_;
};

[[nodiscard]] std::string contentsOf(const std::filesystem::path& file);

} // namespace perchly::tests
