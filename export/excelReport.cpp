#include "export/excelReport.h"

#include <array>
#include <string>

#include "base/clsSettings.h"
#include "base/clsUserInterface.h"
#include "export/excelSheet.h"
#include "platform/files.h"
#include "platform/locale.h"

namespace {

constexpr std::int64_t mostRows = 65500;
constexpr std::int64_t mostExactRows = modExport::ExcelSheet::mostRows - 1; // without the header row
constexpr std::int64_t manyRows = 10000; // more rows than this need a confirmation

template <std::int64_t most>
bool acceptsCount(clsUserInterface& userInterface, std::int64_t count) {
    if (count > most) {
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

// An exact report needs all rows except that of the headers, so its title is in the document's properties.
void writeHead(modExport::ExcelSheet& sheet, const std::string& title, bool exact) {
    if (exact) {
        sheet.setTitle(title);
    } else {
        sheet.text(0, title, modExport::ExcelSheet::Style::bold);
        sheet.nextRow();
    }
    sheet.tableHead(headers);
}

} // namespace

bool modGlobal::exportXLSSizeReport(const modExport::ReportContext& context, std::string_view query,
                                    std::string_view fileName) {
    auto* const accepts = context.settings.exact() ? acceptsCount<mostExactRows> : acceptsCount<mostRows>;
    return modExport::exportReport(context, {"exportXLSSizeReport", accepts, false}, query, fileName,
                                   modExport::writeExcelReport);
}

void modExport::writeExcelReport(ReportRows& rows, platform::Sink& sink) {
    const platform::PlainNumbers plainNumbers;
    ExcelSheet sheet(headers.size());
    writeHead(sheet, rows.title(), rows.exact());
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
    sheet.finish(sink);
}
