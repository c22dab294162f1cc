#pragma once

#include <string_view>

#include "export/reportFrame.h"

namespace modGlobal {

// Writes the query's rows (which need parentFolder too) as nested "path" elements, each within the element of
// its parent folder where that was written before, else below the document element, and opens the file.
// True when it was saved; errors are logged and leave an existing file as it was.
bool exportXMLSizeReport(const modExport::ReportContext& context, std::string_view query,
                         std::string_view fileName);

} // namespace modGlobal

namespace modExport {

// The document is held in memory until all rows are read; only then is the sink written to.
void writeXmlReport(ReportRows& rows, platform::Sink& sink);

} // namespace modExport
