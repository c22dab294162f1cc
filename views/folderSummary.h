#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "db/dao.h"
#include "platform/drives.h"

// What a folder holds altogether, and its share of the drive. `key` is as in folderFigures.h. Database errors
// are thrown.
namespace modFigures {

struct FolderSummary {
    double size = 0;             // bytes; the total of the chart's entries
    std::int64_t files = 0;      // at any depth, even if only folders were kept
    std::int64_t folders = 0;    // at any depth, without the folder itself
    bool isRecorded = false;     // there are rows of it
    bool onDisk = false;         // the size is what it takes on the disk
    bool isStamped = false;      // all of it was scanned; never so for a drive's root, which has no row
    bool hasUnkeptFiles = false; // and the rows of folders do not tell how many
};

[[nodiscard]] FolderSummary summary(Database& database, std::string_view key);

// What to say if sizes on disk were asked for and the rows lack them.
inline constexpr const char* lackingText =
    "This saved scan does not tell what files take on the disk, so their sizes are counted.";

// "3.2 Kb, 4 files, 1 folder" or "3.2 Kb on disk, 4 files, 1 folder".
[[nodiscard]] std::string summaryText(const FolderSummary& summary);

// "4 files, 1 folder"; "files not kept, 1 folder".
[[nodiscard]] std::string contentText(const FolderSummary& summary);

// The recorded size of a file, given by its internal path; 0 if it was not scanned.
[[nodiscard]] double fileSize(Database& database, std::string_view path);

// The size of a scanned folder; nothing if it was not scanned.
[[nodiscard]] std::optional<double> scannedSize(Database& database, std::string_view key);

// "12.3%", "<0.1%".
[[nodiscard]] std::string percentText(double share);

// "12.3% of used space, 5.0 Gb free". The share is left out if there is none: the size of very large files
// may be recorded as negative, and sparse files take less than they hold.
[[nodiscard]] std::string shareText(double size, const platform::DriveSpace& space);

// "2.0 Gb used, 5.0 Gb free of 7.0 Gb".
[[nodiscard]] std::string spaceText(const platform::DriveSpace& space);

} // namespace modFigures
