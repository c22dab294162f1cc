#pragma once

#include <string_view>

class clsUserInterface;

namespace modExport {
class ListTable;
}

namespace modGlobal {

// Writes the whole list into a new workbook of that name, in place of an existing one, and opens it in the
// spreadsheet program: the caption in A1, the headers in row 3, the rows below, sizes and counts as numbers
// with their sums in the last row. An empty list, and one that is longer than a sheet, is told in a message.
// Errors are logged and leave an existing file as it was.
void printToExcel(const modExport::ListTable& list, std::string_view caption, clsUserInterface& userInterface,
                  std::string_view fileName);

} // namespace modGlobal
