#include "export/databaseFile.h"

#include <string>
#include <utility>
#include <vector>

#include "base/clsUserInterface.h"
#include "base/dateFormat.h"
#include "base/runInBackground.h"
#include "db/copyRows.h"
#include "db/folderRows.h"
#include "db/ownDatabase.h"
#include "db/scanRecords.h"
#include "platform/fileError.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"

namespace {

// Every scan has recorded a folder, but for those of empty drives. Only earlier versions have no such table.
void copyScans(Database& source, Database& target, std::int64_t rows) {
    constexpr std::int64_t mostEmptyDrives = 100;
    std::int64_t scans = 0;
    try {
        scans = copyRows(source, target, "scans");
    } catch (const RuntimeError& error) {
        if (error.number() != databaseError::noSuchTable) {
            throw;
        }
    }
    if (scans > rows + mostEmptyDrives) {
        throw platform::fileError(databaseError::damaged, "The database is damaged; it names too many scans",
                                  source.Name(), platform::NotDone::loaded);
    }
}

// The rows and tree nodes of the source, and the tree nodes at hand.
void fill(Database& target, Database& source, const WorkingDatabase& working) {
    target.BeginTrans();
    const std::vector<std::string> indexes = target.TakeIndexes("details");
    copyScans(source, target, copyRows(source, target, "details"));
    copyRows(working.database(), target, "nodes");
    copyRows(source, target, "nodes");
    target.RestoreIndexes(indexes);
    target.CommitTrans();
}

// Passes on a working database with the mark of a saved scan, so that no start takes it for scratch data.
class SavedScanSink final : public platform::Sink {
public:
    explicit SavedScanSink(platform::Sink& target) : target_(target) {}

    void write(std::string_view block) override {
        constexpr std::string_view from = modDatabase::workingMark;
        constexpr std::string_view to = modDatabase::savedScanMark;
        std::string start;
        if (isFirst_ && block.substr(0, modDatabase::markPosition + from.size()).ends_with(from)) {
            start.append(block.substr(0, modDatabase::markPosition)).append(to);
        }
        isFirst_ = false;
        target_.write(start);
        target_.write(block.substr(start.size()));
    }

private:
    platform::Sink& target_;
    bool isFirst_ = true;
};

void copyMarked(std::string_view working, std::string_view path) {
    platform::Replacement file(path, platform::NewFile::own);
    SavedScanSink marking(file);
    platform::copyFile(working, marking);
    file.commit();
}

// Of a closed database.
void save(std::string_view database, std::string_view path, clsUserInterface& userInterface) {
    const std::string target = platform::resolveLinks(path);
    static_cast<void>(modDatabase::engineFilesBeside(target)); // none of other people
    runInBackground(userInterface, [&] { copyMarked(database, path); });
    modDatabase::removeEngineFiles(target);
}

// In the order of the table, not of an index.
std::string conditionOf(const modExport::SavedPart& part) {
    std::string condition = part.foldersOnly ? "isFolder=1" : "";
    if (!part.folder.empty()) {
        condition.append(condition.empty() ? "" : " and ").append("((");
        condition.append(modFolderRows::itself(part.folder)).append(") or (");
        condition.append(modFolderRows::anywhereInOfTable(part.folder)).append("))");
    }
    return condition;
}

// Those of the folder and below. If only one above was scanned, as it has come to the folder.
void copyScansOf(Database& source, Database& target, std::string_view folder) {
    const std::vector<modScans::Scan> scans = modScans::all(source);
    const modScans::Scan* const covering = modScans::ofFolder(scans, folder);
    if (covering != nullptr && !modScans::isAtOrBelow(covering->path, folder)) {
        modScans::Scan scan = *covering;
        scan.path = folder;
        modScans::append(target, scan);
    }
    for (const modScans::Scan& scan : scans) {
        if (modScans::isAtOrBelow(scan.path, folder)) {
            modScans::append(target, scan);
        }
    }
}

void fillWithPart(Database& target, Database& source, const modExport::SavedPart& part) {
    target.BeginTrans();
    const std::vector<std::string> indexes = target.TakeIndexes("details");
    copyOwnRows(source, target, conditionOf(part));
    if (part.folder.empty()) {
        copyRows(source, target, "scans");
    } else {
        copyScansOf(source, target, part.folder);
    }
    target.RestoreIndexes(indexes);
    target.CommitTrans();
}

} // namespace

std::optional<RuntimeError> modExport::copyDatabase(WorkingDatabase& working, std::string_view path,
                                                    clsUserInterface& userInterface) {
    const ShownProgress progress(userInterface, 0);
    std::optional<RuntimeError> failure;
    working.close();
    try {
        save(working.path(), path, userInterface);
    } catch (const RuntimeError& error) {
        failure = error;
    }
    try {
        working.reopen();
    } catch (const RuntimeError&) { // someone has removed the file
        working.startAnew();
        throw;
    }
    return failure;
}

std::optional<RuntimeError> modExport::copyPart(const WorkingDatabase& working, const SavedPart& part,
                                                std::string_view path, clsUserInterface& userInterface) {
    try {
        const ShownProgress progress(userInterface, 0);
        const auto copy = working.prepareSuccessor();
        const LongWork reading(working.database(), [&] { userInterface.yieldToEvents(); });
        fillWithPart(copy->database(), working.database(), part);
        save(copy->finish(), path, userInterface);
        return {};
    } catch (const RuntimeError& error) {
        return error;
    }
}

void modExport::loadDatabase(WorkingDatabase& working, std::string_view path,
                             clsUserInterface& userInterface) {
    const std::string file = platform::toInternal(path);
    if (platform::isSameFile(file, working.path())) {
        throw platform::fileError(databaseError::inUse, "This is the working database", file,
                                  platform::NotDone::loaded);
    }
    if (!working.isOpen()) {
        working.startAnew(); // it has no content to lose
    }
    const auto source = DBEngine::OpenDatabase(file, OpenMode::readOnly);
    auto successor = working.prepareSuccessor();
    {
        const ShownProgress progress(userInterface, 0);
        const auto yield = [&] { userInterface.yieldToEvents(); };
        const LongWork reading(*source, yield);
        const LongWork writing(successor->database(), yield);
        fill(successor->database(), *source, working);
    }
    working.replaceBy(std::move(successor));
}

platform::Seconds modExport::savedScanMoment(std::string_view path,
                                             const std::vector<modScans::Scan>& scans) {
    const platform::EntryFacts facts =
        platform::entryFacts(platform::toInternal(platform::resolveLinks(path)));
    return modScans::lastFinished(scans).value_or(facts.modified);
}

std::string modExport::savedScanText(std::string_view path, const std::vector<modScans::Scan>& scans) {
    const std::string file = platform::toInternal(path);
    const platform::Seconds moment = savedScanMoment(path, scans);
    return "Saved scan: " + platform::displayPath(file) + " (" +
           modFormat::formatDate(platform::localTime(moment), modFormat::storedDatePicture) + ")";
}
