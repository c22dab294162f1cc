#pragma once

#include <cstddef>
#include <string>

#include "views/comparison.h"

// What has changed in a folder, as text tables with at most `top` rows each (0 for all), largest change
// first: what is directly in it, file types, owners, files; and a last line with totals. The rows come from
// the request's comparison in table `changes`. Names are made safe for a terminal.
[[nodiscard]] std::string changeTables(Database& changes, const modChanges::Request& request,
                                       const modChanges::Result& result, std::size_t top);
