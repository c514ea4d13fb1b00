#pragma once

#include "platform/linux/table/ColumnLayout.h"

#include <gtk/gtk.h>

namespace desktop {

/// A row of widgets, one in each column. It is as tall as it is made, whatever its cells ask for, so that what changes
/// in a cell is no concern of the table's. The spans must outlive it.
[[nodiscard]] GtkWidget* makeRowStrip(const std::vector<ColumnSpan>& spans);

/// The same for the columns' titles; it asks for their height.
[[nodiscard]] GtkWidget* makeHeaderStrip(const std::vector<ColumnSpan>& spans);

/// Adds a title at the end of a header.
void addHeaderTitle(GtkWidget* header, const char* title);

/// Adds an empty cell at the end of a row.
GtkWidget* addCell(GtkWidget* row);

/// The cell shows the widget, wherever that was before, or nothing.
void setCellContent(GtkWidget* cell, GtkWidget* content);

} // namespace desktop
