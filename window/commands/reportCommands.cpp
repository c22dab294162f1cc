#include "window/commands/reportCommands.h"

#include <string>

#include "db/folderRows.h"
#include "export/overviewPage.h"
#include "export/reportFrame.h"
#include "scan/savedScan.h"

using modExport::ReportFormat;

void ReportCommands::exportReport(ReportFormat format) {
    askForOptions(format);
    if (options_.cancelExport) {
        return;
    }
    const std::string file = fileFor(format);
    if (file.empty()) {
        return;
    }
    const modExport::ReportContext context{dependencies_.database.database(), dependencies_.userInterface,
                                           dependencies_.settings, options_, modSavedScan::scannedFolders};
    modExport::exportReportFile(format, context, file); // it reports its outcome itself
}

void ReportCommands::exportOverview(const FigureGaps& gaps) {
    const std::string folder = selectedFolder();
    if (folder.empty()) {
        dependencies_.userInterface.message("Select a scanned folder first.");
        return;
    }
    const std::string file = choice_.toWrite(modExport::saveDialogFilter(ReportFormat::html),
                                             modExport::fileExtension(ReportFormat::html));
    if (!file.empty()) {
        modExport::exportOverview({dependencies_.database.database(),
                                   dependencies_.userInterface,
                                   gaps,
                                   *dependencies_.settings.excludes(),
                                   {folder}},
                                  file);
    }
}

// A format without options does not reset an earlier Cancel. Odd on purpose: unless reports are exact, XML
// exports do nothing after the options box was cancelled, until that box is closed with OK.
void ReportCommands::askForOptions(ReportFormat format) {
    if (modExport::isSummaryOnly(format)) {
        options_.detail = clsExport::summary;
        options_.cancelExport = options_.cancelExport && !dependencies_.settings.exact();
        return;
    }
    options_.exportType = false;
    options_.folder = selectedFolder();
    dependencies_.dialogs.exportOptions(options_);
}

// Empty if nothing of it was scanned.
std::string ReportCommands::selectedFolder() const {
    std::string key = dependencies_.selectedKey();
    if (!key.ends_with('\\')) { // a heading of the tree
        return {};
    }
    const auto recorded = modFolderRows::find(dependencies_.database.database(), key);
    return recorded.isThere() ? key : std::string();
}

// A workbook is opened in the spreadsheet application, where the user can save it anywhere.
std::string ReportCommands::fileFor(ReportFormat format) const {
    if (format == ReportFormat::excel) {
        return dependencies_.workbookName();
    }
    return choice_.toWrite(modExport::saveDialogFilter(format), modExport::fileExtension(format));
}
