#pragma once

#include "platform/linux/table/Table.h"

#include <gtk/gtk.h>

namespace desktop {

/// A scrollable widget that shows a table: the columns' titles and, below, the rows in sight. To themes it is a column
/// view.
[[nodiscard]] GtkWidget* makeTableWidget();

/// The table behind such a widget, which lives as long as that.
[[nodiscard]] Table& tableOf(GtkWidget* tableWidget);

} // namespace desktop
