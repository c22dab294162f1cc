#include "export/overviewPage.h"

#include <algorithm>
#include <array>
#include <span>
#include <sstream>

#include "base/clsFile.h"
#include "base/clsUserInterface.h"
#include "base/dateFormat.h"
#include "base/errorTrap.h"
#include "base/runInBackground.h"
#include "export/overviewLook.h"
#include "export/overviewSection.h"
#include "export/pageText.h"
#include "export/reportFrame.h"
#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/files.h"

namespace modExport {

namespace {

// The last is for the largest number of folders with the longest names.
constexpr std::array<OverviewDetail, 4> details{{{{15, 8, 5}, 50, 60, 160},
                                                 {{12, 6, 4}, 50, 40, 120},
                                                 {{10, 4, 0}, 25, 32, 100},
                                                 {{8, 0, 0}, 10, 24, 60}}};
constexpr std::size_t frameSize = 32U << 10; // for all but the sections
constexpr std::size_t longestHost = 80;

void addGaps(OverviewSection& section, const FigureGaps& gaps) {
    const auto isIn = [&](const auto& each) { return each->first.starts_with(section.key); };
    const auto isFull = [&] { return section.firstGaps.size() >= details.front().rows; };
    const auto& folders = gaps.folders();
    for (auto each = folders.lower_bound(section.key); each != folders.end() && isIn(each) && !isFull();
         ++each) {
        if (each->second.kind == FigureGaps::Kind::unreadable) {
            section.firstGaps.push_back({each->first, each->second.reason});
        }
    }
    const auto& files = gaps.files();
    for (auto each = files.lower_bound(section.key); each != files.end() && isIn(each) && !isFull(); ++each) {
        for (const FigureGaps::File& file : each->second) {
            if (!isFull()) {
                section.firstGaps.push_back({each->first + file.name, file.reason});
            }
        }
    }
    section.unreadable = gaps.unreadableIn(section.key);
    section.wrapped = gaps.wrappedIn(section.key);
}

void addScan(OverviewSection& section, Database& database) {
    const std::vector<modScans::Scan> scans = modScans::all(database);
    const modScans::Scan* const scan = modScans::ofFolder(scans, section.key);
    if (scan == nullptr) {
        return;
    }
    section.scan = *scan;
    std::istringstream patterns(scan->excludes);
    for (std::string pattern; std::getline(patterns, pattern);) {
        section.excludes.push_back(pattern);
    }
}

OverviewSection readSection(const OverviewContext& context, const std::string& key) {
    OverviewSection section;
    section.key = key;
    section.isOnDisk = context.database.countsSizeOnDisk();
    section.isLoaded = context.database.holdsLoadedRows();
    if (section.isLoaded) {
        addScan(section, context.database);
    }
    addGaps(section, context.gaps);
    section.figures = modFigures::overview(
        context.database, key, {},
        [&](std::string_view folder) { return context.gaps.find(folder) != nullptr; },
        [&] { context.userInterface.progressStep(); });
    if (!section.isLoaded) {
        section.excludes = context.excludes.texts();
        section.drive = platform::driveSpace(clsFile(key).drive());
    }
    return section;
}

// With as many details as have room.
std::string sectionText(const OverviewSection& section, std::size_t room) {
    std::string html;
    for (const OverviewDetail& detail : details) {
        html.clear();
        appendSection(html, section, detail);
        if (html.size() <= room) {
            break;
        }
    }
    return html;
}

std::string headText(const std::string& title) {
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
    html.append("<meta http-equiv=\"Content-Security-Policy\" content=\"").append(overviewPolicy);
    html.append("\">\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                "<meta name=\"color-scheme\" content=\"light dark\">\n<title>");
    html.append(title)
        .append("</title>\n<style>")
        .append(overviewStyle)
        .append("</style>\n</head>\n<body>\n");
    html.append("<header>\n<h1>Disk Usage Overview</h1>\n<p>Written ");
    modFormat::appendFormattedDate(html, platform::localTime(platform::now()), modFormat::storedDatePicture);
    const std::string host = platform::hostName();
    if (!host.empty()) {
        html.append(" on ");
        appendShown(html, host, longestHost);
    }
    return html.append(" by Spannory " SPANNORY_VERSION "</p>\n</header>\n");
}

void appendContents(std::string& html, std::span<const std::string> keys, std::size_t all) {
    if (keys.size() > 1) {
        html.append("<nav aria-label=\"Folders\"><ul>\n");
        for (std::size_t i = 0; i < keys.size(); ++i) {
            html.append("<li><a href=\"#s").append(std::to_string(i + 1)).append("\">");
            appendName(html, shownPath(keys[i]), details.front().longestPath);
            html.append("</a></li>\n");
        }
        html.append("</ul></nav>\n");
    }
    appendShownOf(html, keys.size(), all, "folders");
}

} // namespace

std::string overviewPage(const OverviewContext& context) {
    const std::span<const std::string> keys =
        std::span(context.folders).first(std::min(context.folders.size(), mostOverviewFolders));
    std::string title;
    for (std::size_t i = 0; i < std::min<std::size_t>(keys.size(), 3); ++i) {
        title.append(i == 0 ? "" : ", ");
        appendShown(title, shownPath(keys[i]), details.front().longestName);
    }
    title.append(context.folders.size() > 3 ? " and more" : "").append(" - Disk Usage Overview");
    std::string html = headText(title);
    appendContents(html, keys, context.folders.size());
    std::size_t number = 0;
    for (const std::string& key : keys) {
        OverviewSection section = readSection(context, key);
        section.number = ++number;
        html.append(sectionText(section, (largestOverview - frameSize) / keys.size()));
    }
    html.append("<footer><p>1 Kb is 1,024 bytes, 1 Mb is 1,024 Kb, 1 Gb is 1,024 Mb. ")
        .append(context.database.countsSizeOnDisk()
                    ? "Sizes are the room that files and folders take on the disk."
                    : "Sizes are those of the files' contents, not the room that they take on the disk.")
        .append("</p></footer>\n<script>");
    return html.append(overviewScript).append("</script>\n</body>\n</html>\n");
}

bool exportOverview(const OverviewContext& context, std::string_view fileName) {
    return modGlobal::trapped("modGlobal", "exportOverview", [&] {
        clsUserInterface& userInterface = context.userInterface;
        if (context.folders.empty()) {
            userInterface.message("No data to export.");
            return false;
        }
        {
            const BusyPointer busy(userInterface);
            const LongWork answering(context.database, [&] { userInterface.yieldToEvents(); });
            platform::Replacement file(fileName);
            const ShownProgress progress(userInterface, 0);
            file.write(overviewPage(context));
            runInBackground(userInterface, [&] { file.commit(); }); // it may wait for the disk
        }
        showSaved(userInterface, fileName);
        userInterface.openFile(fileName);
        return true;
    });
}

} // namespace modExport
