#pragma once

#include <string_view>

#include "export/reportFrame.h"

namespace modGlobal {

// Writes the query's rows as text, with a header line and one line per row of seven quoted fields joined by
// the separator, and opens it. Odd on purpose: values are not escaped, and the owner is included whatever the
// settings say. True if the file was written; errors are logged and leave an existing file unchanged.
bool exportTextSizeReport(const modExport::ReportContext& context, std::string_view query,
                          std::string_view fileName, std::string_view separator, std::string_view quote);

} // namespace modGlobal

namespace modExport {

void writeTextReport(ReportRows& rows, platform::Sink& sink, std::string_view separator,
                     std::string_view quote);

} // namespace modExport
