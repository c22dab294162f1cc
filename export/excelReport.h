#pragma once

#include <string_view>

#include "export/reportFrame.h"

namespace modGlobal {

// Writes the query's rows as a workbook with one sheet and opens it in the spreadsheet program. Refuses more
// than 65500 rows and asks before more than 10000. True when it was saved; errors are logged and leave an
// existing file as it was.
bool exportXLSSizeReport(const modExport::ReportContext& context, std::string_view query,
                         std::string_view fileName);

} // namespace modGlobal

namespace modExport {

// The workbook is put together in the system's temporary folder and only then written to the sink. Throws 61
// when that folder is full, 70 or 75 when no file can be made in it.
void writeExcelReport(ReportRows& rows, platform::Sink& sink);

} // namespace modExport
