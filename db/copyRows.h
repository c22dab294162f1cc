#pragma once

#include <cstdint>
#include <string_view>

#include "db/dao.h"

// Appends all rows of a table to the table with the same name in another database, matching columns by name,
// and returns the number of rows. Throws 3127 if the other table lacks a column, and 3049 if there are more
// rows than the file can hold; the rows appended before stay.
std::int64_t copyRows(Database& from, Database& to, std::string_view table);
