#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "export/reportFrame.h"

namespace modGlobal {

// Writes the query's rows as a page with a table, row by row, and opens it. Odd on purpose: values are not
// escaped. True if the page was written; errors are logged and leave an existing file unchanged.
bool exportHTMLSizeReport(const modExport::ReportContext& context, std::string_view query,
                          std::string_view fileName);

// The text in pieces of at most `width` characters joined by "<BR>". With a width of 0, it stays whole.
[[nodiscard]] std::string htmlPathString(std::string_view text, std::size_t width);

} // namespace modGlobal

namespace modExport {

void writeHtmlReport(ReportRows& rows, platform::Sink& sink);

} // namespace modExport
