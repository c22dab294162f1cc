#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "db/dao.h"
#include "db/scanRecords.h"
#include "views/changes.h"

class clsUserInterface;

// Compares a folder in table `details` with one in a saved scan, by reading the rows of both in the order of
// their paths.
namespace modChanges {

// What is to be compared. Folders are keys.
struct Request {
    std::string folder;
    std::string folderBefore; // in the saved scan; another one if a copy is held against its original
    std::int64_t number = 1;  // of the comparison in table `changes`
    bool keepsSame = false;   // write rows for what has not changed too
};

// Files of one type or one owner.
struct Group {
    std::string name; // as stored; empty for none
    double before = 0;
    double now = 0;
    std::int64_t filesBefore = 0;
    std::int64_t filesNow = 0;

    [[nodiscard]] double change() const noexcept { return now - before; }
    [[nodiscard]] bool differs() const noexcept { return before != now || filesBefore != filesNow; }
};

struct Result {
    Change folder;                              // itself
    std::vector<Group> types;                   // all, largest change first
    std::vector<Group> owners;                  // likewise
    std::array<std::int64_t, states> files{};   // how many are in each State
    std::array<std::int64_t, states> folders{}; // likewise, without the folder itself
    bool foldersOnly = false;   // a scan was saved without its files, so that none are compared
    bool oneLacksFiles = false; // likewise, but the other one was not
    bool complete = false;      // not cancelled

    [[nodiscard]] bool differs() const noexcept { return folder.state != State::same; }
};

// Nothing is owned.
struct Sources {
    Database& now;
    Database& before; // as made by EarlierScan; has the table `changes`, to which rows are appended
    clsUserInterface& userInterface;
    std::function<bool()> goesOn = {}; // asked now and then; after a no, the result is incomplete
};

// What is to be said about figures that come from these scans and from those: "Compared although the two
// scans differ: ..."; empty for nothing.
[[nodiscard]] std::string remark(const std::vector<modScans::Scan>& before,
                                 const std::vector<modScans::Scan>& now, bool oneLacksFiles);
// Where the figures beside it are other ones.
inline constexpr std::string_view sizesRemark = "Sizes are compared, not what is taken on the disk.";

// Sizes of folders are those of their own rows or, of folders without one, the sums of what is recorded in
// them. Dates of access and owners are not compared; names are, as the system compares names of files. What
// was a file and is a folder now is gone and new. Takes memory for the subfolders of the folders on the way
// to the current one, and for the names of types and owners. Database errors are thrown.
[[nodiscard]] Result compare(const Sources& sources, const Request& request);

} // namespace modChanges
