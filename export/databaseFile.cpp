#include "export/databaseFile.h"

#include <string>
#include <vector>

#include "base/clsUserInterface.h"
#include "base/dateFormat.h"
#include "base/runInBackground.h"
#include "db/copyRows.h"
#include "db/ownDatabase.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace {

// A view or a virtual table of the same name could run anything when it is read.
void requireTable(Database& source, std::string_view table) {
    const auto rows = source.OpenRecordset("select type, name, sql from sqlite_master");
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const std::string_view definition = rows->Fields("sql").text();
        constexpr std::string_view plainTable = "create table";
        if (platform::equalIgnoringAsciiCase(rows->Fields("name").text(), table) &&
            rows->Fields("type").text() == "table" &&
            platform::equalIgnoringAsciiCase(definition.substr(0, plainTable.size()), plainTable)) {
            return;
        }
    }
    throw RuntimeError(databaseError::noSuchTable, "The database has no table '" + std::string(table) +
                                                       "': " + platform::displayPath(source.Name()));
}

void appendTable(Database& source, const WorkingDatabase& working, std::string_view table) {
    requireTable(source, table);
    copyRows(source, working.database(), table);
}

void replaceDetails(Database& source, WorkingDatabase& working, clsUserInterface& userInterface) {
    Database& database = working.database();
    try {
        const LongWork answering(database, [&] { userInterface.yieldToEvents(); });
        database.BeginTrans();
        const std::vector<std::string> indexes = database.TakeIndexes("details");
        database.Execute("delete * from details");
        appendTable(source, working, "details");
        database.RestoreIndexes(indexes);
        database.CommitTrans();
    } catch (const RuntimeError&) {
        working.startAnew(); // without a journal, nothing from a failed transaction is reliable
        throw;
    }
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

} // namespace

std::optional<RuntimeError> modExport::copyDatabase(WorkingDatabase& working, std::string_view path,
                                                    clsUserInterface& userInterface) {
    const ShownProgress progress(userInterface, 0);
    std::optional<RuntimeError> failure;
    working.close();
    try {
        runInBackground(userInterface, [&] { copyMarked(working.path(), path); });
        modDatabase::removeEngineFiles(platform::resolveLinks(path));
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
    requireTable(*source, "details"); // before the existing rows are deleted
    const ShownProgress progress(userInterface, 0);
    const LongWork answering(*source, [&] { userInterface.yieldToEvents(); });
    replaceDetails(*source, working, userInterface);
    SmallTransaction transaction(working.database());
    appendTable(*source, working, "nodes");
    transaction.commit();
}

std::string modExport::savedScanText(std::string_view path) {
    const std::string file = platform::toInternal(path);
    const platform::EntryFacts facts =
        platform::entryFacts(platform::toInternal(platform::resolveLinks(path)));
    return "Saved scan: " + platform::displayPath(file) + " (" +
           modFormat::formatDate(platform::localTime(facts.modified), modFormat::storedDatePicture) + ")";
}
