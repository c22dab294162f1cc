#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "views/widgets/listModel.h"

class Database;
class ListView;

// The files and folders list: the direct children of the folder selected in the tree, in the order in which
// the scan recorded them. A row's key is the entry's full path (a folder's ends in "\"), its tag "FOLDER" or
// "FILE". Errors are logged.
class FilesList {
public:
    [[nodiscard]] static std::span<const ListColumn> columns() noexcept;

    // The list, made with these columns, and the images that it shows. Neither is owned.
    FilesList(ListView& lvwF, ImageList& imlFiles) : lvwF_(lvwF), imlFiles_(imlFiles) {}

    // Shows the children of the folder with that key; appends those recorded since the same folder was last
    // shown. An empty key or "ROOT" leaves the list as it is. The caller sorts afterwards.
    void updateFileFolderListview(Database& database, std::string_view selectedKey);

    // Empties the list; the next update fills it from the first row on, whatever folder is shown.
    void clear();

    // Gives the rows in view the icons that they lack. For a timer: cheap when they have them, and where the
    // system takes long to tell, such as for a slow network, the next call goes on with the rows behind.
    void getListViewIcons();

private:
    // The rows behind the first `skipped`; counts all of them into `count`.
    [[nodiscard]] std::vector<ListRow> newRows(Database& database, std::int64_t skipped,
                                               std::int64_t& count) const;

    static constexpr std::int64_t nothing = -1;

    ListView& lvwF_;
    ImageList& imlFiles_;
    std::string shownKey_;
    std::int64_t shownRows_ = nothing;
    unsigned nextIcon_ = 0; // counts on through the rows in view, so that each has its turn
};
