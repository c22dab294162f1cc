#include "export/databaseFile.h"

#include <algorithm>
#include <array>
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
struct Leftover {
    const char* ending;
    std::string_view start; // of its content
};
constexpr std::array<Leftover, 4> leftovers{{
    {"-wal", "\x37\x7f\x06\x82"},
    {"-wal", "\x37\x7f\x06\x83"},
    {"-shm", "\x18\xe2\x2d"},
    {"-journal", "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7"},
}};

// Those of the engine, and those that are empty, which it leaves too. Throws if a file of anybody else's has
// such a name.
std::vector<std::string> leftoversBeside(std::string_view path) {
    const std::string file = platform::resolveLinks(path);
    std::vector<std::string> found;
    for (const char* ending : {"-wal", "-shm", "-journal"}) {
        const std::string name = file + ending;
        if (!platform::somethingExists(name)) {
            continue;
        }
        const std::string start = platform::fileExists(name) ? platform::readStart(name, 8) : "no file";
        const bool isTheEngines =
            start.empty() || std::any_of(leftovers.begin(), leftovers.end(), [&](const Leftover& each) {
                return std::string_view(each.ending) == ending && start.starts_with(each.start);
            });
        if (!isTheEngines) {
            throw RuntimeError::about(errorNumber::fileAlreadyExists,
                                      platform::displayPath(name) + " is in the way. Choose another name");
        }
        found.push_back(name);
    }
    return found;
}

} // namespace

std::optional<RuntimeError> modExport::copyDatabase(WorkingDatabase& working, std::string_view path,
                                                    clsUserInterface& userInterface) {
    const ShownProgress progress(userInterface, 0);
    std::optional<RuntimeError> failure;
    working.close();
    try {
        const std::vector<std::string> beside = leftoversBeside(path);
        runInBackground(userInterface, [&] { platform::copyFile(working.path(), path); });
        std::for_each(beside.begin(), beside.end(), platform::deleteFile);
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
