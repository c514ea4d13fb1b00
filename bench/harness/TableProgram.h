#pragma once

#include "MeasuringHost.h"
#include "ProgramRun.h"
#include "ScreenProbe.h"
#include "UserInput.h"

#include <filesystem>
#include <optional>
#include <string>

namespace bench {

/// A program that shows a table with a search field in a window. One at a time: it has the screen and the keyboard.
class TableProgram {
public:
    virtual ~TableProgram() = default;
    TableProgram(const TableProgram&) = delete;
    TableProgram& operator=(const TableProgram&) = delete;

    /// Starts it and orders the table as soon as it takes orders. Returns the milliseconds from the start to the rows
    /// on the screen.
    double startAndOpen();

    /// Starts it, and has it show another window for a while.
    void startWarm();
    void start();

    /// Orders the table. Returns the milliseconds from then to the rows on the screen.
    double open();

    /// Presses a key that changes the rows. Returns the milliseconds from then to the changed rows on the screen.
    double press(const std::string& key);

    /// Returns the processor time that it has taken, in milliseconds.
    double end();

    /// Brings the keyboard from the search field to the table.
    void enterTable();

    [[nodiscard]] const UserFolders& folders() const { return folders_; }
    [[nodiscard]] UserInput& input() { return input_; }

protected:
    explicit TableProgram(std::string name);

    [[nodiscard]] Clock::time_point run(const std::vector<std::string>& command);

private:
    /// Starts it with the order. Returns when that was.
    virtual Clock::time_point startWithOrder() = 0;
    virtual void startWithoutOrder() = 0;
    virtual void order() = 0;
    virtual void showOtherWindow() = 0;
    virtual void hideOtherWindow() = 0;
    /// How often the Tab key is to be pressed from the search field to the table.
    [[nodiscard]] virtual int tabsToTable() const = 0;

    double rowsAppear(ScreenProbe& screen, Clock::time_point since);

    std::string name_;
    UserFolders folders_;
    UserInput input_;
    std::optional<ProgramRun> run_;
};

/// The bookmark manager, with so many bookmarks.
class PerchlyTable : public TableProgram {
public:
    PerchlyTable(const std::filesystem::path& programs, MeasuringHost& host, std::size_t rows);
    ~PerchlyTable() override;

private:
    Clock::time_point startWithOrder() override;
    void startWithoutOrder() override;
    void order() override { host_.click(managerRow_); }
    void showOtherWindow() override { host_.click(settingsRow_); }
    void hideOtherWindow() override;
    [[nodiscard]] int tabsToTable() const override { return 4; } // over three buttons

    std::filesystem::path program_;
    MeasuringHost& host_;
    MeasuringHost::Row managerRow_;
    MeasuringHost::Row settingsRow_;
};

/// The bare program, with as many rows of the same texts.
class BareTable : public TableProgram {
public:
    BareTable(const std::filesystem::path& programs, std::size_t rows);
    ~BareTable() override;

private:
    Clock::time_point startWithOrder() override;
    void startWithoutOrder() override;
    void order() override { call("Show"); }
    void showOtherWindow() override { call("Warm"); }
    void hideOtherWindow() override { call("Hide"); }
    [[nodiscard]] int tabsToTable() const override { return 1; }
    void call(const char* method);

    std::vector<std::string> command_;
    GDBusConnection* bus_;
};

} // namespace bench
