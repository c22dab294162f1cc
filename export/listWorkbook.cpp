#include "export/listWorkbook.h"

#include <vector>

#include "base/clsUserInterface.h"
#include "base/errorTrap.h"
#include "base/runInBackground.h"
#include "export/excelSheet.h"
#include "export/listTable.h"
#include "export/reportFrame.h"
#include "platform/files.h"
#include "platform/locale.h"

namespace {

using modExport::ExcelSheet;
using modExport::ListTable;
using Style = ExcelSheet::Style;

constexpr std::size_t rowsBesideTheLists = 4; // caption, blank line, headers, totals

void writeHead(ExcelSheet& sheet, const ListTable& list, std::string_view caption) {
    sheet.text(0, caption, Style::bold);
    sheet.nextRow();
    sheet.nextRow();
    std::vector<std::string_view> headers;
    for (const ListTable::Column& column : list.columns()) {
        headers.push_back(column.header);
    }
    sheet.tableHead(headers);
}

// Adds the row's numbers to the totals, one per column.
void writeRow(ExcelSheet& sheet, const ListTable& list, std::size_t row, std::vector<double>& totals) {
    for (std::size_t column = 0; column < totals.size(); ++column) {
        const ListTable::Kind kind = list.columns()[column].kind;
        if (kind == ListTable::Kind::date) {
            sheet.date(column, list.text(row, column), Style::listDate);
        } else if (const auto number = list.number(row, column)) {
            sheet.number(column, *number, kind == ListTable::Kind::bytes ? Style::bytes : Style::count);
            totals[column] += *number;
        } else {
            sheet.text(column, list.text(row, column));
        }
    }
    sheet.nextRow();
}

void writeTotals(ExcelSheet& sheet, const ListTable& list, std::size_t rows,
                 const std::vector<double>& totals) {
    sheet.text(0, "Total", Style::bold);
    for (std::size_t column = 1; column < totals.size(); ++column) {
        const ListTable::Kind kind = list.columns()[column].kind;
        if (kind == ListTable::Kind::bytes || kind == ListTable::Kind::count) {
            sheet.sumOfRowsAbove(column, rows, totals[column],
                                 kind == ListTable::Kind::bytes ? Style::boldBytes : Style::boldCount);
        }
    }
}

} // namespace

void modExport::writeListSheet(ExcelSheet& sheet, const ListTable& list, std::string_view caption,
                               ShownProgress& progress) {
    writeHead(sheet, list, caption);
    std::vector<double> totals(list.columns().size());
    std::size_t row = 0;
    for (; row < list.rowCount(); ++row) {
        writeRow(sheet, list, row, totals);
        progress.step();
    }
    if (list.hasTotals()) {
        writeTotals(sheet, list, row, totals);
    }
}

void modGlobal::printToExcel(const ListTable& list, std::string_view caption, clsUserInterface& userInterface,
                             std::string_view fileName) {
    trapped("modGlobal", "printToExcel", [&] {
        const std::size_t rows = list.rowCount();
        if (rows == 0 && !list.mayBeEmpty()) {
            userInterface.message(modExport::emptyListMessage);
            return;
        }
        if (rows > ExcelSheet::mostRows - rowsBesideTheLists) {
            userInterface.message(modExport::tooMuchDataMessage);
            return;
        }
        {
            const BusyPointer busy(userInterface);
            ShownProgress progress(userInterface, static_cast<std::int64_t>(rows));
            platform::Replacement file(fileName);
            const platform::PlainNumbers plainNumbers;
            ExcelSheet sheet(list.columns().size());
            modExport::writeListSheet(sheet, list, caption, progress);
            sheet.finish(file);
            runInBackground(userInterface, [&] { file.commit(); });
        }
        modExport::showSaved(userInterface, fileName);
        userInterface.openFile(fileName);
    });
}
