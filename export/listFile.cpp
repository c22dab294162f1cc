#include "export/listFile.h"

#include <string>

#include "base/clsUserInterface.h"
#include "base/errorTrap.h"
#include "export/listClipboard.h"
#include "export/listTable.h"
#include "export/listWorkbook.h"
#include "export/listXml.h"
#include "export/xmlText.h"
#include "platform/files.h"

namespace modExport {

namespace {

constexpr std::string_view style =
    "table { border-collapse: collapse; font: smaller Arial, sans-serif; background: whitesmoke; }\n"
    "caption { font-weight: bold; padding: 1em; }\n"
    "th, td { border: 1px solid gainsboro; padding: 1px 4px; text-align: left; white-space: pre-wrap; }\n"
    "th { color: midnightblue; }\n"
    ".number { text-align: right; white-space: nowrap; }\n";

bool isNumber(const ListTable::Column& column) {
    return column.kind == ListTable::Kind::bytes || column.kind == ListTable::Kind::count;
}

void writePage(const ListTable& list, std::string_view caption, std::string_view picture,
               ShownProgress& progress, platform::Sink& sink) {
    std::string title;
    appendHtmlEscaped(title, std::string(caption));
    std::string line = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>";
    line.append(title).append("</title>\n<style>\n").append(style).append("</style>\n</head>\n<body>\n");
    line.append(picture).append("<table>\n<caption>").append(title).append("</caption>\n<thead>\n<tr>");
    for (const ListTable::Column& column : list.columns()) {
        line.append("<th scope=\"col\">").append(column.header).append("</th>");
    }
    sink.write(line.append("</tr>\n</thead>\n<tbody>\n"));
    for (std::size_t row = 0; row < list.rowCount(); ++row) {
        line.assign("<tr>");
        for (std::size_t column = 0; column < list.columns().size(); ++column) {
            line.append(isNumber(list.columns()[column]) ? "<td class=\"number\">" : "<td>");
            appendHtmlEscaped(line, std::string(list.text(row, column)));
            line.append("</td>");
        }
        sink.write(line.append("</tr>\n"));
        progress.step();
    }
    sink.write("</tbody>\n</table>\n</body>\n</html>\n");
}

} // namespace

bool exportListFile(ReportFormat format, const ListTable& list, std::string_view caption,
                    clsUserInterface& userInterface, std::string_view fileName, bool areLoaded,
                    std::string_view picture) {
    if (format == ReportFormat::excel) {
        modGlobal::printToExcel(list, caption, userInterface, fileName);
        return false;
    }
    return modGlobal::trapped("modExport", "exportListFile", [&] {
        if (list.rowCount() == 0 && !list.mayBeEmpty()) {
            userInterface.message(emptyListMessage);
            return false;
        }
        ShownProgress progress(userInterface, static_cast<std::int64_t>(list.rowCount()));
        platform::Replacement file(fileName);
        if (format == ReportFormat::html) {
            writePage(list, caption, picture, progress, file);
        } else if (format == ReportFormat::xml) {
            writeListXml(list, caption, progress, file);
        } else {
            writeListText(list, progress, true, areLoaded,
                          [&](std::string_view piece) { file.write(piece); });
            file.write("\r\n");
        }
        file.commit();
        return true;
    });
}

} // namespace modExport
