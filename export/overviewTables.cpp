#include <algorithm>

#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "export/overviewSection.h"
#include "export/pageText.h"
#include "platform/locale.h"
#include "platform/paths.h"

namespace modExport {

namespace {

using modFigures::Overview;
using modFigures::OverviewFile;
using modFigures::OverviewGroup;

struct Groups {
    const std::vector<OverviewGroup>& first;
    std::size_t all;
    std::string_view one; // what they are
    std::string_view several;
    std::string_view nameless;
};

void appendGroups(std::string& html, const Groups& groups, double whole, const OverviewDetail& detail) {
    const std::size_t shown = std::min(groups.first.size(), detail.rows);
    {
        PageTable table(html, {{groups.one}, {"Size", true}, {"Share", true}, {"Files", true}});
        for (std::size_t i = 0; i < shown; ++i) {
            const OverviewGroup& group = groups.first[i];
            table.row();
            table.text(group.name.empty() ? std::string(groups.nameless)
                                          : platform::displayName(platform::lowerCase(group.name)),
                       detail.longestName);
            table.size(group.size);
            table.number(percentText(group.size, whole), group.size);
            table.number(modFormat::countText(static_cast<double>(group.files)),
                         static_cast<double>(group.files));
        }
    }
    appendShownOf(html, shown, groups.all, groups.several);
}

void appendFiles(std::string& html, const std::vector<OverviewFile>& files, const OverviewDetail& detail) {
    PageTable table(html, {{"File"}, {"Size", true}, {"Date modified", true}});
    for (std::size_t i = 0; i < std::min(files.size(), detail.rows); ++i) {
        table.row();
        table.path(files[i].path, detail.longestPath);
        table.size(files[i].size);
        table.date(files[i].modified);
    }
}

void appendOldest(std::string& html, const Overview& figures, const OverviewDetail& detail) {
    html.append("<h3>Old Large Files</h3>\n<p class=\"note\">Of the ");
    html.append(modFormat::countedText(static_cast<double>(figures.consideredFiles), "largest file",
                                       "largest files"));
    html.append(" (").append(modLvw::formatSize(figures.leastConsidered));
    html.append(" or more), those that were modified longest ago.</p>\n");
    appendFiles(html, figures.oldestFiles, detail);
    appendShownOf(html, std::min(figures.oldestFiles.size(), detail.rows), figures.consideredFiles, "files");
}

void appendEmptyFolders(std::string& html, const OverviewSection& section, const OverviewDetail& detail) {
    const Overview& figures = section.figures;
    html.append("<h3>Empty Folders</h3>\n");
    if (figures.emptyFolderCount == 0) {
        html.append("<p>There are none.</p>\n");
        return;
    }
    if (section.isLoaded) {
        html.append("<p class=\"note\">Folders that could not be read may be among them.</p>\n");
    }
    const std::size_t shown = std::min(figures.emptyFolders.size(), detail.rows);
    {
        PageTable table(html, {{"Folder"}});
        for (std::size_t i = 0; i < shown; ++i) {
            table.row();
            table.path(figures.emptyFolders[i], detail.longestPath);
        }
    }
    appendShownOf(html, shown, figures.emptyFolderCount, "folders");
}

} // namespace

void appendTables(std::string& html, const OverviewSection& section, const OverviewDetail& detail) {
    const Overview& figures = section.figures;
    if (figures.files > 0) {
        const double whole = figures.folder.size;
        html.append("<div class=\"pair\">\n<div>\n<h3>File Types</h3>\n");
        appendGroups(html, {figures.types, figures.typeCount, "Extension", "extensions", "(none)"}, whole,
                     detail);
        html.append("</div>\n<div>\n<h3>Owners</h3>\n");
        if (figures.owners.size() == 1 && figures.owners.front().name.empty()) {
            html.append("<p>They were not looked up.</p>\n");
        } else {
            appendGroups(html, {figures.owners, figures.ownerCount, "Owner", "owners", "(not known)"}, whole,
                         detail);
        }
        html.append("</div>\n</div>\n<h3>Largest Files</h3>\n");
        appendFiles(html, figures.largestFiles, detail);
        appendShownOf(html, std::min(figures.largestFiles.size(), detail.rows),
                      static_cast<std::size_t>(figures.files), "files");
        appendOldest(html, figures, detail);
    }
    appendEmptyFolders(html, section, detail);
}

} // namespace modExport
