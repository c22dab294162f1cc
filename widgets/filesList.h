#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "widgets/listModel.h"

class Database;
class ListView;

// The files and folders list: the direct children of the folder selected in the tree, in the order in which
// they were recorded. A row's key is the full path (for a folder, ending in "\"), its tag "FOLDER" or "FILE".
// Errors are logged.
class FilesList {
public:
    [[nodiscard]] static std::span<const ListColumn> columns() noexcept;

    // The list, created with these columns, and the images that it shows. Neither is owned.
    FilesList(ListView& lvwF, ImageList& imlFiles) : lvwF_(lvwF), imlFiles_(imlFiles) {}

    // Shows the children of the folder with that key. If the folder is already shown, appends those recorded
    // since or, if rows have been replaced, shows all of them again. An empty key or "ROOT" leaves the list
    // unchanged. The caller sorts afterwards.
    void updateFileFolderListview(Database& database, std::string_view selectedKey);

    // Empties the list; the next update fills it from the first row on, for any folder.
    void clear();

    // Gives the rows in view their missing icons. Called by a timer: cheap if no icon is missing. If the
    // system is slow to answer, as for a slow network, the next call continues with the following rows.
    void getListViewIcons();

private:
    struct NewRows {
        std::vector<ListRow> rows;   // after those already shown
        std::int64_t count = 0;      // of all rows
        std::size_t digest = 0;      // of their content
        bool followTheShown = false; // the rows before them are still those shown
    };
    [[nodiscard]] NewRows newRows(Database& database) const;

    static constexpr std::int64_t nothing = -1;

    ListView& lvwF_;
    ImageList& imlFiles_;
    std::string shownKey_;
    std::int64_t shownRows_ = nothing;
    std::size_t shownDigest_ = 0;
    unsigned nextIcon_ = 0; // continues through the rows in view, so that each gets its turn
};
