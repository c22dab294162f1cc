#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "views/folderFigures.h"
#include "views/widgets/listModel.h"

class ListView;

// The file types list and the owners list: the files of the whole subtree of the folder selected in the tree,
// in groups. A row's key is "KEY_" and the group's name as stored. While the same folder is shown, rows
// change in place, and those of groups that are gone stay, deliberately. Errors are logged.
class GroupLists {
public:
    [[nodiscard]] static std::span<const ListColumn> fileTypeColumns() noexcept;
    [[nodiscard]] static std::span<const ListColumn> ownerColumns() noexcept;

    // The lists, made with these columns. Neither is owned.
    GroupLists(ListView& lvwT, ListView& lvwU) : fileTypes_{lvwT, {}}, owners_{lvwU, {}} {}

    // An empty key or "ROOT" leaves the list as it is. The caller sorts afterwards.
    void updateFileTypeListview(Database& database, std::string_view selectedKey);
    void updateUserListview(Database& database, std::string_view selectedKey);

    // Empties both lists; the next updates fill them anew, whatever folder is shown.
    void clear();

private:
    struct Shown {
        ListView& list;
        std::string key; // of the folder
    };
    using Query = std::vector<modFigures::FileGroup> (*)(Database& database, std::string_view key);
    static void update(Shown& shown, Database& database, std::string_view selectedKey, Query query);

    Shown fileTypes_;
    Shown owners_;
};
