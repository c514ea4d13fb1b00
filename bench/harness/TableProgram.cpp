#include "TableProgram.h"

#include "Bus.h"
#include "Turns.h"
#include "bare/TableText.h"

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 30s;
constexpr auto bareName = "org.perchly.Bare";

/// A row's texts are in here, whichever row it is and wherever the window manager puts the window; scroll bars and the
/// search field are not.
constexpr ScreenArea rowsArea { 200, 380, 400, 40 };

/// Where it points at nothing.
constexpr auto cornerX = 1279;
constexpr auto cornerY = 799;

} // namespace

TableProgram::TableProgram(std::string name)
    : name_(std::move(name))
{
    folders_.stopCursor();
    input_.point(cornerX, cornerY);
}

Clock::time_point TableProgram::run(const std::vector<std::string>& command)
{
    run_.emplace(command, folders_.environment());
    return run_->started();
}

/// What the area looks like at rest, it looked like from then on.
double TableProgram::rowsAppear(ScreenProbe& screen, Clock::time_point since)
{
    if (!waitUntil([&] { return screen.lastChange().has_value(); }, patience))
        giveUp(name_ + ": no rows appear");
    waitForRest(200ms, 1);
    return millisecondsBetween(since, screen.lastChange().value());
}

double TableProgram::startAndOpen()
{
    ScreenProbe screen(rowsArea);
    screen.watch();
    return rowsAppear(screen, startWithOrder());
}

void TableProgram::start()
{
    startWithoutOrder();
    waitForRest(300ms, 1);
}

void TableProgram::startWarm()
{
    start();
    ScreenProbe screen;
    const auto waitForChange = [&] {
        if (!waitUntil([&] { return screen.lastChange().has_value(); }, patience))
            giveUp(name_ + ": the other window stays as it is");
        waitForRest(300ms, 1);
    };
    screen.watch();
    showOtherWindow();
    waitForChange();
    screen.watch();
    hideOtherWindow();
    waitForChange();
}

double TableProgram::open()
{
    ScreenProbe screen(rowsArea);
    screen.watch();
    const auto ordered = Clock::now();
    order();
    return rowsAppear(screen, ordered);
}

double TableProgram::end()
{
    return run_->end();
}

double TableProgram::press(const std::string& key)
{
    ScreenProbe screen(rowsArea);
    screen.watch();
    const auto pressed = Clock::now();
    input_.press(key);
    return rowsAppear(screen, pressed);
}

void TableProgram::enterTable()
{
    for (auto tab = 0; tab < tabsToTable(); ++tab)
        input_.press("Tab");
    waitForRest(300ms, 1);
}

PerchlyTable::PerchlyTable(const std::filesystem::path& programs, MeasuringHost& host, std::size_t rows)
    : TableProgram("perchly")
    , program_(programs / "perchly")
    , host_(host)
{
    std::vector<std::string> titles;
    std::vector<std::string> addresses;
    for (std::size_t row = 0; row < rows; ++row) {
        titles.push_back(titleOfRow(row));
        addresses.push_back(addressOfRow(row));
    }
    folders().setListedBookmarks(titles, addresses);
}

PerchlyTable::~PerchlyTable()
{
    end();
    host_.waitForDeparture();
}

Clock::time_point PerchlyTable::startWithOrder()
{
    host_.reset();
    const auto started = run({ program_ });
    (void)host_.waitForItem();
    host_.choose("Bookmarks Manager");
    return started;
}

void PerchlyTable::startWithoutOrder()
{
    host_.reset();
    (void)run({ program_ });
    (void)host_.waitForItem();
    host_.showItems();
    managerRow_ = host_.rowOf({ "Bookmarks Manager" });
    settingsRow_ = host_.rowOf({ "Settings..." });
}

void PerchlyTable::hideOtherWindow()
{
    input().press("ctrl+w");
}

BareTable::BareTable(const std::filesystem::path& programs, std::size_t rows)
    : TableProgram("bare_table")
    , command_({ programs / "bare_table", std::to_string(rows) })
    , bus_(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr))
{
}

BareTable::~BareTable()
{
    end();
    if (!waitUntil([&] { return !isOnBus(bus_, bareName); }, patience))
        giveUp("the bare program is still on the bus");
    g_object_unref(bus_);
}

Clock::time_point BareTable::startWithOrder()
{
    auto command = command_;
    command.emplace_back("now");
    return run(command);
}

void BareTable::startWithoutOrder()
{
    (void)run(command_);
    if (!waitUntil([&] { return isOnBus(bus_, bareName); }, patience))
        giveUp("the bare program is not on the bus");
}

void BareTable::call(const char* method)
{
    g_dbus_connection_call(
        bus_, bareName, "/", bareName, method, nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
}

} // namespace bench
