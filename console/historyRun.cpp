#include "console/historyRun.h"

#include <algorithm>
#include <utility>

#include "base/terminalText.h"
#include "console/figureTables.h"
#include "export/historyReport.h"
#include "export/readHistories.h"
#include "platform/runtimeError.h"
#include "platform/terminal.h"

std::vector<OwnFile> HistoryRun::inputs() {
    findFiles();
    std::vector<OwnFile> files;
    for (const std::string& file : files_) {
        files.push_back({file, "one of the saved scans"});
    }
    return files;
}

// Each once, whatever was named twice.
void HistoryRun::findFiles() {
    for (const std::string& typed : options().history) {
        try {
            for (std::string& file : modExport::savedScansAt(typed)) {
                if (std::find(files_.begin(), files_.end(), file) == files_.end()) {
                    files_.push_back(std::move(file));
                }
            }
        } catch (const RuntimeError& error) {
            fail(typed, error.what());
        }
    }
}

void HistoryRun::answer() {
    if (files_.empty()) {
        return;
    }
    const std::string& folder = options().paths.front();
    const modExport::FolderHistory history =
        modExport::readHistory(files_, folder, [] { return !platform::wasInterrupted(); });
    if (platform::wasInterrupted()) {
        return;
    }
    for (const std::string& reason : history.failures) {
        fail({}, reason);
    }
    if (!history.hasFolder()) {
        fail(folder, "Folder not found in any of the saved scans");
        return;
    }
    show(history);
    write([&](const Output& output, clsUserInterface& userInterface) {
        modExport::exportHistory(*output.format, history, userInterface, output.file);
    });
}

void HistoryRun::show(const modExport::FolderHistory& history) {
    const std::size_t width = platform::terminalWidth(platform::Stream::output);
    print(forTerminal(history.folder) + "\n\n" + historyTable(history, width));
}
