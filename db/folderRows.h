#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "db/dao.h"
#include "platform/locale.h"

// The rows of table `details` that belong to a folder. They are found by `parentFolder`, which is never cut,
// and `fileName`; not by `fullPath`, which is cut. Folders are given as internal paths with a trailing "\".
namespace modFolderRows {

// The description of a folder's own row if it is the root of another volume, which was not scanned with it.
inline constexpr std::string_view otherVolume = "File Folder (other volume)";

// --- Conditions of statements, for behind "where" ---------------------------------------------------------

// The folder's own row. A drive's root has none.
[[nodiscard]] std::string itself(std::string_view folder);
// The items directly in it.
[[nodiscard]] std::string directlyIn(std::string_view folder);
// The file with that name directly in it.
[[nodiscard]] std::string fileIn(std::string_view folder, std::string_view name);
// What has the folder's path, or one below it, in a column.
[[nodiscard]] std::string atOrBelow(std::string_view column, std::string_view folder);
// The items in it, at any depth.
[[nodiscard]] std::string anywhereIn(std::string_view folder);
// The folders among them.
[[nodiscard]] std::string foldersAnywhereIn(std::string_view folder);
// The items again, for statements that read the table and not its index of parent folders.
[[nodiscard]] std::string anywhereInOfTable(std::string_view folder);
// The files in it, at any depth, in the form with which the fewest rows are read: by the index of parent
// folders, if they are a small part of the table; else by comparing each row in the given form.
enum class Form { range, pattern };
[[nodiscard]] std::string filesAnywhereIn(Database& database, std::string_view folder, Form form);

// --- What is recorded of a folder -------------------------------------------------------------------------

// What a folder's row sums up.
struct Totals {
    double size = 0;          // bytes
    double sizeOnDisk = 0;    // bytes allocated, with the folder's own
    std::int64_t files = 0;   // at any depth
    std::int64_t folders = 0; // at any depth, without the folder itself
    bool isKnown = true;      // but for the size; not known of what an earlier version has recorded

    void addFile(double fileSize, double fileSizeOnDisk) noexcept;
    void addFolder(const Totals& folder) noexcept;
    [[nodiscard]] bool operator==(const Totals&) const = default;
};

struct RecordedFolder {
    bool hasOwnRow = false;
    bool hasContent = false; // it has rows at any depth
    Totals totals;           // from its own row
    std::string stamp;       // from its own row; empty until it has been scanned completely

    [[nodiscard]] bool isThere() const noexcept { return hasOwnRow || hasContent; }
};

// By name, without "\".
using RecordedFolders =
    std::unordered_map<std::string, RecordedFolder, platform::NameHash, platform::NameEqual>;

[[nodiscard]] RecordedFolder find(Database& database, std::string_view folder);

// The direct subfolders: those that have a row, and those of which a refresh has left only deeper rows. Takes
// one look into the index for each, however much is in them.
[[nodiscard]] RecordedFolders subfolders(Database& database, std::string_view folder);

// True if no row lies outside the folder, not even its own; of rows that meet the further condition (" and
// ..."). Takes three looks into the index, or one pass over the table if there is none.
[[nodiscard]] bool holdsAll(Database& database, std::string_view folder, const std::string& further = {});

// The number of items in the folder, at any depth. Reads the two indexes, and no rows.
struct ItemCounts {
    std::int64_t files = 0;
    std::int64_t folders = 0;
};
[[nodiscard]] ItemCounts count(Database& database, std::string_view folder);

// The same, as the rows of what is directly in the folder tell it; nothing if one does not.
[[nodiscard]] std::optional<ItemCounts> storedCounts(Database& database, std::string_view folder);

// The total size of the items directly in the folder; 0 if there are none.
[[nodiscard]] double sum(Database& database, std::string_view folder);

// What counts as the folder's size (Database::sizeColumn): by its own row or, without one, by the items
// directly in it.
[[nodiscard]] double countedSize(Database& database, std::string_view folder, const RecordedFolder& recorded);

// The totals of the items directly in the folder, thus without what the folder itself takes on the disk.
[[nodiscard]] Totals totals(Database& database, std::string_view folder);

// --- Changes ----------------------------------------------------------------------------------------------

void remove(Database& database, const std::string& condition);

// The folder's own row, and the items in it at any depth.
void removeWhole(Database& database, std::string_view folder);

void setTotals(Database& database, std::string_view folder, const Totals& totals);
// False if the folder has no row of its own.
bool addSizeOnDisk(Database& database, std::string_view folder, double bytes);
void setSizeOnDisk(Database& database, std::int64_t row, double bytes); // of the row with that number
void setStamp(Database& database, std::string_view folder, std::string_view stamp); // empty for none

} // namespace modFolderRows
