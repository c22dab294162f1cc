#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "collect/collectedFigures.h"
#include "platform/clock.h"

// What a server tells of all machines, as text tables with at most `top` rows (0 for all), but for that of
// the machines; those without rows are left out. Growth is that of so many days. Names are made safe for a
// terminal.
[[nodiscard]] std::string collectedTables(const modCollected::Figures& figures, std::int64_t days,
                                          std::size_t top, platform::Seconds now);
