#include "widgets/changesList.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>

#include "base/formatSize.h"

namespace {

constexpr std::array<ListColumn, 6> changesColumns{{
    {"Name", "", false, "A file's short name.text", true},
    {"Before", "SIZE", true, "1,023 bytes "},
    {"Now", "SIZE", true, "1,023 bytes "},
    {"Change", "CHANGE", true, "+1,023 bytes "},
    {"State", "", false, "touched "},
    {"Shrunk | Grown", "BALANCE", false, "a bar to each of its sides"},
}};

ListCell sizeCell(const std::optional<double>& size, const std::string& text) {
    return size ? ListCell{text, *size} : ListCell{};
}

std::string sizeText(const std::optional<double>& size) {
    return size ? modLvw::formatSize(*size) : std::string();
}

} // namespace

std::span<const ListColumn> modChangesList::columns() noexcept {
    return changesColumns;
}

std::vector<ListRow> modChangesList::rows(std::span<const modChanges::Change> changes) {
    double largest = 0;
    for (const modChanges::Change& each : changes) {
        largest = std::max(largest, std::abs(each.change()));
    }
    std::vector<ListRow> rows;
    rows.reserve(changes.size());
    for (const modChanges::Change& each : changes) {
        const std::string before = sizeText(each.before);
        const std::string now = sizeText(each.now);
        const std::string change = modLvw::formatChange(each.change());
        const double share = largest > 0 ? each.change() / largest : 0;
        const std::array<ListCell, changesColumns.size()> cells{{{each.nameAlone()},
                                                                 sizeCell(each.before, before),
                                                                 sizeCell(each.now, now),
                                                                 {change, each.change()},
                                                                 {modChanges::stateText(each.state)},
                                                                 {{}, share}}};
        const bool isGone = each.state == modChanges::State::gone;
        rows.emplace_back(each.path(),
                          each.isFolder ? (isGone ? "GONEFOLDER" : "FOLDER") : (isGone ? "GONEFILE" : "FILE"),
                          cells);
    }
    return rows;
}

bool modChangesList::isGone(std::string_view rowTag) noexcept {
    return rowTag.starts_with("GONE");
}
