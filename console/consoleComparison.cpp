#include "console/consoleComparison.h"

#include <algorithm>
#include <utility>

#include "base/terminalText.h"
#include "console/changeTables.h"
#include "db/folderRows.h"
#include "export/changesReport.h"
#include "export/databaseFile.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"
#include "platform/terminal.h"
#include "scan/savedScan.h"
#include "views/comparison.h"

namespace {

bool goesOn() {
    return !platform::wasInterrupted();
}

} // namespace

ConsoleComparison::ConsoleComparison(const ConsoleOptions& options, WorkingDatabase& working,
                                     ConsoleInterface& userInterface)
    : options_(options), working_(working), userInterface_(userInterface) {
    const platform::InterruptionWatch watch;
    earlier_ = std::make_unique<EarlierScan>(working, options.compareFile, userInterface, goesOn);
    cancelled_ = !earlier_->isComplete();
    savedScan_ = modExport::savedScanText(options.compareFile, earlier_->scans());
    modChanges::makeTable(earlier_->database());
}

std::optional<std::string> ConsoleComparison::compare(std::string_view key, std::string_view typed) {
    const platform::InterruptionWatch watch;
    const modChanges::Request request{std::string(key), folderBefore(key, typed),
                                      static_cast<std::int64_t>(compared_.size()) + 1, options_.keepsSame};
    const modChanges::Sources sources{working_.database(), earlier_->database(), userInterface_, goesOn};
    const modChanges::Result result = modChanges::compare(sources, request);
    cancelled_ = !result.complete;
    if (cancelled_) {
        return std::nullopt;
    }
    compared_.push_back(platform::displayPath(key));
    tellWhatDiffers(request.folder, request.folderBefore, result.oneLacksFiles);
    std::string text =
        forTerminal(compared_.back() + ", compared with " + platform::displayPath(request.folderBefore)) +
        "\n" + forTerminal(savedScan_) + "\n\n";
    return text + changeTables(earlier_->database(), request, result, static_cast<std::size_t>(options_.top));
}

// A folder has the same key as before, unless the drives are others or the saved scan is from another
// machine.
std::string ConsoleComparison::folderBefore(std::string_view key, std::string_view typed) const {
    Database& database = earlier_->database();
    const bool isAnother = !options_.compareFolder.empty();
    if (!isAnother && modFolderRows::find(database, key).isThere()) {
        return std::string(key);
    }
    const std::string path = isAnother       ? options_.compareFolder
                             : typed.empty() ? platform::displayPath(key)
                                             : std::string(typed);
    std::string found = modSavedScan::findFolder(database, path);
    if (found.empty()) {
        throw RuntimeError(errorNumber::pathNotFound,
                           (isAnother ? "Folder " + path + " not found in " : "Folder not found in ") +
                               options_.compareFile);
    }
    return found;
}

void ConsoleComparison::tellWhatDiffers(const std::string& key, const std::string& before,
                                        bool oneLacksFiles) {
    const std::vector<modScans::Scan> scansNow = modScans::all(working_.database());
    std::string remark = modChanges::remark(modScans::within(earlier_->scans(), before),
                                            modScans::within(scansNow, key), oneLacksFiles);
    if (working_.database().countsSizeOnDisk()) {
        userInterface_.message(modChanges::sizesRemark);
    }
    if (!remark.empty()) {
        userInterface_.message(remark);
        if (std::find(remarks_.begin(), remarks_.end(), remark) == remarks_.end()) {
            remarks_.push_back(std::move(remark));
        }
    }
}

std::string ConsoleComparison::caption() const {
    std::string text = "Spannory - Changes in ";
    for (std::size_t i = 0; i < compared_.size(); ++i) {
        text.append(i == 0 ? "" : ", ").append(compared_[i]);
    }
    text.append(". ").append(savedScan_);
    for (const std::string& remark : remarks_) {
        text.append(". ").append(remark);
    }
    return text;
}

void ConsoleComparison::write(modExport::ReportFormat format, const std::string& file) {
    modExport::exportChanges(format, earlier_->database(), options_.summary, caption(), userInterface_, file);
}
