#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "views/comparison.h"

namespace modChanges {

// One recorded file or folder of one of the two scans. The texts are valid until its scan's next row.
struct Entry {
    std::string_view folder; // the one that it is in, behind the compared folder: "a\b\", or nothing
    std::string_view name;
    bool isFolder = false;
    double size = 0;
    std::string_view modified;
    std::string_view owner;
    std::string_view extension;
};

// Takes the entries of both scans in the order of their folders and names, in which a folder's row comes
// before its contents, and adds up what lies in each folder. A folder is complete when the next entry lies
// elsewhere; then its change is known and written.
class ChangedFolders {
public:
    ChangedFolders(Table& table, const Request& request, Result& result);

    // The compared folder's own rows, where there are any; to be called before all others.
    void setItself(const std::optional<Entry>& before, const std::optional<Entry>& now);

    // Null for the scan that does not have it; both have the same path, and both or none is a folder.
    void add(const Entry* before, const Entry* now);

    // To be called at the end.
    void finish();

private:
    struct Scan {
        bool isThere = false;
        std::optional<double> ownSize; // from its own row
    };
    struct Folder {
        std::string name; // with "\"
        Scan before;
        Scan now;
        bool otherDate = false;
        std::string modified;
        std::string owner;
    };
    // A folder on the way to the current one.
    struct Level {
        std::size_t pathEnd = 0; // of its path, in path_
        Folder folder;
        double filesBefore = 0; // directly in it
        double filesNow = 0;
        double foldersBefore = 0;
        double foldersNow = 0;
        std::int64_t differences = 0;
        std::vector<Folder> subfolders; // whose contents may still come
        std::size_t next = 0;           // the first of these
    };

    static Folder folderOf(const Entry* before, const Entry* now);
    void goTo(std::string_view folder);
    void enter(std::string_view name);
    void leave();
    void leaveSubfolder(const Folder& folder);
    void addFile(const Entry* before, const Entry* now);
    void record(const Level& level, std::size_t parentEnd);
    [[nodiscard]] bool mayInvent(std::size_t bytes);

    Table& table_;
    Result& result_;
    bool keepsSame_;
    std::string path_;  // of the current folder
    std::size_t start_; // of it, behind the compared folder
    std::vector<Level> levels_;
    Change change_;
    std::size_t invented_ = 0; // bytes of paths written for folders without a row of their own
};

} // namespace modChanges
