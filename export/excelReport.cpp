#include "export/excelReport.h"

#include <array>
#include <string>

#include "app/clsUserInterface.h"
#include "export/excelSheet.h"
#include "platform/files.h"
#include "platform/locale.h"

namespace {

constexpr std::int64_t mostRows = 65500;
constexpr std::int64_t manyRows = 10000; // asked about above this

bool acceptsCount(clsUserInterface& userInterface, std::int64_t count) {
    if (count > mostRows) {
        userInterface.message(modExport::tooMuchDataMessage);
        return false;
    }
    return count <= manyRows ||
           userInterface.ask(
               Question::largeExcelReport,
               "There are more than 10,000 items to export.  This can take a couple of minutes. "
               "Do you want to continue?");
}

constexpr std::array<std::string_view, 7> headers{"Path",          "Size (bytes)", "Size", "Date Accessed",
                                                  "Date Modified", "Owner",        "Type"};

void writeHead(modExport::ExcelSheet& sheet, const std::string& title) {
    using Style = modExport::ExcelSheet::Style;
    sheet.text(0, title, Style::bold);
    sheet.nextRow();
    sheet.startTable();
    for (std::size_t column = 0; column < headers.size(); ++column) {
        sheet.text(column, headers[column], Style::bold);
    }
    sheet.nextRow();
    sheet.freezeRowsAbove();
}

} // namespace

bool modGlobal::exportXLSSizeReport(const modExport::ReportContext& context, std::string_view query,
                                    std::string_view fileName) {
    return modExport::exportReport(context, {"exportXLSSizeReport", acceptsCount, false}, query, fileName,
                                   [fileName](modExport::ReportRows& rows) {
                                       platform::TextSink workbook;
                                       modExport::writeExcelReport(rows, workbook);
                                       platform::replaceFile(fileName, workbook.text());
                                   });
}

void modExport::writeExcelReport(ReportRows& rows, platform::Sink& sink) {
    const platform::PlainNumbers plainNumbers;
    ExcelSheet sheet(headers.size());
    writeHead(sheet, rows.title());
    std::string text;
    for (; !rows.atEnd(); rows.next()) {
        text.clear();
        rows.appendPath(text);
        sheet.text(0, text);
        if (rows.hasSize()) {
            sheet.number(1, rows.size());
        }
        text.clear();
        rows.appendShownSize(text);
        sheet.text(2, text);
        sheet.date(3, rows.dateAccessed(), ExcelSheet::Style::reportDate);
        sheet.date(4, rows.dateModified(), ExcelSheet::Style::reportDate);
        sheet.text(5, rows.owner());
        sheet.text(6, rows.type());
        sheet.nextRow();
    }
    sink.write(sheet.finish());
}
