#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "scan/scanFile.h"

// What many saved scans tell about one folder.
namespace modExport {

// What one of them tells.
struct HistoryPoint {
    platform::Seconds moment = 0; // of the scan
    std::optional<ScanFile::Folder>
        folder;                   // nothing if the scan has come to where it should be: it was not there
    std::optional<double> change; // of the size since the last one of the same machine that had the folder
    bool isCancelled = false;     // that scan was, so that part may be missing
    std::string host;             // empty if not known
    std::string file;             // internal path
};

struct FolderHistory {
    std::string folder;                // as it is shown: the path that a saved scan has for it, or as typed
    std::vector<HistoryPoint> points;  // the oldest first
    std::size_t others = 0;            // saved scans of other folders
    std::vector<std::string> failures; // why others could not be read

    [[nodiscard]] bool hasFolder() const; // in any of them
    [[nodiscard]] bool hasSeveralHosts() const;
    [[nodiscard]] double largest() const; // size
};

// The internal paths of the saved scans that are meant: the file, or the files called *.mdb in the folder, by
// name. Throws 53 if there is no such thing, or none in it.
[[nodiscard]] std::vector<std::string> savedScansAt(std::string_view typedPath);

// "not there", "cancelled", or empty.
[[nodiscard]] std::string_view remarkOf(const HistoryPoint& point);

} // namespace modExport
