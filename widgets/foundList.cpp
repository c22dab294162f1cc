#include "widgets/foundList.h"

#include <array>

#include "base/formatSize.h"
#include "db/folderRows.h"
#include "platform/paths.h"

namespace {

constexpr std::array<ListColumn, 6> foundColumns{{
    {"Name", "", false, "A file's short name.text", true},
    {"Folder", "", false, "/home/somebody/a folder"},
    {"Size", "SIZE", true, "1,023 bytes "},
    {"Owner", "", false, "administrator"},
    {"Modified", "DATETIME", false, "12/28/2028 10:58:58 AM"},
    {"Accessed", "DATETIME", false, "12/28/2028 10:58:58 AM"},
}};

std::string_view tagOf(const modFind::Item& item) {
    return item.isFolder ? (item.isGone ? "GONEFOLDER" : "FOLDER") : (item.isGone ? "GONEFILE" : "FILE");
}

} // namespace

std::span<const ListColumn> modFoundList::columns() noexcept {
    return foundColumns;
}

std::vector<ListRow> modFoundList::rows(std::span<const modFind::Item> items) {
    std::vector<ListRow> rows;
    rows.reserve(items.size());
    for (const modFind::Item& item : items) {
        std::string name(item.nameAlone());
        if (item.description == modFolderRows::otherVolume) {
            name += " (other volume)";
        }
        const std::string folder = platform::displayPath(item.folder);
        const std::string size = modLvw::formatSize(item.size);
        const std::array<ListCell, foundColumns.size()> cells{
            {{name}, {folder}, {size, item.size}, {item.owner}, {item.modified}, {item.accessed}}};
        rows.emplace_back(item.path(), tagOf(item), cells);
    }
    return rows;
}
