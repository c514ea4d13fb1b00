#pragma once

#include "MeasuringHost.h"
#include "ProgramRun.h"
#include "ScreenProbe.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace bench {

/// A running program that shows one of several pages at a time, by a click for each, and keeps them.
class BrowserProgram {
public:
    virtual ~BrowserProgram() = default;
    BrowserProgram(const BrowserProgram&) = delete;
    BrowserProgram& operator=(const BrowserProgram&) = delete;

    /// Does not wait for anything.
    virtual void click(std::size_t page) = 0;

    /// Clicks, and waits for the page on the screen. Returns the milliseconds between.
    double show(std::size_t page, ScreenProbe& screen);

    /// Waits until no page is on the screen any more.
    void hide(ScreenProbe& screen);

protected:
    explicit BrowserProgram(std::string name)
        : name_(std::move(name))
    {
    }

private:
    virtual void dismiss() = 0;

    std::string name_;
};

/// Perchly with a pinned bookmark for each page. A click is that on its row in the menu; Escape dismisses.
class PerchlyBrowsers : public BrowserProgram {
public:
    PerchlyBrowsers(
        const std::filesystem::path& programs, MeasuringHost& host, const std::vector<std::string>& addresses);
    ~PerchlyBrowsers() override;

    void click(std::size_t page) override { host_.click(rows_.at(page)); }

    /// By the menu's last row.
    void quit();

private:
    void dismiss() override;

    UserFolders folders_;
    MeasuringHost& host_;
    std::optional<ProgramRun> run_;
    std::vector<MeasuringHost::Row> rows_;
};

/// The bare program: a click is an order over the bus, and so is the opposite.
class BareBrowsers : public BrowserProgram {
public:
    BareBrowsers(const std::filesystem::path& programs, const std::vector<std::string>& addresses);
    ~BareBrowsers() override;

    void click(std::size_t page) override;

private:
    void dismiss() override;
    void order(const char* method, GVariant* arguments);

    UserFolders folders_;
    GDBusConnection* bus_;
    std::optional<ProgramRun> run_;
};

} // namespace bench
