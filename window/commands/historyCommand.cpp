#include "window/commands/historyCommand.h"

#include <optional>

#include "base/clsFile.h"
#include "base/errorTrap.h"
#include "export/historyReport.h"
#include "export/listClipboard.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "window/commands/shownList.h"

using modExport::ReportFormat;

namespace {

constexpr std::string_view moduleName = "HistoryCommand";

const std::string filter = "HTML Files (*.html)|*.html|Text Files (*.csv)|*.csv|Excel Files (*.xlsx)|*.xlsx|"
                           "All Files (*.*)|*.*";

// A page, unless the name says otherwise.
ReportFormat formatOf(std::string_view file) {
    for (const ReportFormat format : {ReportFormat::text, ReportFormat::excel}) {
        const std::string_view extension = modExport::fileExtension(format);
        if (file.size() > extension.size() &&
            platform::equalIgnoringAsciiCase(file.substr(file.size() - extension.size()), extension)) {
            return format;
        }
    }
    return ReportFormat::html;
}

} // namespace

HistoryCommand::HistoryCommand(Dependencies dependencies)
    : dependencies_(std::move(dependencies)),
      choice_(dependencies_.dialogs, dependencies_.userInterface, dependencies_.database),
      history_(dependencies_.dialogs, &dependencies_.window) {
    connect(&history_, &frmHistory::openAsBefore, this, [this](const std::string& file) {
        modGlobal::trapped(moduleName, "openAsBefore", [&] { dependencies_.openAsBefore(file); });
    });
    connect(&history_, &frmHistory::copyRequested, this,
            [this] { dependencies_.runExclusively([this] { copy(); }); });
    connect(&history_, &frmHistory::exportRequested, this,
            [this] { dependencies_.runExclusively([this] { exportList(); }); });
}

// The first time, it looks where the last scan was saved.
void HistoryCommand::show() {
    history_.showFolder(dependencies_.selectedFolder());
    if (const std::string saved = dependencies_.lastSavedScan();
        history_.scans().isEmpty() && !saved.empty()) {
        history_.setScans(QString::fromStdString(platform::displayPath(clsFile(saved).parentFolder())));
    }
    history_.show();
    history_.raise();
    history_.activateWindow();
}

// As the lists of the main window; the texts are those of saved scans, which anyone may have made.
void HistoryCommand::copy() {
    modGlobal::trapped(moduleName, "copy", [this] {
        const std::vector<int> selected = history_.list().selectedRows();
        const ShownList list(history_.list().rows(),
                             selected.size() > 1 ? std::optional(selected) : std::nullopt);
        modGlobal::copyClipboardLvw(list, dependencies_.userInterface, dependencies_.clipboard,
                                    dependencies_.settings.exact(), true);
    });
}

// Writing handles events, and another answer may come meanwhile.
void HistoryCommand::exportList() {
    modGlobal::trapped(moduleName, "exportList", [this] {
        const modExport::FolderHistory history = history_.listed();
        const std::string file = choice_.toWrite(filter, modExport::fileExtension(ReportFormat::html));
        if (!file.empty() &&
            modExport::exportHistory(formatOf(file), history, dependencies_.userInterface, file)) {
            dependencies_.userInterface.openFile(file);
        }
    });
}
