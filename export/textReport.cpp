#include "export/textReport.h"

#include <string>

#include "app/pictures.h"
#include "platform/files.h"
#include "platform/paths.h"

bool modGlobal::exportTextSizeReport(const modExport::ReportContext& context, std::string_view query,
                                     std::string_view fileName, std::string_view separator,
                                     std::string_view quote) {
    return modExport::exportReport(context, {"exportTextSizeReport"}, query, fileName,
                                   [=](modExport::ReportRows& rows) {
                                       modExport::writeStreamed(fileName, [&](platform::Sink& sink) {
                                           modExport::writeTextReport(rows, sink, separator, quote);
                                       });
                                   });
}

void modExport::writeTextReport(ReportRows& rows, platform::Sink& sink, std::string_view separator,
                                std::string_view quote) {
    const std::string start(quote);
    const std::string between = start + std::string(separator) + start;
    const std::string end = start + std::string(platform::lineEnd);

    std::string line = start;
    for (const char* name : {"Path", "Size (Bytes)", "Size", "Date Accessed", "Date Modified", "Owner"}) {
        line.append(name).append(between);
    }
    line.append("Type").append(end);
    sink.write(line);

    for (; !rows.atEnd(); rows.next()) {
        line.assign(start);
        rows.appendPath(line);
        line.append(between).append(rows.storedSize()).append(between);
        rows.appendShownSize(line);
        line.append(between);
        modFormat::appendReformattedDate(line, rows.dateAccessed(), modFormat::reportDatePicture);
        line.append(between);
        modFormat::appendReformattedDate(line, rows.dateModified(), modFormat::reportDatePicture);
        line.append(between).append(rows.owner());
        line.append(between).append(rows.type()).append(end);
        sink.write(line);
    }
}
