#include "export/textReport.h"

#include <string>

#include "base/dateFormat.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace {

// Doubles each quote in the text; without a quote character, the text stays unchanged.
void appendValue(std::string& line, std::string_view value, std::string_view quote) {
    while (!quote.empty()) {
        const std::size_t at = value.find(quote);
        if (at == std::string_view::npos) {
            break;
        }
        line.append(value.substr(0, at + quote.size())).append(quote);
        value.remove_prefix(at + quote.size());
    }
    line.append(value);
}

} // namespace

bool modGlobal::exportTextSizeReport(const modExport::ReportContext& context, std::string_view query,
                                     std::string_view fileName, std::string_view separator,
                                     std::string_view quote) {
    return modExport::exportReport(context, {"exportTextSizeReport"}, query, fileName,
                                   [=](modExport::ReportRows& rows, platform::Sink& sink) {
                                       modExport::writeTextReport(rows, sink, separator, quote);
                                   });
}

void modExport::writeTextReport(ReportRows& rows, platform::Sink& sink, std::string_view separator,
                                std::string_view quote) {
    const std::string start(quote);
    const std::string between = start + std::string(separator) + start;
    const std::string end = start + std::string(rows.exact() ? "\r\n" : platform::lineEnd);
    // By default, values stay unchanged, except for characters that names on Windows cannot contain.
    const bool doubles = rows.exact() || quote == "\"";

    std::string line = start;
    for (const char* name : {"Path", "Size (Bytes)", "Size", "Date Accessed", "Date Modified", "Owner"}) {
        line.append(name).append(between);
    }
    line.append("Type").append(end);
    sink.write(line);

    std::string text;
    for (; !rows.atEnd(); rows.next()) {
        text.clear();
        rows.appendPath(text);
        line.assign(start);
        appendValue(line, text, doubles ? quote : "");
        line.append(between).append(rows.storedSize()).append(between);
        rows.appendShownSize(line);
        line.append(between);
        modFormat::appendReformattedDate(line, rows.dateAccessed(), modFormat::reportDatePicture);
        line.append(between);
        modFormat::appendReformattedDate(line, rows.dateModified(), modFormat::reportDatePicture);
        line.append(between);
        appendValue(line, rows.owner(), doubles ? quote : "");
        line.append(between).append(rows.type()).append(end);
        sink.write(line);
    }
}
