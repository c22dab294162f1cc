#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "views/folderFigures.h"
#include "widgets/listModel.h"

class ListView;

// The file types list and the owners list: all files below the folder selected in the tree, in groups. A
// row's key is "KEY_" and the group's name as stored. While the same folder is shown, rows are changed in
// place. Odd on purpose: the rows of groups that no longer exist stay. Errors are logged.
class GroupLists {
public:
    [[nodiscard]] static std::span<const ListColumn> fileTypeColumns() noexcept;
    [[nodiscard]] static std::span<const ListColumn> ownerColumns() noexcept;

    // The lists, created with these columns. Neither is owned.
    GroupLists(ListView& lvwT, ListView& lvwU) : fileTypes_{lvwT, true, {}}, owners_{lvwU, false, {}} {}

    // An empty key or "ROOT" leaves the list unchanged. The caller sorts afterwards.
    void updateFileTypeListview(Database& database, std::string_view selectedKey);
    void updateUserListview(Database& database, std::string_view selectedKey);

    // Empties both lists; the next updates fill them, for any folder.
    void clear();

private:
    struct Shown {
        ListView& list;
        bool keysByCase; // even if the system ignores case in names
        std::string key; // the folder's key
    };
    using Query = std::vector<modFigures::FileGroup> (*)(Database& database, std::string_view key);
    static void update(Shown& shown, Database& database, std::string_view selectedKey, Query query);

    Shown fileTypes_;
    Shown owners_;
};
