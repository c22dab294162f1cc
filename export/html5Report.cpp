#include "export/html5Report.h"

#include <string>
#include <vector>

#include "base/dateFormat.h"
#include "export/xmlText.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace modExport {

namespace {

constexpr std::string_view style =
    "table { border-collapse: collapse; font: smaller Arial, sans-serif; background: whitesmoke; }\n"
    "caption { font-weight: bold; padding: 1em; }\n"
    "th, td { border: 1px solid gainsboro; padding: 1px 4px; text-align: left; }\n"
    "th { color: midnightblue; }\n"
    "td { white-space: nowrap; }\n"
    "td:first-child { white-space: pre-wrap; overflow-wrap: anywhere; }\n"
    "td:nth-child(2), td:nth-child(3) { text-align: right; }\n";

// "/usr, /home and more - Spannory - Detail Report (03/14/04 09:05 PM)"
std::string titleWithFolders(ReportRows& rows) {
    constexpr std::size_t most = 3;
    std::string title;
    const std::vector<std::string> folders = rows.scannedFolders(most + 1);
    for (std::size_t i = 0; i < folders.size() && i < most; ++i) {
        title.append(title.empty() ? "" : ", ").append(platform::displayPath(folders[i]));
    }
    title.append(folders.size() > most ? " and more" : "").append(title.empty() ? "" : " - ");
    return title.append(platform::trimmed(rows.title()));
}

std::string pageHead(ReportRows& rows) {
    std::string title;
    appendHtmlEscaped(title, titleWithFolders(rows));
    std::string head = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>";
    head.append(title).append("</title>\n<style>\n").append(style).append("</style>\n</head>\n<body>\n");
    head.append("<table>\n<caption>").append(title).append("</caption>\n<thead>\n<tr>");
    for (const std::string_view name :
         {"Path", "Size (Bytes)", "Size", "Date Accessed", "Date Modified", "Owner", "Type"}) {
        if (name != "Owner" || rows.withOwner()) {
            head.append("<th scope=\"col\">").append(name).append("</th>");
        }
    }
    return head.append("</tr>\n</thead>\n<tbody>\n");
}

} // namespace

void writeHtml5Report(ReportRows& rows, platform::Sink& sink) {
    const bool withOwner = rows.withOwner(); // all rows have as many cells as the header
    sink.write(pageHead(rows));
    std::string line;
    const auto cell = [&line](std::string text) {
        line.append("<td>");
        appendHtmlEscaped(line, std::move(text));
        line.append("</td>");
    };
    const auto date = [](std::string_view stored) {
        std::string text;
        modFormat::appendReformattedDate(text, stored, modFormat::reportDatePicture);
        return text;
    };
    for (; !rows.atEnd(); rows.next()) {
        std::string path;
        std::string size;
        rows.appendPath(path);
        rows.appendShownSize(size);
        line.assign("<tr>");
        cell(std::move(path));
        cell(std::string(rows.storedSize()));
        cell(std::move(size));
        cell(date(rows.dateAccessed()));
        cell(date(rows.dateModified()));
        if (withOwner) {
            cell(std::string(rows.owner()));
        }
        cell(std::string(rows.type()));
        sink.write(line.append("</tr>\n"));
    }
    sink.write("</tbody>\n</table>\n</body>\n</html>\n");
}

} // namespace modExport
