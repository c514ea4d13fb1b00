#include "ItemProgram.h"

#include "Bus.h"

#include <algorithm>

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 30s;
constexpr auto busName = "org.perchly.Items";

} // namespace

ItemProgram::ItemProgram(std::vector<std::string> command, const UserFolders& folders, MeasuringHost& host)
    : host_(host)
    , bus_(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr))
    , run_(std::move(command), folders.environment())
{
    host_.reset();
    if (!waitUntil([&] { return isOnBus(bus_, busName); }, patience))
        giveUp("the program that makes items is not on the bus");
}

ItemProgram::~ItemProgram()
{
    run_.end();
    host_.waitForDeparture();
    g_object_unref(bus_);
}

double ItemProgram::synchronise(std::size_t count)
{
    const auto ordered = Clock::now();
    order("Synchronise", nullptr);
    return millisecondsBetween(ordered, host_.waitForItems(count));
}

void ItemProgram::setIcon(const std::string& bookmark, const std::string& symbol, const std::string& emoji)
{
    order("SetIcon", g_variant_new("(sss)", bookmark.c_str(), symbol.c_str(), emoji.c_str()));
}

void ItemProgram::order(const char* method, GVariant* arguments)
{
    g_dbus_connection_call(
        bus_, busName, "/", busName, method, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
}

std::vector<std::string> symbolNames(const std::filesystem::path& programs, std::size_t count)
{
    std::vector<std::string> names;
    for (const auto& drawing : std::filesystem::directory_iterator(programs / "share/perchly/symbols"))
        names.push_back(drawing.path().stem());
    if (names.size() < count)
        giveUp("the icon set has too few symbols");
    std::sort(names.begin(), names.end());
    names.resize(count);
    for (auto& name : names)
        std::replace(name.begin(), name.end(), '_', '.');
    return names;
}

std::vector<UserFolders::MenuBarBookmark> bookmarksWithSymbols(const std::filesystem::path& programs, std::size_t count)
{
    std::vector<UserFolders::MenuBarBookmark> bookmarks;
    for (const auto& symbol : symbolNames(programs, count))
        bookmarks.push_back({ "Bookmark " + symbol, "http://127.0.0.1:1/" + symbol, symbol, {}, {} });
    return bookmarks;
}

} // namespace bench
