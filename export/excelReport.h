#pragma once

#include <string_view>

#include "export/reportFrame.h"

namespace modGlobal {

// Writes the query's rows as a workbook with one sheet and opens it in the spreadsheet application. Refuses
// more than 65500 rows (exact: 1048575, with the title in the document's properties), and asks before writing
// more than 10000. True if it was saved; errors are logged and leave an existing file unchanged.
bool exportXLSSizeReport(const modExport::ReportContext& context, std::string_view query,
                         std::string_view fileName);

} // namespace modGlobal

namespace modExport {

// Builds the workbook in the system's temporary folder and then writes it to the sink. Throws 61 if that
// folder is full, and 70 or 75 if no file can be created in it.
void writeExcelReport(ReportRows& rows, platform::Sink& sink);

} // namespace modExport
