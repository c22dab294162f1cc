#pragma once

#include <cstddef>
#include <string_view>

class clsUserInterface;
class ShownProgress;

namespace modExport {

class ExcelSheet;
class ListTable;

// Writes the list to the beginning of a sheet: the caption in A1, the headers in row 3, the rows below, with
// sizes and counts as numbers and, if the list has totals, their sums in the last row.
void writeListSheet(ExcelSheet& sheet, const ListTable& list, std::string_view caption,
                    ShownProgress& progress);
inline constexpr std::size_t firstListRow = 3; // counted from 0

} // namespace modExport

namespace modGlobal {

// Writes the whole list into a new workbook with that name (writeListSheet), replacing any file there, and
// opens it in the spreadsheet application. If the list is empty or longer than a sheet, a message says so.
// Errors are logged and leave an existing file unchanged.
void printToExcel(const modExport::ListTable& list, std::string_view caption, clsUserInterface& userInterface,
                  std::string_view fileName);

} // namespace modGlobal
