#include "console/consoleRun.h"

#include <utility>

#include "base/applicationFolder.h"
#include "base/errorLog.h"
#include "base/errorLogFiles.h"
#include "base/errorTrap.h"
#include "base/excludes.h"
#include "base/modGlobal.h"
#include "base/terminalText.h"
#include "collect/serverUrl.h"
#include "console/figureTables.h"
#include "console/foundTable.h"
#include "export/clsExport.h"
#include "export/databaseFile.h"
#include "export/listFile.h"
#include "export/overviewPage.h"
#include "export/reportFrame.h"
#include "export/targetFile.h"
#include "platform/answering.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/terminal.h"
#include "scan/modProcessFiles.h"
#include "scan/savedScan.h"
#include "views/folderFigures.h"
#include "views/folderSummary.h"

namespace {

constexpr int statusDone = 0;
constexpr int statusFailed = 1;
constexpr int statusCancelled = 130;

} // namespace

ConsoleRun::ConsoleRun(ConsoleOptions options)
    : options_(std::move(options)), userInterface_(options_.force, options_.quiet) {}

int ConsoleRun::run() {
    platform::ignoreBrokenPipes();
    if (!start()) {
        return statusFailed;
    }
    checkOutputs();
    failed_ = !keeping_.check() || failed_;
    failed_ = !collecting_.check() || failed_;
    const bool nothingToDo =
        options_.quiet && failed_ && outputs_.empty() && !keeping_.isWanted() && !collecting_.isWanted();
    if (nothingToDo) {
        return statusFailed;
    }
    if (!options_.compareFile.empty() && !openComparison()) {
        return cancelled_ ? statusCancelled : statusFailed;
    }
    if (options_.loadFile.empty()) {
        scanPaths();
        writeOutputs();
        keepScans();
        collectScans();
    } else if (!collectFile() && loadSaved()) {
        scanned_ = true;
        showLoaded();
        writeOutputs();
        collectScans();
    }
    if (cancelled_) {
        return statusCancelled;
    }
    return failed_ || outputLost_ ? statusFailed : statusDone;
}

bool ConsoleRun::start() {
    try {
        applicationFolder_ = findApplicationFolder(options_.applicationFolder);
        modGlobal::setErrorLog(&userInterface_,
                               [this] { return modGlobal::errorLogFiles(store_, applicationFolder_); });
        settings_.load(store_, applicationFolder_);
        if (options_.owners) {
            settings_.setGetOwnerInfo(*options_.owners);
        }
        takeExcludes();
        if (options_.readers) {
            settings_.setReaders(*options_.readers);
        }
        if (options_.fullSizes) {
            settings_.setFullFileSizes(true);
        }
        if (options_.exact) {
            settings_.setExact(true);
        }
        if (options_.onDisk) {
            settings_.setOnDisk(*options_.onDisk);
        }
        if (options_.find) {
            options_.find->tellsCaseOfExtensions = settings_.caseSensitiveExt();
        }
        std::vector<std::string> keep;
        for (const std::string& file : {options_.loadFile, options_.compareFile}) {
            if (!file.empty() && !isServerUrl(file)) {
                keep.push_back(platform::toInternal(file));
            }
        }
        working_ =
            modDatabase::prepareDatabase(applicationFolder_, settings_.databasePath(), userInterface_, keep);
        working_.setOnDisk(settings_.onDisk());
        return true;
    } catch (const RuntimeError& error) {
        modGlobal::logCurrentException("spannory-scan", "start", true);
        fail({}, error.what());
        return false;
    }
}

// Beside those of the settings.
void ConsoleRun::takeExcludes() {
    constexpr std::uint64_t largestFile = 16U << 20;
    Excludes excludes = *settings_.excludes();
    for (const std::string& pattern : options_.excludes) {
        excludes.add(pattern);
    }
    for (const std::string& file : options_.excludeFiles) {
        excludes.addLines(platform::readFile(file, largestFile));
    }
    settings_.setExcludes(std::move(excludes));
}

void ConsoleRun::scanPaths() {
    clsSearch search(working_, settings_);
    userInterface_.watch(&search);
    const platform::InterruptionWatch watch;
    for (const std::string& typed : options_.paths) {
        if (lost_) {
            fail(typed, "not scanned, because the scan before it could not be stored");
        } else if (!cancelled_) {
            scanPath(search, typed);
        }
    }
    userInterface_.watch(nullptr);
    gaps_ = std::move(search.gaps);
}

