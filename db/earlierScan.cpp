#include "db/earlierScan.h"

#include <array>

#include "base/clsUserInterface.h"
#include "db/copyRows.h"
#include "platform/fileError.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace {

constexpr std::array<std::string_view, 8> columns{"drive", "parentFolder", "fileName", "isFolder",
                                                  "size",  "dateModified", "owner",    "extension"};

} // namespace

EarlierScan::EarlierScan(WorkingDatabase& working, std::string_view file, clsUserInterface& userInterface,
                         const std::function<bool()>& goesOn) {
    const std::string path = platform::toInternal(file);
    if (platform::isSameFile(path, working.path())) {
        throw platform::fileError(databaseError::inUse, "This is the working database", path,
                                  platform::NotDone::loaded);
    }
    const auto source = DBEngine::OpenDatabase(path, OpenMode::readOnly);
    companion_ = working.prepareCompanion();
    const ShownProgress progress(userInterface, 0);
    const auto yield = [&] { userInterface.yieldToEvents(); };
    const LongWork reading(*source, yield);
    const LongWork writing(database(), yield);
    scans_ = modScans::stored(*source);
    database().BeginTrans();
    const std::vector<std::string> indexes = database().TakeIndexes("details");
    const auto goesOnNow = [&] { return complete_ = !goesOn || goesOn(); };
    copyColumns(*source, database(), "details", columns, goesOnNow);
    if (complete_) {
        database().RestoreIndexes(indexes);
    }
    database().CommitTrans();
    database().setHoldsLoadedRows(true);
}
