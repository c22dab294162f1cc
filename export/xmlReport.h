#pragma once

#include <string_view>

#include "export/reportFrame.h"

namespace modGlobal {

// Writes the query's rows (which must include parentFolder) as nested "path" elements and opens the file. An
// element is placed in that of its parent folder if there already is one, otherwise in the document element.
// True if it was saved; errors are logged and leave an existing file unchanged.
bool exportXMLSizeReport(const modExport::ReportContext& context, std::string_view query,
                         std::string_view fileName);

} // namespace modGlobal

namespace modExport {

// Keeps the document in memory until all rows have been read, and only then writes to the sink.
void writeXmlReport(ReportRows& rows, platform::Sink& sink);

} // namespace modExport
