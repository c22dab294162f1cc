#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "db/dao.h"

// What has changed between two scans, as rows of table `changes`, which views/comparison.h fills. The table
// is in the database beside the working one (EarlierScan).
namespace modChanges {

// `touched`: it has the same size, and another date or, for a folder, something in it that differs.
enum class State { same, appeared, gone, grown, shrunk, touched };
inline constexpr std::size_t states = 6;

// "same", "new", "gone", "grown", "shrunk", "touched".
[[nodiscard]] std::string_view stateText(State state);

// One file or folder, with the path that it has or would have in the later scan.
struct Change {
    std::string folder; // the one that it is in, with its drive and a trailing "\"
    std::string name;   // a folder's ends in "\"
    bool isFolder = false;
    std::optional<double> before; // bytes; nothing if it was not there
    std::optional<double> now;
    State state = State::same;
    // Of a folder: the bytes of the files directly in it, and how many items in it, at any depth, differ.
    double filesBefore = 0;
    double filesNow = 0;
    std::int64_t differences = 0;
    std::string modified; // the later scan's, if it is there; as stored
    std::string owner;
    std::string extension;

    [[nodiscard]] double change() const noexcept { return now.value_or(0) - before.value_or(0); }
    [[nodiscard]] std::string path() const { return folder + name; }
    [[nodiscard]] std::string_view nameAlone() const noexcept; // without "\"
};

// Makes table `changes`, empty. Its columns, beside those of `details` with the same names:
//   comparison              the number of the comparison, from 1
//   sizeBefore, sizeNow     null if it was or is not there
//   sizeChange, amount      the change, and the same without its sign, to sort by
//   state                   the number of the State
//   filesBefore, filesNow, differences
// It holds what differs, and the compared folder itself, whose row has the name of a drive's root for a name
// and no parent folder if it is one.
//
// View `changed` has the rows with the columns of `details`: `idx` is a row's number, and the size that of
// the later scan or, of what is gone, of the earlier one.
void makeTable(Database& database);

// Appends rows to it.
class Table {
public:
    Table(Database& database, std::int64_t comparison);

    // The texts are not copied, and must live until this returns.
    void append(const Change& change);

private:
    std::int64_t comparison_;
    std::unique_ptr<Recordset> rows_;
    std::array<Field*, 15> fields_{};
};

// Reads rows of it one after the other.
class Reader {
public:
    // `condition` is for behind "where"; empty for all rows. Sorted by the amount of the change, largest
    // first, or by path.
    enum class Order { largestFirst, byPath };
    Reader(Database& database, const std::string& condition, Order order);

    [[nodiscard]] bool atEnd() const { return rows_->EndOfFile(); }
    [[nodiscard]] std::int64_t count() { return rows_->RecordCount(); }
    [[nodiscard]] const Change& row(); // valid until `next`
    void next();

private:
    std::unique_ptr<Recordset> rows_;
    std::array<Field*, 12> fields_{};
    Change row_;
    bool isRead_ = false;
};

// The row of a folder (a key); nothing if it is the same in both scans.
[[nodiscard]] std::optional<Change> folderRow(Database& database, std::int64_t comparison,
                                              std::string_view folder);

// The files and folders directly in it that differ, largest change first.
[[nodiscard]] std::vector<Change> entriesIn(Database& database, std::int64_t comparison,
                                            std::string_view folder);

// What of a folder (a key) differs, largest change first: its subfolders, and modFigures::filesLabel for the
// files directly in it.
[[nodiscard]] std::vector<Change> childrenOf(Database& database, std::int64_t comparison,
                                             std::string_view folder);

// Removes the rows of a comparison.
void forget(Database& database, std::int64_t comparison);

// The first files or folders that differ, largest change first; all if `most` is 0.
[[nodiscard]] std::vector<Change> largest(Database& database, std::int64_t comparison, bool folders,
                                          std::size_t most);

// "/\srv\a\" as "/\srv\" and "a\"; a drive's root as nothing and itself.
[[nodiscard]] std::pair<std::string_view, std::string_view> splitKey(std::string_view folder);

} // namespace modChanges
