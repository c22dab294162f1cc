#include "export/textReport.h"

#include <string>

#include "base/dateFormat.h"
#include "export/csvText.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace {

using modExport::appendQuotesDoubled;

// The form of one report's values.
struct Fields {
    std::string_view separator;
    std::string_view quote;
    bool doubles;
    bool areLoaded;

    // By default, values stay unchanged, except for characters that names on Windows cannot contain. Those of
    // a loaded scan never end their field, whatever the report's quote is.
    void append(std::string& line, std::string_view value) const {
        if (!areLoaded) {
            appendQuotesDoubled(line, value, doubles ? quote : "");
            return;
        }
        const std::string text = modExport::withoutFormula(value);
        const bool endsField = text.find_first_of("\"\r\n") != std::string::npos ||
                               (!separator.empty() && text.find(separator) != std::string::npos);
        const std::string_view own = quote.empty() && endsField ? "\"" : "";
        line.append(own);
        appendQuotesDoubled(line, text, quote.empty() ? own : quote);
        line.append(own);
    }

    void appendDate(std::string& line, std::string_view stored) const {
        std::string date;
        modFormat::appendReformattedDate(date, stored, modFormat::reportDatePicture);
        append(line, date);
    }
};

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
    const Fields fields{separator, quote, rows.exact() || quote == "\"", rows.areLoaded()};

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
        fields.append(line, text);
        line.append(between).append(rows.storedSize()).append(between);
        rows.appendShownSize(line);
        line.append(between);
        fields.appendDate(line, rows.dateAccessed());
        line.append(between);
        fields.appendDate(line, rows.dateModified());
        line.append(between);
        fields.append(line, rows.owner());
        line.append(between).append(rows.type()).append(end);
        sink.write(line);
    }
}
