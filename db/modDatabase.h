#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "app/clsUserInterface.h"
#include "db/dao.h"
#include "db/detailsTable.h"
#include "platform/files.h"

// The working database: scratch storage that every run starts from an empty copy of the template "001.dat".
struct WorkingDatabase {
    // Held as long as the file is this program's. Declared first: the file is closed before it is let go.
    std::unique_ptr<platform::FileLock> lock;
    std::unique_ptr<Database> database;
    std::unique_ptr<DetailsTable> details; // the one place that rows are appended through

    [[nodiscard]] const std::string& path() const { return database->Name(); }

    // Closes the file so that it can be copied, and opens it again.
    void close();
    void reopen();

private:
    std::string closedPath_;
};

namespace modDatabase {

// Makes the file at `databasePath` anew from the template and opens it with an empty table "details". A file
// that another program works in, or that is the same as `keep` (may be empty), is left alone: a file of the
// program's own beside it is used (main-2.dat, …), and the user interface says so.
// Throws RuntimeError naming the file when that cannot be done.
[[nodiscard]] WorkingDatabase prepareDatabase(std::string_view applicationFolder,
                                              std::string_view databasePath, clsUserInterface& userInterface,
                                              std::string_view keep = {});

} // namespace modDatabase
