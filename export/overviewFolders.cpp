#include <algorithm>
#include <cmath>
#include <utility>

#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "export/overviewSection.h"
#include "export/pageText.h"
#include "platform/paths.h"

// The largest folders of an overview page: a band of the first ones, and below it all of them, with bars, and
// with the levels below folded.
namespace modExport {

namespace {

using modFigures::OverviewFolder;

constexpr std::size_t colours = 8;
constexpr double width = 1000; // of a drawing

void appendRect(std::string& html, std::string_view kind, double left, double length,
                std::string_view height) {
    html.append("<rect class=\"").append(kind).append("\" x=\"");
    modFormat::appendNumber(html, std::round(left));
    html.append("\" width=\"");
    modFormat::appendNumber(html, std::round(length));
    html.append("\" height=\"").append(height).append("\"/>");
}

double shareOf(double size, double whole) {
    return whole > 0 ? std::clamp(size / whole, 0.0, 1.0) : 0;
}

// One row of the list: a folder, the files directly in one, or what is left out.
struct Row {
    const OverviewFolder* folder = nullptr;
    std::string text; // if it is no folder
    double size = 0;
};

class Folders {
public:
    Folders(std::string& html, const OverviewSection& section, const OverviewDetail& detail)
        : html_(html), detail_(detail), prefix_("f" + std::to_string(section.number)) {}

    void appendBand(const OverviewFolder& folder);
    void appendList(const OverviewFolder& folder, std::size_t level, const std::string& id);

private:
    [[nodiscard]] std::vector<Row> rowsOf(const OverviewFolder& folder, std::size_t level) const;
    [[nodiscard]] bool opens(const OverviewFolder& folder, std::size_t level) const {
        return level + 1 < detail_.folders.size() && detail_.folders.at(level + 1) > 0 &&
               folder.subfolders > 0;
    }
    void appendCells(const Row& row, double whole, const std::string& colour);

    std::string& html_;
    const OverviewDetail& detail_;
    std::string prefix_;
};

std::vector<Row> Folders::rowsOf(const OverviewFolder& folder, std::size_t level) const {
    std::vector<Row> rows;
    const std::size_t shown = std::min(folder.largest.size(), detail_.folders.at(level));
    double left = folder.subfoldersSize;
    for (std::size_t i = 0; i < shown; ++i) {
        rows.push_back({&folder.largest[i], {}, folder.largest[i].size});
        left -= folder.largest[i].size;
    }
    if (folder.ownFiles > 0) {
        Row files{nullptr,
                  modFormat::countedText(static_cast<double>(folder.ownFiles), "file", "files") +
                      " directly in it",
                  folder.ownFilesSize};
        const auto place =
            std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.size < files.size; });
        rows.insert(place, std::move(files));
    }
    if (shown < folder.subfolders) {
        const auto others = static_cast<double>(folder.subfolders - shown);
        rows.push_back({nullptr, modFormat::countedText(others, "more folder", "more folders"), left});
    }
    return rows;
}

void Folders::appendCells(const Row& row, double whole, const std::string& colour) {
    html_.append(row.folder != nullptr ? "<span class=\"n\">" : "<span class=\"n other\">");
    if (row.folder != nullptr) {
        appendName(html_, platform::displayName(row.folder->name), detail_.longestName);
    } else {
        html_.append(row.text);
    }
    html_.append("</span><svg class=\"bar\" viewBox=\"0 0 1000 8\" preserveAspectRatio=\"none\" "
                 "aria-hidden=\"true\">");
    appendRect(html_, row.folder != nullptr ? colour : "rest", 0, shareOf(row.size, whole) * width, "8");
    html_.append("</svg><span class=\"r\">").append(modLvw::formatSize(row.size));
    html_.append("</span><span class=\"r\">").append(percentText(row.size, whole)).append("</span>");
}

void Folders::appendList(const OverviewFolder& folder, std::size_t level, const std::string& id) {
    html_.append("<ul class=\"folders\" id=\"").append(id).append("\">\n");
    std::size_t number = 0;
    for (const Row& row : rowsOf(folder, level)) {
        number += row.folder != nullptr ? 1 : 0;
        const std::string colour = level > 0 || number > colours ? "own" : "c" + std::to_string(number);
        if (row.folder == nullptr || !opens(*row.folder, level)) {
            html_.append("<li><div class=\"row\">");
            appendCells(row, folder.size, colour);
            html_.append("</div></li>\n");
        } else {
            html_.append("<li><details><summary class=\"row\">");
            appendCells(row, folder.size, colour);
            html_.append("</summary>\n");
            appendList(*row.folder, level + 1, id + "-" + std::to_string(number));
            html_.append("</details></li>\n");
        }
    }
    html_.append("</ul>\n");
}

// The folders that have a colour, as links to what is in them.
void Folders::appendBand(const OverviewFolder& folder) {
    html_.append("<svg class=\"band\" viewBox=\"0 0 1000 40\" preserveAspectRatio=\"none\" role=\"group\" "
                 "aria-label=\"Shares of the largest folders\">\n");
    double left = 0;
    const std::size_t shown = std::min({folder.largest.size(), detail_.folders[0], colours});
    for (std::size_t i = 0; i < shown; ++i) {
        const OverviewFolder& each = folder.largest[i];
        const double length = std::min(shareOf(each.size, folder.size) * width, width - left);
        if (length < 1) {
            break;
        }
        const std::string number = std::to_string(i + 1);
        const bool isLink = opens(each, 0);
        html_.append(isLink ? "<a href=\"#" + prefix_ + "-" + number + "\">" : "<g>").append("<title>");
        appendShown(html_, platform::displayName(each.name), detail_.longestName);
        html_.append(", ").append(modLvw::formatSize(each.size)).append("</title>");
        appendRect(html_, "c" + number, left, length, "40");
        html_.append(isLink ? "</a>\n" : "</g>\n");
        left += length;
    }
    html_.append("</svg>\n");
}

} // namespace

void appendLargestFolders(std::string& html, const OverviewSection& section, const OverviewDetail& detail) {
    html.append("<h3>Largest Folders</h3>\n");
    const OverviewFolder& folder = section.figures.folder;
    Folders folders(html, section, detail);
    if (folder.subfolders > 0) {
        folders.appendBand(folder);
        html.append(
            "<p class=\"note\">Open a folder to see what is in it. Shares are of the folder above.</p>\n");
    }
    folders.appendList(folder, 0, "f" + std::to_string(section.number));
}

} // namespace modExport
