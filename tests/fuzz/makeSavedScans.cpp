// make-saved-scans FOLDER: writes saved scans there, in the forms that loading tells apart, as seeds for
// fuzz-databases.

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

#include "support/sqliteScript.h"

namespace fs = std::filesystem;

namespace {

// Small pages, so that a file is small and a change in it often meets what is read.
const std::string smallPages = "pragma page_size = 512; pragma application_id = 0x53504e53;";

const std::string tables =
    "create table details (idx integer primary key, fullPath varchar(255), drive varchar(255), folder "
    "varchar(255), "
    "fileName varchar(255), extension varchar(255), description varchar(255), size double, dateAccessed "
    "varchar(255), "
    "dateModified varchar(255), owner varchar(255), dateInserted datetime, parentFolder varchar(255), "
    "isFolder smallint, scanCompleteTime varchar(255));"
    "create table nodes (nodeIndex integer, nodeKey varchar(255), expanded boolean, selected boolean, "
    "parentIndex integer, nodeText varchar(255), nodeTag varchar(255), parentKey varchar(255));";

const std::string rows =
    "insert into details (fullPath, drive, fileName, extension, description, size, dateAccessed, "
    "dateModified, owner, "
    "parentFolder, isFolder) values "
    "('usr\\a.txt', '/\\', 'a.txt', '.txt', 'Text', 1234.0, '03/14/2004 09:05:07 PM', '03/14/2004 09:05:07 "
    "PM', 'me', "
    "'/\\usr\\', 0),"
    "('usr\\', '/\\', 'usr\\', null, null, 1240.0, '03/14/2004 09:05:07 PM', 'no date', 'me', '/\\', 1),"
    "('usr\\b', '/\\', '<script>', '.\"', '=1+1', 6, null, '&lt;' || char(10), '@SUM(A1)', '/\\usr\\', 0);"
    "insert into nodes values (1, '/\\', 1, 1, -1, '/', 'drive', '');";

struct Seed {
    const char* name;
    std::string script;
};

const std::string scans =
    "create table scans (scanId integer primary key, host varchar(255), system varchar(255), path text, "
    "started datetime, finished datetime, cancelled smallint, exact smallint, withOwners smallint, onDisk "
    "smallint, excludes text, unreadableFolders integer, unreadableFiles integer, programVersion "
    "varchar(255));"
    "insert into scans values (1, 'vm', 'OS 9', '/\\usr\\', '2026-01-02 03:04:05', '2026-01-02 03:04:06', 0, "
    "1, "
    "1, 0, '*.o', 2, 3, '1.0.0'), (2, 'vm', null, '/\\', 'soon', null, 1, 0, 0, 0, null, 0, 0, null);";

const std::string indexes =
    "create index details_parentFolder on details (parentFolder);"
    "create index details_folders on details (parentFolder, fileName) where isFolder + 0 = 1;";

const std::array<Seed, 14> seeds{{
    {"plain", smallPages + tables + rows},
    {"scans", smallPages + tables + rows + scans + indexes},
    {"counts",
     smallPages + tables + rows + scans + indexes +
         "alter table details add column fileCount integer; alter table details add column folderCount "
         "integer; update details set fileCount = 2, folderCount = 0 where isFolder = 1;"},
    {"empty", smallPages + tables},
    {"noNodes", "pragma page_size = 512; create table details (idx integer primary key, size double);"},
    {"utf16", "pragma encoding = 'UTF-16';" + smallPages + tables + rows},
    {"indexed", smallPages + tables + rows + "create index details_parentFolder on details (parentFolder);"},
    {"textSizes",
     smallPages + tables + rows + "update details set size = '1e3'; update details set idx = idx + 9;"},
    {"anyTypes", smallPages + "create table details (idx, size, fileName blob, owner default 'x');" +
                     "create table nodes (nodeKey); insert into details values (1, '7', x'00ff', 3.5);"},
    {"withoutRowid", smallPages + "create table details (idx integer primary key, size double, fileName) "
                                  "without rowid; create table nodes (nodeKey primary key) without rowid;"
                                  "insert into details values (1, 2, 'a');"},
    {"view", smallPages + "create table nodes (nodeKey); create view details as select 1 as idx;"},
    {"trigger", smallPages + tables + "create trigger t after insert on details begin select 1; end;"},
    {"generated",
     smallPages + "create table nodes (nodeKey); create table details (idx, size as (idx * 2));"},
    {"overflow",
     smallPages + tables + "insert into details (fileName, size) values (printf('%.2000c', 'n'), 1);"},
}};

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: make-saved-scans FOLDER\n");
        return 2;
    }
    const fs::path folder = arguments[1];
    fs::create_directories(folder);
    for (const Seed& seed : seeds) {
        fs::remove(folder / seed.name);
        runSqliteScript((folder / seed.name).string(), seed.script);
    }
    return 0;
}
