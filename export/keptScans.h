#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "db/modDatabase.h"
#include "export/databaseFile.h"

class clsUserInterface;

// A folder in which each scan is kept as a file of its own, and the oldest ones are removed.
namespace modExport {

// "vm-home-me-0123456789ab-": how the names of all kept scans of a folder (a key) of this machine begin. Safe
// on any file system, and different for different hosts and folders.
[[nodiscard]] std::string keptPrefix(std::string_view host, std::string_view key);

// Whether a name has the form of those that begin so: with the time of the scan, "20261122T031500Z.mdb", or
// "20261122T031500Z-2.mdb" for another one in the same second.
[[nodiscard]] bool isKeptName(std::string_view name, std::string_view prefix);

class KeptScans {
public:
    // The folder as typed; it is made, for the user alone, when the first scan is kept or checkFolder called.
    explicit KeptScans(std::string_view folder);

    // Throws if no file can be written there.
    void checkFolder() const;

    // Writes the part, a folder that was scanned, and returns the internal path of the file. Throws if this
    // fails; there is then no new file.
    std::string keep(WorkingDatabase& working, const SavedPart& part, bool isAll,
                     clsUserInterface& userInterface) const;

    // Removes all but the last ones of this machine's scans of the folder: files that have such a name, are
    // no links, and say themselves that they are. Returns why others of such a name could not be read, and
    // throws if one cannot be removed.
    std::vector<std::string> removeOld(std::string_view key, std::size_t last) const;

private:
    std::string folder_;
};

} // namespace modExport
