#include "ProgramRun.h"

#include "ProcessTree.h"

#include <csignal>
#include <fstream>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace bench {
namespace {

std::vector<std::string> environmentWith(std::map<std::string, std::string> changes)
{
    for (auto** variable = environ; *variable; ++variable) {
        const std::string text = *variable;
        const auto separator = text.find('=');
        changes.emplace(text.substr(0, separator), text.substr(separator + 1)); // a change that is there wins
    }
    std::vector<std::string> result;
    result.reserve(changes.size());
    for (const auto& [name, value] : changes)
        result.push_back(name + '=' + value);
    return result;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (auto& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<UserFolders::MenuBarBookmark> plainBookmarks(
    const std::vector<std::string>& titles, const std::vector<std::string>& addresses)
{
    std::vector<UserFolders::MenuBarBookmark> bookmarks;
    for (std::size_t index = 0; index < titles.size(); ++index)
        bookmarks.push_back({ titles[index], addresses[index], {}, {}, {} });
    return bookmarks;
}

double milliseconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

} // namespace

UserFolders::UserFolders()
{
    // The virtual desktop's home goes with it, whatever becomes of us.
    auto pattern = (std::filesystem::path(g_get_home_dir()) / "bench.XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        giveUp("no folder can be made for the runs");
    path_ = pattern;
    for (const auto* folder : { "config/Perchly", "data", "cache", "state" })
        std::filesystem::create_directories(path_ / folder);
    std::filesystem::create_directory(path_ / "runtime");
    std::filesystem::permissions(path_ / "runtime", std::filesystem::perms::owner_all);
    setFaviconService("http://127.0.0.1:1");
}

UserFolders::~UserFolders()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::map<std::string, std::string> UserFolders::environment() const
{
    return { { "HOME", path_ }, { "XDG_CONFIG_HOME", path_ / "config" }, { "XDG_DATA_HOME", path_ / "data" },
        { "XDG_CACHE_HOME", path_ / "cache" }, { "XDG_STATE_HOME", path_ / "state" },
        { "XDG_RUNTIME_DIR", path_ / "runtime" },
        // The status area is ours, and what some desktops' own areas need is not for it.
        { "XDG_CURRENT_DESKTOP", "" } };
}

void UserFolders::setPreference(const char* key, const std::string& value) const
{
    // Of several the last one counts.
    std::ofstream(path_ / "config/Perchly/preferences.ini", std::ios::app) << "[Preferences]\n"
                                                                           << key << "=" << value << "\n";
}

void UserFolders::setHomePage(const std::string& address) const
{
    setPreference("HomePageURL", address);
}

void UserFolders::setFaviconService(const std::string& address) const
{
    setPreference("FaviconServiceURL", address);
}

void UserFolders::setToolkit(const char* disabled) const
{
    std::filesystem::create_directories(path_ / "config/gtk-4.0");
    std::ofstream(path_ / "config/gtk-4.0/settings.ini", std::ios::app) << "[Settings]\n" << disabled << "=false\n";
}

void UserFolders::setPinnedBookmarks(
    const std::vector<std::string>& titles, const std::vector<std::string>& addresses) const
{
    writeBookmarks(plainBookmarks(titles, addresses), { .isPinned = true, .isAddedToMenuBar = false });
}

void UserFolders::setListedBookmarks(
    const std::vector<std::string>& titles, const std::vector<std::string>& addresses) const
{
    writeBookmarks(plainBookmarks(titles, addresses), { .isPinned = false, .isAddedToMenuBar = false });
}

void UserFolders::setMenuBarBookmarks(const std::vector<MenuBarBookmark>& bookmarks) const
{
    writeBookmarks(bookmarks, { .isPinned = false, .isAddedToMenuBar = true });
}

void UserFolders::writeBookmarks(const std::vector<MenuBarBookmark>& bookmarks, Places places) const
{
    std::filesystem::create_directories(bookmarkFile().parent_path());
    std::ofstream file(bookmarkFile());
    const auto writeFlag
        = [&](const char* key, bool flag) { file << '"' << key << R"(":)" << (flag ? "true" : "false") << ","; };
    const auto writeText = [&](const char* key, const std::string& text) {
        if (!text.empty())
            file << '"' << key << R"(":")" << text << R"(",)";
    };
    file << R"({"bookmarks":[)";
    for (std::size_t index = 0; index < bookmarks.size(); ++index) {
        const auto& bookmark = bookmarks[index];
        file << (index > 0 ? "," : "") << R"({"id":")" << index << R"(","title":")" << bookmark.title << R"(","url":")"
             << bookmark.address << R"(",)";
        writeText("sfSymbolName", bookmark.symbol);
        writeText("customEmoji", bookmark.emoji);
        writeText("iconURL", bookmark.iconAddress);
        writeFlag("isPinned", places.isPinned);
        writeFlag("isAddedToMenuBar", places.isAddedToMenuBar);
        file << R"("createdAt":0,"shouldReloadOnOpen":false,"isAlwaysOnTop":false,"prefersDetached":false,)"
             << R"("openInSystemBrowser":false})";
    }
    file << "]}";
}

ProgramRun::ProgramRun(std::vector<std::string> command, const std::map<std::string, std::string>& changes)
{
    auto environment = environmentWith(changes);
    const auto arguments = pointersTo(command);
    const auto variables = pointersTo(environment);
    pid_t process = 0;
    started_ = Clock::now();
    if (posix_spawn(&process, command.front().c_str(), nullptr, nullptr, arguments.data(), variables.data()) != 0)
        giveUp(command.front() + " does not start");
}

double ProgramRun::end()
{
    if (!std::exchange(isRunning_, false))
        return 0;
    auto sum = 0.0;
    for (auto processes = ProcessTree::members(); !processes.empty(); processes = ProcessTree::members()) {
        std::map<pid_t, double> unseen;
        for (const auto process : processes)
            unseen[process] = processorMilliseconds({ process });
        // Parents first, so that nothing is seen to crash.
        for (const auto process : processes)
            kill(process, SIGKILL);
        // What a process had waited for itself is part of its usage.
        rusage usage {};
        for (auto process = wait4(-1, nullptr, 0, &usage); process > 0; process = wait4(-1, nullptr, 0, &usage)) {
            sum += milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
            unseen.erase(process);
        }
        // A sandbox that ends takes its processes along, and their usage goes to nobody.
        for (const auto& [process, time] : unseen)
            sum += time;
    }
    return sum;
}

} // namespace bench