// The internal path of an existing folder; empty, after a message, if there is no such folder.
std::string ConsoleRun::findFolder(const std::string& typed) {
    try {
        std::string path = modGlobal::addBackslash(platform::toInternal(typed));
        if (!platform::answers(path, [] { return !platform::wasInterrupted(); })) {
            cancelled_ = platform::wasInterrupted();
            fail(typed, cancelled_ ? "The scan was cancelled." : platform::notAnswering);
            return {};
        }
        if (!path.empty() && platform::folderExists(path)) {
            return platform::recordedPath(path);
        }
        const std::string reason = platform::whyHidden(path);
        fail(typed, reason.empty() ? "Folder not found" : reason);
    } catch (const RuntimeError& error) {
        fail(typed, error.what());
    }
    return {};
}

void ConsoleRun::scanPath(clsSearch& search, const std::string& typed) {
    userInterface_.setSubject(typed);
    const std::string path = findFolder(typed);
    if (path.empty()) {
        return;
    }
    const std::int64_t messagesBefore = userInterface_.messageCount();
    const auto result = modProcessFiles::processMain(path, {search, settings_, userInterface_});
    failed_ = failed_ || userInterface_.messageCount() != messagesBefore;
    cancelled_ = result.cancelled || platform::wasInterrupted();
    lost_ = !result.stored;
    if (!lost_) {
        makeIndexes(search);
    }
    if (lost_) {
        return;
    }
    scanned_ = true;
    shown_.push_back(path);
    tellWhatIsMissing(search, path, result);
    showFolder(path, typed, modProcessFiles::finishedText(result.seconds));
    if (options_.unreadable) {
        print(gapTable(search.gaps, path) + "\n");
    }
}

// If nothing is going to be read, nobody needs them.
void ConsoleRun::makeIndexes(clsSearch& search) {
    if (!options_.quiet || !outputs_.empty() || keeping_.isWanted()) {
        lost_ = !modGlobal::trapped("spannory-scan", "makeIndexes", [&] {
            search.makeIndexes();
            return true;
        });
        failed_ = failed_ || lost_;
    }
}

// What makes the figures of a scanned folder differ from the truth.
void ConsoleRun::tellWhatIsMissing(const clsSearch& search, std::string_view path,
                                   const modProcessFiles::ScanResult& result) {
    if (result.cancelled) {
        userInterface_.message("The scan was cancelled. The figures are incomplete.");
    }
    const FigureGaps::Skipped* const itself = search.gaps.find(path);
    if (itself != nullptr && itself->kind == FigureGaps::Kind::unreadable) {
        failed_ = true;
        userInterface_.message(itself->reason);
    } else if (const Unreadable unreadable = search.gaps.unreadableIn(path); unreadable.isAny()) {
        userInterface_.message(unreadableText(unreadable) +
                               (options_.unreadable ? "" : " To list them, use --unreadable."));
    }
    if (result.excluded > 0) {
        userInterface_.message(modExcludes::leftOutText(result.excluded));
    }
    if (result.wrappedFiles > 0 && (!settings_.onDisk() || !options_.databaseFile.empty())) {
        userInterface_.message(modProcessFiles::wrappedText(result.wrappedFiles) +
                               " To count them in full, use --exact.");
    }
}

bool ConsoleRun::loadSaved() {
    try {
        loading_.load(working_);
        if (settings_.onDisk() && working_.lacksSizesOnDisk()) {
            userInterface_.setSubject(options_.loadFile);
            userInterface_.message(modFigures::lackingText);
        }
        return true;
    } catch (const RuntimeError& error) {
        cancelled_ = platform::wasInterrupted();
        if (!cancelled_) {
            modGlobal::logCurrentException("spannory-scan", "load", true);
            fail({}, error.what());
        }
        return false;
    }
}

