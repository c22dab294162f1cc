#include "export/historyReport.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/clsUserInterface.h"
#include "base/dateFormat.h"
#include "base/errorTrap.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "export/excelSheet.h"
#include "export/listFile.h"
#include "export/listWorkbook.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "platform/paths.h"

namespace modExport {

namespace {

constexpr std::string_view dateHeader = "Date";
constexpr std::string_view bytesHeader = "Size (Bytes)";
constexpr std::string_view sizeHeader = "Size";
constexpr std::string_view changedBytesHeader = "Change (Bytes)";
constexpr std::string_view changeHeader = "Change";
constexpr std::string_view filesHeader = "Files";
constexpr std::string_view foldersHeader = "Folders";
constexpr std::string_view remarkHeader = "Remark";
constexpr std::string_view hostHeader = "Host";
constexpr std::string_view fileHeader = "Saved Scan";

std::string dateText(platform::Seconds moment) {
    return modFormat::formatDate(platform::localTime(moment), modFormat::storedDatePicture);
}

std::optional<double> numberOf(const HistoryPoint& point, std::string_view header) {
    if (header == changedBytesHeader || header == changeHeader) {
        return point.change;
    }
    if (!point.folder) {
        return {};
    }
    const auto count = [](const std::optional<std::int64_t>& value) {
        return value ? std::optional(static_cast<double>(*value)) : std::nullopt;
    };
    return header == filesHeader     ? count(point.folder->files)
           : header == foldersHeader ? count(point.folder->folders)
                                     : std::optional(point.folder->size);
}

std::string titleOf(const FolderHistory& history) {
    return "History of " + history.folder;
}

// With the chart beside the rows.
void writeWorkbook(const FolderHistory& history, ShownProgress& progress, platform::Sink& sink) {
    const platform::PlainNumbers plainNumbers;
    const HistoryTable table(history, false);
    ExcelSheet sheet(table.columns().size());
    writeListSheet(sheet, table, titleOf(history), progress);
    sheet.chart({.title = titleOf(history),
                 .horizontal = 0,
                 .vertical = 1,
                 .firstRow = firstListRow,
                 .rows = table.rowCount(),
                 .column = table.columns().size() + 1});
    sheet.finish(sink);
}

// A label of the curve, at the end of its side.
void appendLabel(std::string& svg, std::string_view place, std::string_view text) {
    svg.append("<text ").append(place).append(">").append(text).append("</text>\n");
}

} // namespace

HistoryTable::HistoryTable(const FolderHistory& history, bool forPeople)
    : history_(history), columns_{{dateHeader, Kind::date},     {bytesHeader, Kind::bytes},
                                  {sizeHeader, Kind::bytes},    {changedBytesHeader, Kind::bytes},
                                  {changeHeader, Kind::bytes},  {filesHeader, Kind::count},
                                  {foldersHeader, Kind::count}, {remarkHeader, Kind::text},
                                  {hostHeader, Kind::text},     {fileHeader, Kind::text}} {
    if (!forPeople) {
        std::erase_if(columns_, [](const Column& column) {
            return column.header == sizeHeader || column.header == changeHeader;
        });
    }
}

std::string_view HistoryTable::text(std::size_t row, std::size_t column) const {
    const HistoryPoint& point = history_.points[row];
    const std::string_view header = columns_[column].header;
    const auto value = numberOf(point, header);
    if (header == dateHeader) {
        text_ = dateText(point.moment);
    } else if (header == remarkHeader) {
        text_ = remarkOf(point);
    } else if (header == hostHeader) {
        text_ = point.host;
    } else if (header == fileHeader) {
        text_ = platform::displayPath(point.file);
    } else if (header == changeHeader) {
        text_ = value ? modLvw::formatChange(*value) : std::string();
    } else if (header == sizeHeader) {
        text_ = value ? modLvw::formatSize(*value) : std::string();
    } else {
        text_.clear();
        if (value) {
            modFormat::appendNumber(text_, *value);
        }
    }
    return text_;
}

std::optional<double> HistoryTable::number(std::size_t row, std::size_t column) const {
    const bool isNumber = columns_[column].kind == Kind::bytes || columns_[column].kind == Kind::count;
    return isNumber ? numberOf(history_.points[row], columns_[column].header) : std::nullopt;
}

// Sizes begin at 0. A text stands in it as a number or a date only.
std::string historyCurve(const FolderHistory& history) {
    constexpr double width = 1000;
    constexpr double height = 200;
    constexpr double top = 20;
    if (history.points.size() < 2) {
        return {};
    }
    const platform::Seconds first = history.points.front().moment;
    const platform::Seconds last = history.points.back().moment;
    const double largest = history.largest();
    std::string points;
    for (const HistoryPoint& point : history.points) {
        const auto elapsed = static_cast<double>(point.moment - first);
        const double x = last > first ? elapsed / static_cast<double>(last - first) * width : 0;
        const double size = point.folder ? std::max(point.folder->size, 0.0) : 0;
        const double share = largest > 0 ? size / largest : 0;
        points.append(points.empty() ? "" : " ").append(std::to_string(static_cast<int>(x)));
        points.append(",").append(std::to_string(static_cast<int>(top + (1 - share) * height)));
    }
    std::string svg = "<svg viewBox=\"-5 0 1010 250\" width=\"1000\" height=\"250\" role=\"img\" "
                      "aria-label=\"Sizes over time\" font-family=\"Arial, sans-serif\" font-size=\"12\">\n"
                      "<path d=\"M0,20V220H1000\" fill=\"none\" stroke=\"gray\"/>\n"
                      "<polyline fill=\"none\" stroke=\"steelblue\" stroke-width=\"2\" points=\"";
    svg.append(points).append("\"/>\n");
    appendLabel(svg, "x=\"0\" y=\"14\"", modLvw::formatSize(largest));
    appendLabel(svg, "x=\"0\" y=\"238\"", dateText(first));
    appendLabel(svg, "x=\"1000\" y=\"238\" text-anchor=\"end\"", dateText(last));
    return svg + "</svg>\n";
}

bool exportHistory(ReportFormat format, const FolderHistory& history, clsUserInterface& userInterface,
                   std::string_view fileName) {
    if (format != ReportFormat::excel) {
        const HistoryTable table(history, format == ReportFormat::html);
        return exportListFile(format, table, titleOf(history), userInterface, fileName, true,
                              historyCurve(history));
    }
    return modGlobal::trapped("modExport", "exportHistory", [&] {
        ShownProgress progress(userInterface, static_cast<std::int64_t>(history.points.size()));
        platform::Replacement file(fileName);
        writeWorkbook(history, progress, file);
        file.commit();
        return true;
    });
}

} // namespace modExport
