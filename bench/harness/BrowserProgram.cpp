#include "BrowserProgram.h"

#include "Bus.h"
#include "PageServer.h"

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 30s;
constexpr auto bareName = "org.perchly.Bare";

std::string titleOf(std::size_t page)
{
    return "Page " + std::to_string(page);
}

std::vector<std::string> commandOf(const std::filesystem::path& program, const std::vector<std::string>& addresses)
{
    std::vector<std::string> command { program };
    command.insert(command.end(), addresses.begin(), addresses.end());
    return command;
}

} // namespace

double BrowserProgram::show(std::size_t page, ScreenProbe& screen)
{
    const auto clicked = Clock::now();
    click(page);
    if (!waitUntil([&] { return screen.shows(PageServer::colour); }, patience))
        giveUp(name_ + ": a click showed no page");
    return millisecondsBetween(clicked, Clock::now());
}

void BrowserProgram::hide(ScreenProbe& screen)
{
    // A key may come before the keyboard is the window's; then it is pressed again, as a user does.
    constexpr auto attempts = 5;
    for (auto attempt = 0; attempt < attempts; ++attempt) {
        dismiss();
        if (waitUntil([&] { return !screen.shows(PageServer::colour); }, 2s))
            return;
    }
    giveUp(name_ + ": a page stays on the screen");
}

PerchlyBrowsers::PerchlyBrowsers(
    const std::filesystem::path& programs, MeasuringHost& host, const std::vector<std::string>& addresses)
    : BrowserProgram("perchly")
    , host_(host)
{
    std::vector<std::string> titles;
    for (std::size_t page = 0; page < addresses.size(); ++page)
        titles.push_back(titleOf(page));
    folders_.setPinnedBookmarks(titles, addresses);
    host_.reset();
    run_.emplace(std::vector<std::string> { programs / "perchly" }, folders_.environment());
    (void)host_.waitForItem();
    host_.showItems();
    for (const auto& title : titles)
        rows_.push_back(host_.rowOf({ title, "Open" }));
}

PerchlyBrowsers::~PerchlyBrowsers()
{
    run_.reset();
    host_.waitForDeparture();
}

void PerchlyBrowsers::dismiss()
{
    if (!g_spawn_command_line_sync("xdotool key Escape", nullptr, nullptr, nullptr, nullptr))
        giveUp("xdotool is missing");
}

void PerchlyBrowsers::quit()
{
    host_.click(host_.rowOf({ "Quit" }));
}

BareBrowsers::BareBrowsers(const std::filesystem::path& programs, const std::vector<std::string>& addresses)
    : BrowserProgram("bare_browsers")
    , bus_(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr))
    , run_(std::in_place, commandOf(programs / "bare_browsers", addresses), folders_.environment())
{
    if (!waitUntil([&] { return isOnBus(bus_, bareName); }, patience))
        giveUp("the bare program is not on the bus");
}

BareBrowsers::~BareBrowsers()
{
    run_.reset();
    if (!waitUntil([&] { return !isOnBus(bus_, bareName); }, patience))
        giveUp("the bare program is still on the bus");
    g_object_unref(bus_);
}

void BareBrowsers::click(std::size_t page)
{
    order("Show", g_variant_new("(u)", static_cast<guint>(page)));
}

void BareBrowsers::dismiss()
{
    order("Hide", nullptr);
}

void BareBrowsers::order(const char* method, GVariant* arguments)
{
    g_dbus_connection_call(bus_, bareName, "/", bareName, method, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
        nullptr, nullptr, nullptr);
}

} // namespace bench
