#include "export/overviewSection.h"

#include <algorithm>

#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "export/pageText.h"
#include "platform/environment.h"
#include "views/folderSummary.h"

namespace modExport {

namespace {

constexpr std::size_t longestFact = 200;

void appendCard(std::string& html, std::string_view name, std::string_view value) {
    html.append("<div><dt>").append(name).append("</dt><dd>").append(value).append("</dd></div>\n");
}

// The part of the drive that is used, and the folder's part of that.
void appendMeter(std::string& html, double size, const platform::DriveSpace& drive) {
    constexpr double width = 1000;
    const auto bar = [&](std::string_view kind, double bytes) {
        html.append("<rect class=\"").append(kind).append("\" width=\"");
        const double share = drive.total > 0 ? std::clamp(bytes / drive.total, 0.0, 1.0) : 0;
        modFormat::appendFormattedNumber(html, share * width, "0");
        html.append("\" height=\"8\"/>");
    };
    html.append(
        "<svg class=\"bar\" viewBox=\"0 0 1000 8\" preserveAspectRatio=\"none\" aria-hidden=\"true\">");
    bar("used", drive.used);
    bar("own", std::min(size, drive.used));
    html.append("</svg>\n");
}

void appendFact(std::string& html, std::string_view name, std::string_view text) {
    html.append("<dt>").append(name).append("</dt><dd>");
    appendShown(html, text, longestFact);
    html.append("</dd>\n");
}

std::string sizesText(const OverviewSection& section) {
    if (section.isOnDisk) {
        return "On the disk: what is allocated to files and folders; a file with several names counts once";
    }
    if (section.wrapped > 0) {
        return "Not exact: " + modFormat::countedText(static_cast<double>(section.wrapped), "file", "files") +
               " of 2 GB or more " + (section.wrapped == 1 ? "is" : "are") + " counted with wrapped sizes";
    }
    if (section.figures.hasNegativeSizes) {
        return "Not exact: files of 2 GB or more are counted with wrapped sizes";
    }
    if (!section.isLoaded || (section.scan && section.scan->exact)) {
        return "Exact: every file is counted in full";
    }
    return section.scan ? "Files of 2 GB or more, if there are any, are counted with wrapped sizes"
                        : "A saved scan does not tell whether files of 2 GB or more were counted in full";
}

std::string unreadText(const OverviewSection& section) {
    if (section.unreadable.isAny()) {
        return unreadableText(section.unreadable) + " The figures lack what is in there.";
    }
    if (!section.scan) {
        return section.isLoaded ? "A saved scan does not tell what could not be read"
                                : "Nothing: all was read";
    }
    const Unreadable unreadable{static_cast<std::size_t>(section.scan->unreadableFolders),
                                static_cast<std::size_t>(section.scan->unreadableFiles)};
    return unreadable.isAny()
               ? "In the whole scan of " + shownPath(section.scan->path) + ": " + unreadableText(unreadable)
               : "Nothing: all was read";
}

std::string hostText(const OverviewSection& section) {
    if (!section.isLoaded) {
        return platform::hostName();
    }
    if (!section.scan || section.scan->host.empty()) {
        return "Not known: loaded from a saved scan";
    }
    const std::string& system = section.scan->system;
    return section.scan->host + (system.empty() ? "" : " (" + system + ")");
}

std::string leftOutText(const std::vector<std::string>& patterns) {
    std::string text = "What fits ";
    for (const std::string& pattern : patterns) {
        text.append(&pattern == &patterns.front() ? "" : ", ").append(pattern);
    }
    return text;
}

void appendGaps(std::string& html, const OverviewSection& section, const OverviewDetail& detail) {
    const std::size_t shown = std::min(section.firstGaps.size(), detail.rows);
    if (shown == 0) {
        return;
    }
    constexpr std::size_t few = 10;
    html.append(shown > few ? "<details>" : "<details open=\"\">");
    html.append("<summary class=\"plain\">What could not be read</summary>\n");
    {
        PageTable table(html, {{"Path"}, {"Reason"}});
        for (std::size_t i = 0; i < shown; ++i) {
            table.row();
            table.path(section.firstGaps[i].path, detail.longestPath);
            table.text(section.firstGaps[i].reason, detail.longestName);
        }
    }
    appendShownOf(html, shown, section.unreadable.folders + section.unreadable.files, "paths");
    html.append("</details>\n");
}

} // namespace

void appendFacts(std::string& html, const OverviewSection& section, const OverviewDetail& detail) {
    const modFigures::Overview& figures = section.figures;
    html.append("<dl class=\"cards\">\n");
    appendCard(html, section.isOnDisk ? "Total size on disk" : "Total size",
               modLvw::formatSize(figures.folder.size));
    const bool hasUnkept = figures.files == 0 && figures.folder.size > 0 &&
                           !section.isOnDisk; // a saved scan may keep folders only
    appendCard(html, "Files",
               hasUnkept ? "Not kept" : modFormat::countText(static_cast<double>(figures.files)));
    appendCard(html, "Folders", modFormat::countText(static_cast<double>(figures.folders)));
    if (section.drive) {
        appendCard(html, "Free on the drive", modLvw::formatSize(section.drive->free));
    }
    html.append("</dl>\n");
    if (section.drive) {
        appendMeter(html, figures.folder.size, *section.drive);
        html.append("<p class=\"note\">The drive: ").append(modFigures::spaceText(*section.drive));
        const std::string share = percentText(figures.folder.size, section.drive->used);
        html.append(share.empty() ? "" : ". This folder: " + share + " of used space").append(".</p>\n");
    }
    html.append("<dl class=\"facts\">\n");
    appendFact(html, "Scanned",
               (figures.recorded.empty() ? "At an unknown time" : figures.recorded) +
                   (figures.isComplete ? "" : ", but not all of it"));
    appendFact(html, "Host", hostText(section));
    appendFact(html, "Sizes", sizesText(section));
    appendFact(html, "Not read", unreadText(section));
    if (!section.excludes.empty()) {
        appendFact(html, "Left out", leftOutText(section.excludes));
    }
    if (figures.otherVolumes > 0) {
        appendFact(
            html, "Other volumes",
            modFormat::countedText(static_cast<double>(figures.otherVolumes), "folder is", "folders are") +
                " the root of another volume, which is not counted here");
    }
    html.append("</dl>\n");
    appendGaps(html, section, detail);
}

void appendSection(std::string& html, const OverviewSection& section, const OverviewDetail& detail) {
    html.append("<section id=\"s").append(std::to_string(section.number)).append("\">\n<h2>");
    appendName(html, shownPath(section.key), detail.longestPath);
    html.append("</h2>\n");
    appendFacts(html, section, detail);
    appendLargestFolders(html, section, detail);
    appendTables(html, section, detail);
    html.append("</section>\n");
}

} // namespace modExport
