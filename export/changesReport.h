#pragma once

#include <string_view>

#include "db/dao.h"
#include "export/reportFormats.h"

class clsUserInterface;

namespace modExport {

// Writes all rows of table `changes` (views/changes.h) as a list, largest change first, or by path as XML:
// path, type, state, sizes before and now, change, owner, date. With `foldersOnly` those of folders alone.
// What has not changed is in it if the table has it. A list without rows is written too. Values are made safe
// as those of loaded rows are (exportListFile).
void exportChanges(ReportFormat format, Database& database, bool foldersOnly, std::string_view caption,
                   clsUserInterface& userInterface, std::string_view fileName);

} // namespace modExport
