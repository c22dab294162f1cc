#pragma once

#include <string>

#include "collect/collectedFigures.h"
#include "platform/clock.h"

// What a server tells of all machines, as text tables; those without rows are left out. Names are made safe
// for a terminal.
[[nodiscard]] std::string collectedTables(const modCollected::Figures& figures,
                                          const modCollected::Question& question, platform::Seconds now);
