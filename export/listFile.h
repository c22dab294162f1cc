#pragma once

#include <string_view>

#include "export/reportFormats.h"

class clsUserInterface;

namespace modExport {

class ListTable;

// Writes the whole list to a file, which is replaced as a whole: as text (RFC 4180), as a page (HTML 5), as
// XML (export/listXml.h) or as a workbook. The cells of loaded rows are no formulas. If the list is empty or
// too long, a message says so; errors are logged; the file is then unchanged. A page begins with the picture,
// an SVG element, if there is one. True if a file was written that is still to be opened, which workbooks are
// already.
bool exportListFile(ReportFormat format, const ListTable& list, std::string_view caption,
                    clsUserInterface& userInterface, std::string_view fileName, bool areLoaded,
                    std::string_view picture = {});

} // namespace modExport
