#include "console/figureTables.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/dateFormat.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "base/terminalText.h"
#include "console/foundTable.h"
#include "console/textTable.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "platform/terminal.h"
#include "platform/text.h"

namespace {

using textTable::moreLine;
using textTable::padded;
using textTable::shown;
using textTable::shownRows;
using textTable::table;

using Row = std::array<std::string, 3>;

std::string bar(double share, std::size_t width, std::string_view block) {
    std::string result;
    const auto blocks = static_cast<std::size_t>(std::round(share * static_cast<double>(width)));
    for (std::size_t i = 0; i < blocks; ++i) {
        result += block;
    }
    return padded(result, width);
}

std::string withoutTrailingBlanks(const std::string& lines) {
    std::string result;
    for (const char c : lines) {
        if (c == '\n') {
            result.resize(result.find_last_not_of(' ') + 1);
        }
        result += c;
    }
    return result;
}

std::string reasonLine(std::string_view path, const std::string& reason) {
    return "  " + forTerminal(platform::displayPath(path)) + ": " + reason + "\n";
}

} // namespace

std::string barChart(const std::vector<ChartEntry>& entries, std::size_t top, std::size_t width) {
    constexpr std::size_t sizeWidth = 14;
    constexpr std::size_t narrowestBar = 10;
    const std::size_t count = shownRows(entries.size(), top);
    const double largest = entries.empty() ? 0 : entries.back().size;
    std::size_t nameWidth = 0;
    for (std::size_t i = 0; i < count; ++i) {
        nameWidth =
            std::max(nameWidth, platform::characterCount(shown(entries[entries.size() - 1 - i].label)));
    }
    const std::size_t taken = 2 + nameWidth + 2 + sizeWidth + 2;
    const std::size_t barWidth = width > taken + narrowestBar ? width - taken : narrowestBar;
    const std::string_view block = platform::writesUnicode() ? "\u2588" : "#";
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        const ChartEntry& entry = entries[entries.size() - 1 - i];
        const double share = largest > 0 && entry.size > 0 ? entry.size / largest : 0;
        result += "  " + padded(shown(entry.label), nameWidth) + "  " + bar(share, barWidth, block) +
                  padded(modLvw::formatSize(entry.size), sizeWidth, true) + '\n';
    }
    return result + moreLine(entries.size(), top);
}

std::string groupTable(const std::string& nameHeader, std::vector<modFigures::FileGroup> groups,
                       std::size_t top) {
    std::stable_sort(groups.begin(), groups.end(),
                     [](const auto& left, const auto& right) { return left.size > right.size; });
    std::vector<Row> rows{{nameHeader, "Total Size", "File Count"}};
    for (std::size_t i = 0; i < shownRows(groups.size(), top); ++i) {
        const modFigures::FileGroup& group = groups[i];
        rows.push_back({shown(platform::lowerCase(group.name)), modLvw::formatSize(group.size), group.count});
    }
    return table(rows) + moreLine(groups.size(), top);
}

std::string foundTable(const modFind::FindQuery& found) {
    constexpr std::size_t columns = 6;
    constexpr std::size_t sizeColumn = 2;
    const FoundTable items(found.items(), false);
    std::vector<std::array<std::string, columns>> rows(1 + items.rowCount());
    for (std::size_t column = 0; column < columns; ++column) {
        rows.front().at(column) = items.columns()[column].header;
        for (std::size_t row = 0; row < items.rowCount(); ++row) {
            rows[row + 1].at(column) = forTerminal(items.text(row, column));
        }
    }
    return table(rows, sizeColumn, sizeColumn + 1) +
           moreLine(static_cast<std::size_t>(found.count()), found.items().size()) + "\n" +
           modFind::foundText(found.conditions().kind, found.count(), found.size()) + "\n";
}

std::string historyTable(const modExport::FolderHistory& history, std::size_t width) {
    constexpr std::size_t columns = 6;
    constexpr std::size_t firstNumber = 1;
    constexpr std::size_t numbersEnd = 4;
    constexpr std::size_t narrowestBar = 10;
    const bool withHosts = history.hasSeveralHosts();
    std::vector<std::array<std::string, columns>> rows{
        {"Date", "Size", "Files", "Change", "", withHosts ? "Host" : ""}};
    for (const modExport::HistoryPoint& point : history.points) {
        const auto& folder = point.folder;
        rows.push_back(
            {modFormat::formatDate(platform::localTime(point.moment), modFormat::storedDatePicture),
             folder ? modLvw::formatSize(folder->size) : "",
             folder && folder->files ? modFormat::countText(static_cast<double>(*folder->files)) : "",
             point.change ? modLvw::formatChange(*point.change) : std::string(),
             std::string(modExport::remarkOf(point)), withHosts ? forTerminal(point.host) : ""});
    }
    std::size_t taken = 2;
    for (std::size_t column = 0; column < columns; ++column) {
        std::size_t widest = 0;
        for (const auto& row : rows) {
            widest = std::max(widest, platform::characterCount(row.at(column)));
        }
        taken += widest + 2;
    }
    const std::size_t barWidth = width > taken + narrowestBar ? width - taken : narrowestBar;
    const std::string_view block = platform::writesUnicode() ? "\u2588" : "#";
    const double largest = history.largest();
    for (std::size_t i = 0; i < history.points.size(); ++i) {
        const auto& folder = history.points[i].folder;
        const double share = folder && largest > 0 ? std::max(folder->size, 0.0) / largest : 0;
        std::string& remark = rows[i + 1].at(numbersEnd);
        if (folder) {
            remark.insert(0, bar(share, barWidth, block) + (remark.empty() ? "" : "  "));
        }
    }
    const std::string others =
        modFormat::countedText(static_cast<double>(history.others), "saved scan is", "saved scans are");
    std::string text = withoutTrailingBlanks(table(rows, firstNumber, numbersEnd));
    if (history.others > 0) {
        text.append("\n").append(others).append(" of other folders.\n");
    }
    return text;
}

std::string gapTable(const FigureGaps& gaps, std::string_view folder) {
    std::string folders;
    for (auto each = gaps.folders().lower_bound(folder);
         each != gaps.folders().end() && each->first.starts_with(folder); ++each) {
        folders += reasonLine(each->first, each->second.reason);
    }
    std::string files;
    for (auto each = gaps.files().lower_bound(folder);
         each != gaps.files().end() && each->first.starts_with(folder); ++each) {
        for (const FigureGaps::File& file : each->second) {
            files += reasonLine(each->first + file.name, file.reason);
        }
    }
    if (folders.empty() && files.empty()) {
        return "All folders were read.\n";
    }
    return (folders.empty() ? "" : "Folders that were not read:\n" + folders) +
           (files.empty() ? "" : "Files that could not be read:\n" + files);
}
