#include "db/ownDatabase.h"

#include <string>

#include "db/connection.h"
#include "platform/files.h"

modDatabase::FileKind modDatabase::kindOf(std::string_view path) {
    using namespace std::string_view_literals;
    constexpr std::string_view start = "SQLite format 3\0"sv;
    constexpr std::size_t versionPosition = 18;           // of the format, for writing and reading
    constexpr std::string_view withoutLog = "\x01\x01"sv; // others cannot be opened without creating files
    constexpr std::string_view noMark = "\0\0\0\0"sv;
    if (platform::isLink(path)) {
        return FileKind::link;
    }
    if (!platform::somethingExists(path) || (platform::fileExists(path) && platform::fileSize(path) == 0)) {
        return FileKind::replaceable;
    }
    try {
        const std::string header = platform::readStart(path, markPosition + noMark.size());
        if (header.size() < markPosition + noMark.size() || !header.starts_with(start) ||
            header.compare(versionPosition, withoutLog.size(), withoutLog) != 0) {
            return FileKind::others;
        }
        const std::string_view mark = std::string_view(header).substr(markPosition);
        return mark == workingMark     ? FileKind::replaceable
               : mark == savedScanMark ? FileKind::savedScan
               : mark == noMark        ? FileKind::unmarked
                                       : FileKind::others;
    } catch (const RuntimeError&) { // no file, or not readable
        return FileKind::others;
    }
}

bool modDatabase::hasOwnTable(std::string_view path) {
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

void modDatabase::removeEngineFiles(std::string_view path) {
    for (const char* ending : {"-wal", "-shm", "-journal"}) {
        const std::string file = std::string(path) + ending;
        if (platform::somethingExists(file)) {
            platform::deleteFile(file);
        }
    }
}
