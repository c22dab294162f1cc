#include "widgets/groupLists.h"

#include <array>
#include <unordered_map>
#include <utility>

#include "base/errorTrap.h"
#include "base/formatSize.h"
#include "platform/locale.h"
#include "widgets/listView.h"
#include "widgets/lvsort.h"

namespace {

constexpr ListColumn totalSizeColumn{"Total Size", "SIZE", true, "1,023.9 bytes"};
constexpr ListColumn fileCountColumn{"File Count", "NUMBER", true, "1000000000"};

constexpr std::array<ListColumn, 3> typesColumns{
    {{"Extension", "", false, "An extension", true}, totalSizeColumn, fileCountColumn}};
constexpr std::array<ListColumn, 3> ownersColumns{
    {{"Owner", "", false, "An owner's name"}, totalSizeColumn, fileCountColumn}};

// The places of the rows by their exact keys, including case.
std::unordered_map<std::string_view, int> placesByCase(const ListModel& rows) {
    std::unordered_map<std::string_view, int> places;
    for (int place = 0; place < rows.rowCount(); ++place) {
        places.try_emplace(rows.row(place).key(), place);
    }
    return places;
}

} // namespace

std::span<const ListColumn> GroupLists::fileTypeColumns() noexcept {
    return typesColumns;
}

std::span<const ListColumn> GroupLists::ownerColumns() noexcept {
    return ownersColumns;
}

void GroupLists::updateFileTypeListview(Database& database, std::string_view selectedKey) {
    modGlobal::trapped("frmMain", "updateFileTypeListview",
                       [&] { update(fileTypes_, database, selectedKey, modFigures::fileTypes); });
}

void GroupLists::updateUserListview(Database& database, std::string_view selectedKey) {
    modGlobal::trapped("frmMain", "updateUserListview",
                       [&] { update(owners_, database, selectedKey, modFigures::owners); });
}

void GroupLists::clear() {
    for (Shown* shown : {&fileTypes_, &owners_}) {
        shown->list.rows().clear();
        shown->key.clear();
    }
}

void GroupLists::update(Shown& shown, Database& database, std::string_view selectedKey, Query query) {
    if (selectedKey.empty() || selectedKey == "ROOT") {
        return;
    }
    ListModel& rows = shown.list.rows();
    if (selectedKey != shown.key) {
        rows.clear();
        shown.key = selectedKey;
    }
    // All rows are looked up before any is changed, because a change discards the model's index of keys.
    const auto places = shown.keysByCase ? placesByCase(rows) : std::unordered_map<std::string_view, int>();
    const auto placeOf = [&](std::string_view key) {
        const auto found = places.find(key);
        return found == places.end() ? -1 : found->second;
    };
    std::vector<std::pair<int, ListRow>> changedRows;
    std::vector<ListRow> newRows;
    for (const modFigures::FileGroup& group : query(database, selectedKey)) {
        const std::string key = "KEY_" + group.name;
        const std::string name = platform::lowerCase(group.name);
        const std::string size = modLvw::formatSize(group.size);
        const std::array<ListCell, 3> cells{{{name, {}}, {size, group.size}, {group.count, group.count}}};
        ListRow row(key, {}, cells);
        const int index = shown.keysByCase ? placeOf(key) : modLvw::itemIndex(key, shown.list);
        if (index > -1) {
            changedRows.emplace_back(index, std::move(row));
        } else {
            newRows.push_back(std::move(row));
        }
    }
    for (auto& [index, row] : changedRows) {
        rows.setRow(index, std::move(row));
    }
    rows.append(std::move(newRows));
}
