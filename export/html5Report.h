#pragma once

#include "export/reportFrame.h"

namespace modExport {

// Writes the rows as a table in a valid HTML 5 page, with every value escaped; the title names what was
// scanned. Names with characters that are not allowed in such a page are written in the form of
// moveForbiddenCharacters.
void writeHtml5Report(ReportRows& rows, platform::Sink& sink);

} // namespace modExport
