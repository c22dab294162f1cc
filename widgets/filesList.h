#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "widgets/columnChoice.h"
#include "widgets/listModel.h"
#include "widgets/rowIcons.h"

class Database;

// The files and folders list: the direct children of the folder selected in the tree, in the order in which
// they were recorded. A row's key is the full path (for a folder, ending in "\"), its tag "FOLDER" or "FILE".
// Errors are logged.
class FilesList {
public:
    [[nodiscard]] static std::span<const ListColumn> columns() noexcept;

    // The list, created with these columns, and the images that it shows. Neither is owned.
    FilesList(ListView& lvwF, ImageList& imlFiles);

    // What the list may show behind those columns. When another choice is made, it is empty until the next
    // update.
    [[nodiscard]] ColumnChoice& further() noexcept { return further_; }
    [[nodiscard]] const ColumnChoice& further() const noexcept { return further_; }

    // Shows the children of the folder with that key. If the folder is already shown, appends those recorded
    // since or, if rows have been replaced, shows all of them again. An empty key or "ROOT" leaves the list
    // unchanged. The caller sorts afterwards.
    void updateFileFolderListview(Database& database, std::string_view selectedKey);

    // Empties the list; the next update fills it from the first row on, for any folder.
    void clear();

    // Gives the rows in view their missing icons (RowIcons).
    void getListViewIcons();

private:
    struct NewRows {
        std::vector<ListRow> rows;   // after those already shown
        std::int64_t count = 0;      // of all rows
        std::size_t digest = 0;      // of their content
        bool followTheShown = false; // the rows before them are still those shown
    };
    [[nodiscard]] NewRows newRows(Database& database) const;
    [[nodiscard]] double totalFor(Database& database) const;

    static constexpr std::int64_t nothing = -1;

    ListView& lvwF_;
    ColumnChoice further_;
    RowIcons icons_;
    std::string shownKey_;
    std::int64_t shownRows_ = nothing;
    std::size_t shownDigest_ = 0;
    double shownTotal_ = 0; // of the folder, which shares refer to
};
