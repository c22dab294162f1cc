#include "console/collectedTables.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <vector>

#include "base/dateFormat.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "base/terminalText.h"
#include "console/textTable.h"

namespace {

using modCollected::Figures;
using modCollected::Row;
using modCollected::Table;

std::string sizeText(const std::optional<double>& size) {
    return size ? modLvw::formatSize(*size) : std::string();
}

std::string countText(const std::optional<double>& count) {
    return count ? modFormat::countText(*count) : std::string();
}

std::string changeText(const Row& row) {
    return row.change() ? modLvw::formatChange(*row.change()) : std::string();
}

std::string dateText(const std::optional<platform::Seconds>& moment) {
    return moment ? modFormat::formatDate(platform::localTime(*moment), modFormat::storedDatePicture)
                  : std::string();
}

// "3 days", "5 hours".
std::string ageText(const std::optional<platform::Seconds>& moment, platform::Seconds now) {
    constexpr platform::Seconds minute = 60;
    constexpr platform::Seconds hour = 60 * minute;
    constexpr platform::Seconds day = 24 * hour;
    if (!moment) {
        return {};
    }
    const platform::Seconds age = std::max<platform::Seconds>(now - *moment, 0);
    const auto counted = [&](platform::Seconds unit, std::string_view one, std::string_view several) {
        const platform::Seconds units = age / unit;
        return modFormat::countedText(static_cast<double>(units), one, several);
    };
    return age >= 2 * day    ? counted(day, "day", "days")
           : age >= 2 * hour ? counted(hour, "hour", "hours")
                             : counted(minute, "minute", "minutes");
}

template <std::size_t columns>
std::string printed(const Figures& figures, Table table, const std::array<std::string, columns>& headers,
                    std::size_t number, std::size_t numbersEnd, std::size_t top,
                    std::array<std::string, columns> (*cells)(const Row& row)) {
    const std::vector<Row>& all = figures.of(table);
    std::vector<std::array<std::string, columns>> rows{headers};
    for (std::size_t i = 0; i < textTable::shownRows(all.size(), top); ++i) {
        rows.push_back(cells(all[i]));
    }
    const bool hasMore = textTable::shownRows(all.size(), top) < all.size();
    return all.empty()
               ? std::string()
               : textTable::table(rows, number, numbersEnd) + (hasMore ? "  (and more)\n" : "") + "\n";
}

std::string machines(const Figures& figures, platform::Seconds now) {
    std::vector<std::array<std::string, 8>> rows{
        {"Host", "Size", "Change", "Files", "Folders", "Age", "Scanned", "Path"}};
    double size = 0;
    double files = 0;
    double foldersOnly = 0;
    std::set<std::string> hosts;
    for (const Row& row : figures.of(Table::machines)) {
        const std::string remark = modCollected::remarkOf(row);
        rows.push_back({forTerminal(row.host), sizeText(row.size), changeText(row), countText(row.files),
                        countText(row.folders), ageText(row.scanned, now), dateText(row.scanned),
                        forTerminal(row.name) + (remark.empty() ? "" : " (" + remark + ")")});
        const bool counts = !row.isInOther && !row.isGone;
        size += counts ? row.size.value_or(0) : 0;
        files += counts ? row.files.value_or(0) : 0;
        foldersOnly += counts && row.isFoldersOnly ? 1 : 0;
        if (counts) {
            hosts.insert(row.host);
        }
    }
    return textTable::table(rows, 1, 6) +
           "\nTotal: " + modFormat::countedText(static_cast<double>(hosts.size()), "machine", "machines") +
           ", " + modLvw::formatSize(size) + ", " + modFormat::countedText(files, "file", "files") + "\n" +
           (foldersOnly > 0 ? modFormat::countedText(foldersOnly, "scan has", "scans have") +
                                  " folders only: their files are in no table below.\n"
                            : "") +
           "\n";
}

std::string groups(const Figures& figures, Table table, const std::string& header, std::size_t top) {
    return printed<3>(figures, table, {header, "Total Size", "File Count"}, 1, 3, top,
                      [](const Row& row) -> std::array<std::string, 3> {
                          return {forTerminal(row.name), sizeText(row.size), countText(row.files)};
                      });
}

std::string folders(const Figures& figures, std::size_t top) {
    return printed<5>(figures, Table::folders, {"Size", "Files", "Folders", "Host", "Largest Folders"}, 0, 3,
                      top, [](const Row& row) -> std::array<std::string, 5> {
                          return {sizeText(row.size), countText(row.files), countText(row.folders),
                                  forTerminal(row.host), forTerminal(row.name)};
                      });
}

std::string growth(const Figures& figures, const std::string& days, std::size_t top) {
    return printed<6>(figures, Table::growth, {"Before", "Now", "Change", "Since", "Host", "Growth" + days},
                      0, 3, top, [](const Row& row) -> std::array<std::string, 6> {
                          return {sizeText(row.before), sizeText(row.size),    changeText(row),
                                  dateText(row.since),  forTerminal(row.host), forTerminal(row.name)};
                      });
}

std::string grownFolders(const Figures& figures, const std::string& days, std::size_t top) {
    return printed<5>(figures, Table::grownFolders,
                      {"Before", "Now", "Change", "Host", "Folders That Changed Most" + days}, 0, 3, top,
                      [](const Row& row) -> std::array<std::string, 5> {
                          return {sizeText(row.before), sizeText(row.size), changeText(row),
                                  forTerminal(row.host), forTerminal(row.name)};
                      });
}

} // namespace

std::string collectedTables(const Figures& figures, std::int64_t days, std::size_t top,
                            platform::Seconds now) {
    std::string text = machines(figures, now);
    text += groups(figures, Table::owners, "Owner", top);
    text += groups(figures, Table::types, "Extension", top);
    text += folders(figures, top);
    const std::string since = " in " + modFormat::countedText(static_cast<double>(days), "Day", "Days");
    return text + growth(figures, since, top) + grownFolders(figures, since, top);
}
