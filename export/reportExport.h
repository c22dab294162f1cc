#pragma once

#include <string_view>

#include "export/exportQueries.h"
#include "export/reportFrame.h"

namespace modExport {

// Exports a report of the format: the rows that the options ask for, handed to the format's own writer. True
// when it was written; what went wrong was told or logged.
bool exportReportFile(ReportFormat format, const ReportContext& context, std::string_view fileName);

} // namespace modExport
