#pragma once

#include "Waiting.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace bench {

/// Folders of a user of our own, gone with this object.
class UserFolders {
public:
    UserFolders();
    ~UserFolders();
    UserFolders(const UserFolders&) = delete;
    UserFolders& operator=(const UserFolders&) = delete;

    /// The variables that lead a program there.
    [[nodiscard]] std::map<std::string, std::string> environment() const;

    void setHomePage(const std::string& address) const;

    /// Where icons of sites are asked for. Without this call that is nowhere; never anywhere beyond this machine.
    void setFaviconService(const std::string& address) const;

    /// Makes these the only bookmarks; all have their row in the menu.
    void setPinnedBookmarks(const std::vector<std::string>& titles, const std::vector<std::string>& addresses) const;

    /// Makes these the only bookmarks; they are nowhere but in the list of all. The id of each is its index.
    void setListedBookmarks(const std::vector<std::string>& titles, const std::vector<std::string>& addresses) const;

    /// Where the bookmarks are kept.
    [[nodiscard]] std::filesystem::path bookmarkFile() const { return path_ / "data/Perchly/bookmarks.json"; }

    /// Rest can be told only where no cursor blinks.
    void stopCursor() const { setToolkit("gtk-cursor-blink"); }

    /// What has changed looks at once as it will look from then on.
    void stopAnimations() const { setToolkit("gtk-enable-animations"); }

    /// What is empty, the bookmark does without.
    struct MenuBarBookmark {
        std::string title;
        std::string address;
        std::string symbol;
        std::string emoji;
        std::string iconAddress;
    };

    /// Makes these the only bookmarks; each has a status item and, for its id, its index.
    void setMenuBarBookmarks(const std::vector<MenuBarBookmark>& bookmarks) const;

private:
    void setToolkit(const char* disabled) const;
    void setPreference(const char* key, const std::string& value) const;
    struct Places {
        bool isPinned;
        bool isAddedToMenuBar;
    };
    void writeBookmarks(const std::vector<MenuBarBookmark>& bookmarks, Places places) const;

    std::filesystem::path path_;
};

/// A program under measurement, with all the processes it starts; they end with this object.
class ProgramRun {
public:
    ProgramRun(std::vector<std::string> command, const std::map<std::string, std::string>& environment);
    ~ProgramRun() { end(); }
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;

    /// Just before the process was made.
    [[nodiscard]] Clock::time_point started() const { return started_; }

    /// Kills all processes at once and returns the processor time that they and those that ended before have used,
    /// in milliseconds.
    double end();

private:
    Clock::time_point started_;
    bool isRunning_ = true;
};

} // namespace bench
