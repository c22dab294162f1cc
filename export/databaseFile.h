#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/modDatabase.h"
#include "db/scanRecords.h"
#include "platform/runtimeError.h"

class clsUserInterface;

// Saves a scan in a database file of its own, and loads it. Both handle pending events while they work; the
// event handlers must not touch the working database.
namespace modExport {

// Copies the working database's file to the path, replacing any file there; a new one is for the user alone.
// The database is closed meanwhile and open again afterwards, even if the copy failed. Returns the reason of
// a failed copy; throws only if the working database cannot be opened again, and then replaces it by an empty
// one.
[[nodiscard]] std::optional<RuntimeError> copyDatabase(WorkingDatabase& working, std::string_view path,
                                                       clsUserInterface& userInterface);

// What to copy of it.
struct SavedPart {
    std::string_view folder = {}; // a key: its row and what is below it; empty for all
    bool foldersOnly = false;     // without the rows of files, which takes a small part of the room
};
// The same with a part of the rows. The database stays open.
[[nodiscard]] std::optional<RuntimeError> copyPart(const WorkingDatabase& working, const SavedPart& part,
                                                   std::string_view path, clsUserInterface& userInterface);

// Replaces the rows of the working database by those of a saved scan (a path as typed), and appends its saved
// tree nodes. The file is not trusted: it is only read, and refused unless it is another file, has both
// tables as plain ones, and holds nothing that is no scan's (copyRows). Throws with the file's displayed
// path; the working database is then as before.
void loadDatabase(WorkingDatabase& working, std::string_view path, clsUserInterface& userInterface);

// When the last of the scans that its rows come from ended; or, if that is not known, the time of the file, a
// path as typed.
[[nodiscard]] platform::Seconds savedScanMoment(std::string_view path,
                                                const std::vector<modScans::Scan>& scans);

// "Saved scan: FILE (11/22/2026 09:05:00 AM)", the path as typed: that moment.
[[nodiscard]] std::string savedScanText(std::string_view path, const std::vector<modScans::Scan>& scans);

} // namespace modExport