void ConsoleRun::showLoaded() {
    const bool shown = modGlobal::trapped("spannory-scan", "showLoaded", [&] {
        if (!options_.quiet) {
            print(forTerminal(loading_.title(working_)) + "\n\n");
        }
        if (options_.paths.empty() && (!options_.quiet || comparison_)) {
            for (const std::string& key : modSavedScan::topFolders(working_.database())) {
                showFolder(key, {}, {});
            }
        }
        for (const std::string& typed : options_.paths) {
            const std::string key = modSavedScan::findFolder(working_.database(), typed);
            if (key.empty()) {
                fail(typed, "Folder not found in " + options_.loadFile);
            } else {
                shown_.push_back(key);
                showFolder(key, typed, {});
            }
        }
        return true;
    });
    failed_ = failed_ || !shown;
}

// Before the scan, so that nobody waits for one that cannot be compared.
bool ConsoleRun::openComparison() {
    try {
        userInterface_.setSubject(options_.compareFile);
        comparison_ = std::make_unique<ConsoleComparison>(options_, working_, userInterface_);
        cancelled_ = comparison_->isCancelled();
        return !cancelled_;
    } catch (const RuntimeError& error) {
        modGlobal::logCurrentException("spannory-scan", "compare", true);
        fail({}, error.what());
        return false;
    }
}

void ConsoleRun::compareFolder(std::string_view key, const std::string& typed, std::string_view finished) {
    userInterface_.setSubject(typed);
    try {
        const auto text = comparison_->compare(key, typed);
        cancelled_ = !text;
        if (!options_.quiet && text) {
            print(*text + std::string(finished) + (finished.empty() ? "\n" : "\n\n"));
        }
    } catch (const RuntimeError& error) {
        modGlobal::logCurrentException("spannory-scan", "compare", true);
        fail(typed, error.what());
    }
}

void ConsoleRun::showFolder(std::string_view key, const std::string& typed, std::string_view finished) {
    if (comparison_ && !cancelled_ && (!options_.quiet || !outputs_.empty())) {
        compareFolder(key, typed, finished);
        return;
    }
    if (options_.quiet || comparison_) {
        return;
    }
    const bool shown = modGlobal::trapped("spannory-scan", "showFolder", [&] {
        std::string text = forTerminal(platform::displayPath(key)) + "\n\n" + figuresOf(key);
        if (!finished.empty()) {
            text.append(finished).append("\n");
        }
        print(text + "\n");
        return true;
    });
    failed_ = failed_ || !shown;
}

std::string ConsoleRun::figuresOf(std::string_view key) const {
    Database& database = working_.database();
    const auto top = static_cast<std::size_t>(options_.top);
    if (options_.find) {
        modFind::FindQuery query(*options_.find, {}, key, top == 0 ? modFind::FindQuery::all : top);
        query.run(database);
        return foundTable(query);
    }
    const std::size_t width = platform::terminalWidth(platform::Stream::output);
    std::string text = barChart(modFigures::chartEntries(database, key), top, width) + "\n";
    text += groupTable("Extension", modFigures::fileTypes(database, key), top) + "\n";
    text += groupTable("Owner", modFigures::owners(database, key), top) + "\n";
    text += modFigures::summaryText(modFigures::summary(database, key)) + "\n\n";
    return text + modFigures::itemsText(database) + "\n";
}

// Before the scan, so that nobody waits for one that cannot be written.
void ConsoleRun::checkOutputs() {
    std::vector<OwnFile> ownFiles =
        programsFiles(applicationFolder_, modGlobal::errorLogFiles(store_, applicationFolder_));
    ownFiles.push_back({working_.path(), "the working database"});
    ownFiles.push_back({working_.path() + ".lock", "the lock of the working database"});
    ownFiles.push_back({findDataFile(applicationFolder_, "001.dat"), "the template"});
    outputs_ = outputsOf(options_);
    if (!keepWritable(outputs_, ownFiles, userInterface_)) {
        failed_ = true;
    }
    for (const Output& output : outputs_) {
        outputTaken_ = outputTaken_ || output.file == platform::standardOutput;
    }
}

void ConsoleRun::writeOutputs() {
    for (const Output& output : outputs_) {
        if (!mayWrite(output)) {
            continue;
        }
        if (output.isOverview) {
            writeOverview(output.file);
        } else if (output.format) {
            writeReport(*output.format, output.file);
        } else {
            writeDatabase(output.file);
        }
    }
}

