#pragma once

#include "MeasuringHost.h"
#include "Report.h"

#include <filesystem>

namespace bench {

struct Setting {
    /// Where the programs are.
    std::filesystem::path programs;
    int runs = 9;
};

/// From the start of the process to its registration at the status area.
void measureStart(const Setting& setting, MeasuringHost& host, Report& report);

/// From the start of the process to a page's pixels on the screen.
void measurePaint(const Setting& setting, MeasuringHost& host, Report& report);

/// From a click to the pixels of a browser that was open before.
void measureShow(const Setting& setting, MeasuringHost& host, Report& report);

/// Memory with several browsers, each with a page of its own.
void measureMemory(const Setting& setting, MeasuringHost& host, Report& report);

/// What opening one browser again and again, or many once, leaves behind.
void measureGrowth(const Setting& setting, MeasuringHost& host, Report& report);

/// Wake-ups and processor time with hidden pages that never rest.
void measureHidden(const Setting& setting, MeasuringHost& host, Report& report);

/// Memory, wake-ups, and what must not be there, while nothing happens.
void measureIdle(const Setting& setting, MeasuringHost& host, Report& report);

/// From the order to make many bookmarks' status items to the last one's registration.
void measureItemSync(const Setting& setting, MeasuringHost& host, Report& report);

/// Who speaks on the bus when one bookmark of many has changed.
void measureItemTraffic(const Setting& setting, MeasuringHost& host, Report& report);

/// From a change of a bookmark's icon to the picture at the status area.
void measureItemIcons(const Setting& setting, MeasuringHost& host, Report& report);

/// What one more status item weighs.
void measureItemMemory(const Setting& setting, MeasuringHost& host, Report& report);

/// As measureIdle, with status items of bookmarks with every kind of icon.
void measureItemIdle(const Setting& setting, MeasuringHost& host, Report& report);

/// From the order to show the bookmark manager to its rows on the screen.
void measureTableOpening(const Setting& setting, MeasuringHost& host, Report& report);

/// From a key in its search field to the rows that are left.
void measureTableSearch(const Setting& setting, MeasuringHost& host, Report& report);

/// What the bookmark manager takes for many rows that it does not take for few.
void measureTableMemory(const Setting& setting, MeasuringHost& host, Report& report);

/// From a click on a pin in the bookmark manager to all that shows it.
void measureTablePin(const Setting& setting, MeasuringHost& host, Report& report);

/// A big document of bookmarks, in and out.
void measureStore(const Setting& setting, Report& report);

} // namespace bench
