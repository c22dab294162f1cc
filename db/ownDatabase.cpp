#include "db/ownDatabase.h"

#include "db/connection.h"
#include "platform/files.h"

namespace {

bool isMissingOrEmpty(std::string_view path) {
    return !platform::somethingExists(path) || (platform::fileExists(path) && platform::fileSize(path) == 0);
}

} // namespace

bool modDatabase::looksLikeOwnDatabase(std::string_view path) {
    using namespace std::string_view_literals;
    constexpr std::string_view start = "SQLite format 3\0"sv;
    constexpr std::size_t versions = 18;                  // of the format, for writing and reading
    constexpr std::string_view withoutLog = "\x01\x01"sv; // others cannot be opened without creating files
    if (isMissingOrEmpty(path)) {
        return true;
    }
    try {
        const std::string header = platform::readStart(path, versions + withoutLog.size());
        return header.starts_with(start) && header.ends_with(withoutLog) &&
               header.size() == versions + withoutLog.size();
    } catch (const RuntimeError&) { // no file, or not readable
        return false;
    }
}

bool modDatabase::isOwnDatabase(std::string_view path) {
    if (isMissingOrEmpty(path)) {
        return true;
    }
    try {
        Connection file(path, OpenMode::schema);
        Statement columns = file.prepare(
            "select count(*) from pragma_table_info('details') where name in ('fullPath', 'drive', "
            "'parentFolder', 'isFolder', 'scanCompleteTime') and exists (select 1 from sqlite_master where "
            "type = 'table' and name = 'details')");
        return columns.step() && columns.number(0) == 5;
    } catch (const RuntimeError&) { // not a database, or not readable
        return false;
    }
}
