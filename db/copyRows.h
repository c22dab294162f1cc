#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "db/dao.h"

// Appends all rows of a table in a file that is not trusted to the table with the same name in another
// database, matching columns by name, and returns the number of rows. Throws as Database::OpenStored does,
// 3127 if the other table lacks a column, and 3049 if a row cannot be one of a scan or if there is more than
// the file can hold; the rows appended before stay.
//
// A file holds each value once, and a text in at least two thirds of its bytes (as UTF-16). So a copy of more
// than twice the file's bytes comes from values that the file does not hold, such as a column's default, or
// holds once for many rows.
std::int64_t copyRows(Database& from, Database& to, std::string_view table);

// The same with these columns only, for a copy that is soon thrown away: the others stay NULL, are not looked
// at, and need not be in the target. Of these, those that the source lacks are NULL too. Ends early if
// `goesOn`, asked now and then, says so.
std::int64_t copyColumns(Database& from, Database& to, std::string_view table,
                         std::span<const std::string_view> columns, const std::function<bool()>& goesOn);
// Appends rows of table `details` of a database of the program's own, those that meet the condition, to that
// of another one.
void copyOwnRows(Database& from, Database& to, std::string_view condition);
