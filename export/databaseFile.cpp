#include "export/databaseFile.h"

#include <string>
#include <utility>
#include <vector>

#include "base/clsUserInterface.h"
#include "base/dateFormat.h"
#include "base/runInBackground.h"
#include "db/copyRows.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"

namespace {

// The rows and tree nodes of the source, and the tree nodes at hand.
void fill(Database& target, Database& source, const WorkingDatabase& working) {
    target.BeginTrans();
    const std::vector<std::string> indexes = target.TakeIndexes("details");
    copyRows(source, target, "details");
    copyRows(working.database(), target, "nodes");
    copyRows(source, target, "nodes");
    target.RestoreIndexes(indexes);
    target.CommitTrans();
}

// Files that the engine left beside an earlier database of that name would be taken for those of the new one.
void removeLeftovers(std::string_view path) {
    const std::string file = platform::resolveLinks(path);
    for (const char* ending : {"-wal", "-shm", "-journal"}) {
        if (platform::somethingExists(file + ending)) {
            platform::deleteFile(file + ending);
        }
    }
}

} // namespace

std::optional<RuntimeError> modExport::copyDatabase(WorkingDatabase& working, std::string_view path,
                                                    clsUserInterface& userInterface) {
    const ShownProgress progress(userInterface, 0);
    std::optional<RuntimeError> failure;
    working.close();
    try {
        runInBackground(userInterface, [&] { platform::copyFile(working.path(), path); });
        removeLeftovers(path);
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

void modExport::loadDatabase(WorkingDatabase& working, std::string_view path,
                             clsUserInterface& userInterface) {
    const std::string file = platform::toInternal(path);
    if (platform::isSameFile(file, working.path())) {
        throw RuntimeError(databaseError::inUse, "This is the working database; choose another file: " +
                                                     platform::displayPath(file));
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

std::string modExport::savedScanText(std::string_view path) {
    const std::string file = platform::toInternal(path);
    const platform::EntryFacts facts =
        platform::entryFacts(platform::toInternal(platform::resolveLinks(path)));
    return "Saved scan: " + platform::displayPath(file) + " (" +
           modFormat::formatDate(platform::localTime(facts.modified), modFormat::storedDatePicture) + ")";
}
