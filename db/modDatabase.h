#pragma once

#include <string_view>

#include "app/clsUserInterface.h"
#include "db/workingDatabase.h"

namespace modDatabase {

// Makes the file at `databasePath` anew from the template and opens it with an empty table "details". A file
// that another program works in, or that is the same as `keep` (may be empty), is left alone: a file of the
// program's own beside it is used until the end (main-2.dat, …), and the user interface says so. Links are
// followed, so that two names of one file are one. Throws RuntimeError naming the file when that cannot be
// done.
[[nodiscard]] WorkingDatabase prepareDatabase(std::string_view applicationFolder,
                                              std::string_view databasePath, clsUserInterface& userInterface,
                                              std::string_view keep = {});

} // namespace modDatabase
