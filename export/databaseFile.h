#pragma once

#include <optional>
#include <string_view>

#include "db/modDatabase.h"
#include "platform/runtimeError.h"

class clsUserInterface;

// A scan kept as a database file of its own, and brought back. Both let pending events be handled while they
// work; whoever handles them must leave the working database alone.
namespace modExport {

// Copies the working database's file to the path, replacing what is there; the database is closed meanwhile
// and open again afterwards, whether or not the copy worked. The reason when it did not; throws only when
// the working database cannot be opened again, and is then made anew, empty.
[[nodiscard]] std::optional<RuntimeError> copyDatabase(WorkingDatabase& working, std::string_view path,
                                                       clsUserInterface& userInterface);

// Replaces the rows of the working database by those of such a file (a path as typed) and appends its saved
// tree nodes. The file is not trusted: it is only read, and refused unless it holds the tables and is another
// file. Throws with the file's displayed path; the working database then keeps its rows if the file was
// refused, and has none if reading it failed half-way.
void loadDatabase(WorkingDatabase& working, std::string_view path, clsUserInterface& userInterface);

} // namespace modExport
