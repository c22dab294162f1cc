#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace modDatabase {

// What the program writes into its databases' headers (SQLite's application_id), so that no other file is
// taken for one of them. The template has the first mark (db/schema.sql); a saved scan gets the second.
inline constexpr std::size_t markPosition = 68;
inline constexpr std::string_view workingMark = "SPNY";
inline constexpr std::string_view savedScanMark = "SPNS";

// How every database of the engine begins.
inline constexpr std::string_view databaseStart("SQLite format 3\0", 16);

// The functions examine a file (an internal path) that a new working database would replace, without changing
// it.

enum class FileKind {
    replaceable, // missing, empty or a working database, even a damaged one
    unmarked,    // a database without a mark, as earlier versions made them
    savedScan,
    link,
    others,
};

// By its first bytes, which disturbs no other program.
[[nodiscard]] FileKind kindOf(std::string_view path);

// Whether an unmarked file has the program's table "details"; its rows may be invalid, because a crash may
// leave them so.
[[nodiscard]] bool hasOwnTable(std::string_view path);

// What the engine left beside an earlier database of that name; it would be taken for the new one's. Throws
// if a file of anybody else's has such a name.
[[nodiscard]] std::vector<std::string> engineFilesBeside(std::string_view path);

// Deletes it.
void removeEngineFiles(std::string_view path);

} // namespace modDatabase
