#include "export/databaseFile.h"

#include <string>
#include <vector>

#include "platform/paths.h"
#include "platform/text.h"

namespace {

// A view or a virtual table of the same name could run anything while it is read.
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
    throw RuntimeError(databaseError::noSuchTable, "The database has no table '" + std::string(table) + "'");
}

void appendTable(Database& source, const WorkingDatabase& working, const std::string& table) {
    requireTable(source, table);
    source.Execute("Insert into " + table + " in '" + working.path() + "' select * from " + table);
}

void replaceDetails(Database& source, WorkingDatabase& working) {
    Database& database = working.database();
    try {
        database.BeginTrans();
        const std::vector<std::string> indexes = database.TakeIndexes("details");
        database.Execute("delete * from details");
        appendTable(source, working, "details");
        database.RestoreIndexes(indexes);
        database.CommitTrans();
    } catch (const RuntimeError&) {
        working.startAnew(); // without a journal nothing of a failed transaction can be relied on
        throw;
    }
}

} // namespace

std::optional<RuntimeError> modExport::copyDatabase(WorkingDatabase& working, std::string_view path) {
    std::optional<RuntimeError> failure;
    working.close();
    try {
        platform::copyFile(working.path(), path);
    } catch (const RuntimeError& error) {
        failure = error;
    }
    working.reopen();
    return failure;
}

void modExport::loadDatabase(WorkingDatabase& working, std::string_view path) {
    const std::string file = platform::toInternal(path);
    try {
        const auto source = DBEngine::OpenDatabase(file, OpenMode::readOnly);
        requireTable(*source, "details"); // before the rows there are given up
        replaceDetails(*source, working);
        appendTable(*source, working, "nodes");
    } catch (const RuntimeError& error) {
        const std::string shown = platform::displayPath(file);
        const std::string description = error.what();
        throw RuntimeError(error.number(), description.find(shown) == std::string::npos
                                               ? description + ": " + shown
                                               : description);
    }
}
