#include "db/ownDatabase.h"

#include <algorithm>
#include <array>

#include "db/connection.h"
#include "platform/files.h"
#include "platform/ownership.h"
#include "platform/paths.h"

namespace {

struct EngineFile {
    std::string_view ending;
    std::string_view start; // of its content
};
constexpr std::array<EngineFile, 4> engineFiles{{
    {"-wal", "\x37\x7f\x06\x82"},
    {"-wal", "\x37\x7f\x06\x83"},
    {"-shm", "\x18\xe2\x2d"},
    {"-journal", "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7"},
}};

// The engine also leaves empty ones.
bool isEngineFile(const std::string& file, std::string_view ending) {
    constexpr std::size_t longestStart = 8;
    if (!platform::fileExists(file)) {
        return false;
    }
    const std::string start = platform::readStart(file, longestStart);
    return start.empty() || std::any_of(engineFiles.begin(), engineFiles.end(), [&](const EngineFile& each) {
               return each.ending == ending && start.starts_with(each.start);
           });
}

} // namespace

modDatabase::FileKind modDatabase::kindOf(std::string_view path) {
    using namespace std::string_view_literals;
    constexpr std::size_t versionPosition = 18;           // of the format, for writing and reading
    constexpr std::string_view withoutLog = "\x01\x01"sv; // others cannot be opened without creating files
    constexpr std::string_view noMark = "\0\0\0\0"sv;
    if (platform::isLink(path)) {
        return FileKind::link;
    }
    if (platform::isStrangersFile(path)) {
        return FileKind::others;
    }
    if (!platform::somethingExists(path) || (platform::fileExists(path) && platform::fileSize(path) == 0)) {
        return FileKind::replaceable;
    }
    try {
        const std::string header = platform::readStart(path, markPosition + noMark.size());
        if (header.size() < markPosition + noMark.size() || !header.starts_with(databaseStart) ||
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

std::vector<std::string> modDatabase::engineFilesBeside(std::string_view path) {
    std::vector<std::string> found;
    for (const char* ending : {"-wal", "-shm", "-journal"}) {
        const std::string file = std::string(path) + ending;
        if (!platform::somethingExists(file)) {
            continue;
        }
        if (!isEngineFile(file, ending)) {
            throw RuntimeError(errorNumber::fileAlreadyExists,
                               platform::displayPath(file) + " is in the way. Choose another name.");
        }
        found.push_back(file);
    }
    return found;
}

void modDatabase::removeEngineFiles(std::string_view path) {
    for (const std::string& file : engineFilesBeside(path)) {
        platform::deleteFile(file);
    }
}
