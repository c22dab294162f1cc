#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/clsUserInterface.h"
#include "db/workingDatabase.h"

namespace modDatabase {

// Replaces the file at `databasePath` with a copy of the template and opens it with an empty table "details".
// A file that another program uses, or that is the same as one to `keep`, is left alone; a
// separate file beside it (main-2.dat, …) is used until the program ends, and a message says so. Links above
// the file are followed, so that two names of one file count as one. Throws RuntimeError naming the file if
// this fails.
//
// A file that is neither empty nor a working database is left alone as well: a message says so, and main.dat
// in the application folder is used. Throws 58 if that is no such database either. A link in the file's place
// is left alone too, unless `databasePath` names it, and the user has made it to a file of their own.
[[nodiscard]] WorkingDatabase prepareDatabase(std::string_view applicationFolder,
                                              std::string_view databasePath, clsUserInterface& userInterface,
                                              const std::vector<std::string>& keep = {});

} // namespace modDatabase
