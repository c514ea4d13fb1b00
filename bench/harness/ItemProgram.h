#pragma once

#include "MeasuringHost.h"
#include "ProgramRun.h"

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// A running program that makes many status items by order, and none before.
class ItemProgram {
public:
    /// The folders must outlive this.
    ItemProgram(std::vector<std::string> command, const UserFolders& folders, MeasuringHost& host);
    ~ItemProgram();
    ItemProgram(const ItemProgram&) = delete;
    ItemProgram& operator=(const ItemProgram&) = delete;

    /// Has the items made. Returns the milliseconds from the order to the last registration.
    double synchronise(std::size_t count);

    /// Does not wait for anything. What is empty, the bookmark does without.
    void setIcon(const std::string& bookmark, const std::string& symbol, const std::string& emoji);

private:
    void order(const char* method, GVariant* arguments);

    MeasuringHost& host_;
    GDBusConnection* bus_;
    ProgramRun run_;
};

/// The icon set's symbols by their names, always in the same order.
[[nodiscard]] std::vector<std::string> symbolNames(const std::filesystem::path& programs, std::size_t count);

/// So many, each with a symbol of its own.
[[nodiscard]] std::vector<UserFolders::MenuBarBookmark> bookmarksWithSymbols(
    const std::filesystem::path& programs, std::size_t count);

} // namespace bench
