#include "export/historyLines.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/dateFormat.h"
#include "base/formatSize.h"
#include "base/numberFormat.h"
#include "platform/paths.h"

namespace modExport {

namespace {

using modFormat::countedText;
using modTimeChart::Line;
using modTimeChart::Point;

// The last name of the path, which is a root's own.
std::string nameOf(const FolderHistory& history) {
    const std::string_view path = shownFolderOf(history);
    const std::string_view name = path.substr(path.rfind(platform::displaySeparator) + 1);
    return std::string(name.empty() ? path : name);
}

std::string shownHost(const std::string& host) {
    return host.empty() ? "unknown machine" : host;
}

Point pointOf(const HistoryPoint& point, std::size_t row) {
    return {point.moment, point.folder ? std::max(point.folder->size, 0.0) : 0, point.folder.has_value(),
            !point.isCancelled, row};
}

void addHosts(std::vector<std::string>& hosts, const FolderHistory& history) {
    for (const HistoryPoint& point : history.points) {
        if (std::find(hosts.begin(), hosts.end(), point.host) == hosts.end()) {
            hosts.push_back(point.host);
        }
    }
}

std::string countsText(const ScanFile::Folder& folder) {
    std::string text;
    if (folder.files) {
        text = countedText(static_cast<double>(*folder.files), "file", "files");
    }
    if (folder.folders) {
        text += (text.empty() ? "" : ", ") +
                countedText(static_cast<double>(*folder.folders), "folder", "folders");
    }
    return text;
}

std::string sizeText(double bytes) {
    constexpr double shownInBytes = 1024;
    const std::string text = modLvw::formatSize(bytes);
    return bytes < shownInBytes ? text : text + " (" + modFormat::countText(bytes) + " bytes)";
}

void appendSentence(std::string& text, const std::string& sentence) {
    text.append(text.empty() ? "" : " ").append(sentence);
}

std::string scansText(std::size_t count) {
    return countedText(static_cast<double>(count), "saved scan", "saved scans");
}

// How many scans of the folder there are, and what that means.
std::string countRemark(const FolderHistory& history, std::size_t tried) {
    const std::size_t points = history.points.size();
    if (tried > 0 && history.failures.size() == tried) {
        return "None of the files could be read as a saved scan.";
    }
    if (points == 0) {
        return "None of the " + scansText(history.others) + " there is of this folder.";
    }
    if (!history.hasFolder()) {
        return points == 1 ? "The folder was not there when the one saved scan was made."
                           : "The folder was not there in any of the " + scansText(points) + ".";
    }
    return points == 1 ? "There is one saved scan of this folder; a curve begins with the second."
                       : scansText(points) + " of this folder.";
}

std::string hostsRemark(const std::vector<std::string>& hosts) {
    std::string names;
    for (const std::string& host : hosts) {
        names.append(names.empty() ? "" : ", ").append(shownHost(host));
    }
    return "They are of several machines, each with lines of its own: " + names + ".";
}

} // namespace

const FolderHistory& historyOf(const FolderHistories& histories, std::size_t number) {
    return number == 0 ? histories.folder : histories.subfolders.at(number - 1);
}

std::string_view shownFolderOf(const FolderHistory& history) {
    constexpr std::size_t longestRoot = 3;
    std::string_view path = history.folder;
    if (path.size() > longestRoot && path.ends_with(platform::displaySeparator)) {
        path.remove_suffix(1);
    }
    return path;
}

std::vector<std::string> hostsOf(const FolderHistories& histories) {
    std::vector<std::string> hosts;
    addHosts(hosts, histories.folder);
    for (const FolderHistory& history : histories.subfolders) {
        addHosts(hosts, history);
    }
    return hosts;
}

std::vector<Line> historyLines(const FolderHistories& histories) {
    const std::vector<std::string> hosts = hostsOf(histories);
    std::vector<Line> lines;
    for (std::size_t number = 0; number <= histories.subfolders.size(); ++number) {
        const FolderHistory& history = historyOf(histories, number);
        for (std::size_t host = 0; host < hosts.size(); ++host) {
            Line line{nameOf(history), number, host, {}, true};
            if (hosts.size() > 1) {
                line.name += " (" + shownHost(hosts[host]) + ")";
            }
            for (std::size_t row = 0; row < history.points.size(); ++row) {
                if (history.points[row].host == hosts[host]) {
                    line.points.push_back(pointOf(history.points[row], row));
                }
            }
            if (!line.points.empty()) {
                lines.push_back(std::move(line));
            }
        }
    }
    return lines;
}

std::string pointText(const FolderHistory& history, std::size_t row, bool namesHost) {
    const HistoryPoint& point = history.points.at(row);
    std::string text = std::string(shownFolderOf(history)) + "\n" +
                       modFormat::formatDate(platform::localTime(point.moment), modFormat::storedDatePicture);
    if (point.folder) {
        text += "\n" + sizeText(point.folder->size);
        if (const std::string counts = countsText(*point.folder); !counts.empty()) {
            text += "\n" + counts;
        }
    }
    if (point.change) {
        text += "\n" + modLvw::formatChange(*point.change) + " since the scan before";
    }
    if (const std::string_view remark = remarkOf(point); !remark.empty()) {
        text.append("\n").append(remark);
    }
    return namesHost ? text + "\nMachine: " + shownHost(point.host) : text;
}

std::string historyRemark(const FolderHistories& histories, std::size_t files) {
    const FolderHistory& history = histories.folder;
    std::string text;
    if (histories.files < files) {
        text = "Reading was cancelled: " + std::to_string(histories.files) + " of " + scansText(files) +
               " were read.";
    }
    if (histories.files > 0) {
        appendSentence(text, countRemark(history, histories.files));
    }
    if (!history.points.empty() && history.others > 0) {
        appendSentence(text, std::to_string(history.others) + " more there " +
                                 (history.others == 1 ? "is" : "are") + " of other folders.");
    }
    if (const std::vector<std::string> hosts = hostsOf(histories); hosts.size() > 1) {
        appendSentence(text, hostsRemark(hosts));
    }
    if (!history.failures.empty()) {
        const std::size_t further = history.failures.size() - 1;
        appendSentence(text, history.failures.front());
        if (further > 0) {
            appendSentence(text, std::to_string(further) + " more could not be read.");
        }
    }
    return text;
}

} // namespace modExport
