#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "db/dao.h"
#include "views/treemapReader.h"

// The treemap of a folder while a scan fills an empty table, which has no indexes yet: each row is read once,
// in the order of recording, and counted for its folder and its type. Files have no places of their own in
// it.
class TreemapGrowth {
public:
    // The pixels of the pictures to be made.
    TreemapGrowth(std::string_view folder, double area);

    [[nodiscard]] const std::string& folder() const noexcept { return types_.folder(); }
    [[nodiscard]] double area() const noexcept { return types_.area(); }

    // Reads the rows recorded since, until that time, or a little longer. True if there are no
    // more. Database
    // errors are thrown.
    bool readUntil(Database& database, modTreemap::Time end);

    // What has been read so far.
    [[nodiscard]] TreemapTree tree() const;

private:
    struct Group {
        std::uint32_t type;
        std::uint32_t files;
        double size;
    };
    struct Folder {
        std::string name;
        std::uint32_t parent;
        std::vector<std::uint32_t> subfolders;
        std::vector<Group> groups;
    };
    std::uint32_t folderOf(const std::string& path);
    static void count(Folder& folder, std::uint32_t type, double size);

    TreemapTree types_;           // has no children
    std::vector<Folder> folders_; // the first is the folder itself; parents come before their subfolders
    std::unordered_map<std::string, std::uint32_t> indexes_; // by path
    std::string lastPath_;
    std::uint32_t last_ = 0;
    std::int64_t lastRow_ = 0; // its number
};
