#pragma once

#include <string_view>

class clsUserInterface;

namespace modExport {
class ListTable;
}

namespace modGlobal {

// Writes the whole list into a new workbook with that name, replacing any file there, and opens it in the
// spreadsheet application: the caption in A1, the headers in row 3, the rows below, with sizes and counts as
// numbers and their sums in the last row. If the list is empty or longer than a sheet, a message says so.
// Errors are logged and leave an existing file unchanged.
void printToExcel(const modExport::ListTable& list, std::string_view caption, clsUserInterface& userInterface,
                  std::string_view fileName);

} // namespace modGlobal
