#include "console/historyRun.h"

#include <algorithm>
#include <utility>

#include "base/applicationFolder.h"
#include "base/errorLog.h"
#include "base/errorLogFiles.h"
#include "base/terminalText.h"
#include "console/figureTables.h"
#include "export/historyReport.h"
#include "export/readHistories.h"
#include "export/targetFile.h"
#include "platform/files.h"
#include "platform/terminal.h"

namespace {

constexpr int statusDone = 0;
constexpr int statusFailed = 1;
constexpr int statusCancelled = 130;

} // namespace

HistoryRun::HistoryRun(ConsoleOptions options)
    : options_(std::move(options)), userInterface_(options_.force, options_.quiet) {}

int HistoryRun::run() {
    platform::ignoreBrokenPipes();
    if (!start()) {
        return statusFailed;
    }
    findFiles();
    checkOutputs();
    if (files_.empty()) {
        return statusFailed;
    }
    const platform::InterruptionWatch watch;
    const modExport::FolderHistory history =
        modExport::readHistory(files_, options_.paths.front(), [] { return !platform::wasInterrupted(); });
    if (platform::wasInterrupted()) {
        return statusCancelled;
    }
    for (const std::string& reason : history.failures) {
        fail({}, reason);
    }
    if (history.hasFolder()) {
        show(history);
        write(history);
    } else {
        fail(options_.paths.front(), "Folder not found in any of the saved scans");
    }
    return failed_ ? statusFailed : statusDone;
}

bool HistoryRun::start() {
    try {
        applicationFolder_ = findApplicationFolder(options_.applicationFolder);
        modGlobal::setErrorLog(&userInterface_,
                               [this] { return modGlobal::errorLogFiles(store_, applicationFolder_); });
        return true;
    } catch (const RuntimeError& error) {
        fail({}, error.what());
        return false;
    }
}

// Each once, whatever was named twice.
void HistoryRun::findFiles() {
    for (const std::string& typed : options_.history) {
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

void HistoryRun::checkOutputs() {
    const modGlobal::ErrorLogFiles log = modGlobal::errorLogFiles(store_, applicationFolder_);
    std::vector<OwnFile> ownFiles{{applicationFolder_ + "main.dat", "the working database"},
                                  {applicationFolder_ + "settings.ini", "the file of settings"},
                                  {applicationFolder_ + "window.ini", "a file of the program"},
                                  {log.appended, "the error log"},
                                  {log.madeAnew, "the error log"}};
    for (const std::string& file : files_) {
        ownFiles.push_back({file, "one of the saved scans"});
    }
    outputs_ = outputsOf(options_);
    failed_ = !keepWritable(outputs_, ownFiles, userInterface_) || failed_;
    printsNothing_ =
        options_.quiet || std::any_of(outputs_.begin(), outputs_.end(), [](const Output& output) {
            return output.file == platform::standardOutput;
        });
}

void HistoryRun::show(const modExport::FolderHistory& history) {
    if (printsNothing_) {
        return;
    }
    const std::size_t width = platform::terminalWidth(platform::Stream::output);
    if (!platform::writeTo(platform::Stream::output,
                           forTerminal(history.folder) + "\n\n" + historyTable(history, width))) {
        const std::string reason = platform::lastWriteFailure();
        if (!reason.empty()) {
            fail("standard output", reason);
        }
    }
}

void HistoryRun::write(const modExport::FolderHistory& history) {
    for (const Output& output : outputs_) {
        userInterface_.setSubject(output.file);
        if (!output.agreed && !modExport::confirmOverwrite(userInterface_, output.file)) {
            failed_ = true;
            continue;
        }
        const std::int64_t messagesBefore = userInterface_.messageCount();
        modExport::exportHistory(*output.format, history, userInterface_, output.file);
        failed_ = failed_ || userInterface_.messageCount() != messagesBefore;
    }
}

void HistoryRun::fail(std::string_view subject, std::string_view reason) {
    failed_ = true;
    userInterface_.setSubject(subject);
    userInterface_.message(reason);
}
