#pragma once

#include <QString>

#include "views/quickSort.h"

// The name of a bar or slice as it is shown; "..." follows that of a folder which a scan is still reading.
[[nodiscard]] QString chartLabel(const ChartEntry& entry);