// Whether the scan is worth writing there; if not, a message says why.
bool ConsoleRun::mayWrite(const Output& output) {
    userInterface_.setSubject(output.file);
    const bool replaces = platform::fileExists(output.file) && !platform::isStream(output.file);
    std::string_view reason;
    if (lost_) {
        reason = "not written, because the scan could not be stored";
    } else if (!scanned_) {
        reason = "not written, because nothing was scanned";
    } else if (output.format && comparison_ && !comparison_->hasCompared()) {
        reason = "not written, because nothing was compared";
    } else if (cancelled_ && replaces && !options_.force) {
        reason = "not replaced, because the scan was cancelled (use --force)";
    }
    if (!reason.empty()) {
        fail(output.file, reason);
        return false;
    }
    const bool agreed = output.agreed || modExport::confirmOverwrite(userInterface_, output.file);
    failed_ = failed_ || !agreed;
    return agreed;
}

void ConsoleRun::writeReport(modExport::ReportFormat format, const std::string& file) {
    if (comparison_) {
        const std::int64_t messagesBefore = userInterface_.messageCount();
        comparison_->write(format, file);
        failed_ = failed_ || userInterface_.messageCount() != messagesBefore;
        return;
    }
    if (options_.find && format != modExport::ReportFormat::xml) {
        writeFound(format, file);
        return;
    }
    clsExport exportOptions;
    exportOptions.detail =
        options_.summary || modExport::isSummaryOnly(format) ? clsExport::summary : clsExport::detailed;
    const modExport::ReportContext context{working_.database(), userInterface_, settings_, exportOptions,
                                           modSavedScan::scannedFolders};
    const bool written = modExport::exportReportFile(format, context, file);
    failed_ = failed_ || !written;
}

// Of a saved scan without a path, what was scanned.
void ConsoleRun::writeOverview(const std::string& file) {
    const bool written = modGlobal::trapped("spannory-scan", "writeOverview", [&] {
        modExport::OverviewContext context{working_.database(), userInterface_, gaps_, *settings_.excludes(),
                                           shown_};
        if (options_.paths.empty()) {
            context.folders =
                modSavedScan::scannedFolders(working_.database(), modExport::mostOverviewFolders + 1);
        }
        return modExport::exportOverview(context, file);
    });
    failed_ = failed_ || !written;
}

// All that was found in all folders, as a report has the rows of all.
void ConsoleRun::writeFound(modExport::ReportFormat format, const std::string& file) {
    const std::int64_t messagesBefore = userInterface_.messageCount();
    modGlobal::trapped("spannory-scan", "writeFound", [&] {
        modFind::FindQuery query(*options_.find, {}, {}, modFind::FindQuery::all);
        query.run(working_.database());
        const FoundTable table(query.items(), format != modExport::ReportFormat::excel);
        modExport::exportListFile(
            format, table,
            "Find - " + modFind::foundText(query.conditions().kind, query.count(), query.size()),
            userInterface_, file, working_.holdsLoadedRows());
    });
    failed_ = failed_ || userInterface_.messageCount() != messagesBefore;
}

void ConsoleRun::writeDatabase(const std::string& file) {
    try {
        const auto failure = options_.summary
                                 ? modExport::copyPart(working_, {{}, true}, file, userInterface_)
                                 : modExport::copyDatabase(working_, file, userInterface_);
        if (failure) {
            fail({}, failure->what());
        }
    } catch (const RuntimeError& error) {
        fail({}, error.what());
    }
}

// An incomplete scan would look like a small one, and push out another.
void ConsoleRun::keepScans() {
    if (!keeping_.isWanted() || shown_.empty()) {
        return;
    }
    if (lost_ || cancelled_) {
        failed_ = true;
        keeping_.refuse(lost_ ? "no scan was kept, because it could not be stored"
                              : "no scan was kept, because it was cancelled");
        return;
    }
    std::string lines;
    failed_ = !keeping_.keep(working_, shown_, lines) || failed_;
    if (!options_.quiet) {
        print(lines);
    }
}

void ConsoleRun::print(const std::string& text) {
    if (!outputTaken_ && !outputLost_ && !platform::writeTo(platform::Stream::output, text)) {
        const std::string reason = platform::lastWriteFailure();
        outputLost_ = true;
        if (!reason.empty()) {
            fail("standard output", reason);
        }
    }
}

void ConsoleRun::fail(std::string_view subject, std::string_view reason) {
    failed_ = true;
    userInterface_.setSubject(subject);
    userInterface_.message(reason);
}
