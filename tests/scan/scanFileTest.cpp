#include "scan/scanFile.h"

#include <gtest/gtest.h>

#include "db/values.h"
#include "export/databaseFile.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "scan/savedScan.h"
#include "support/scanFixture.h"
#include "support/sqliteScript.h"

namespace {

class SavedFile : public testing::Test, protected ScanFixture {
protected:
    SavedFile() {
        for (const char* file : {"a/one/x", "a/one/y", "a/two/x", "b/x", "c"}) {
            tree.write(file, "12345");
        }
    }
    std::string save(const std::string& script = {}) {
        std::string file = application.typed("saved" + std::to_string(++files_) + ".mdb"); // others are open
        EXPECT_FALSE(modExport::copyDatabase(working, file, userInterface));
        runSqliteScript(file, script);
        return file;
    }
    int files_ = 0;
    // "15, 3 files, 2 folders".
    static std::string told(const ScanFile& file, std::string_view key) {
        const auto folder = file.folder(key);
        if (!folder) {
            return "not scanned";
        }
        const auto text = [](const std::optional<std::int64_t>& count) {
            return count ? std::to_string(*count) : std::string("?");
        };
        return std::to_string(static_cast<std::int64_t>(folder->size)) + ", " + text(folder->files) +
               " files, " + text(folder->folders) + " folders";
    }
};

TEST_F(SavedFile, tellsOfFoldersWithoutBeingLoaded) {
    scan();
    const std::string many =
        "with recursive r(x) as (select 1 union all select x+1 from r where x<2000) "
        "insert into details (parentFolder, fileName, isFolder, size) select 'Z:\\' || x || "
        "'\\', 'f', 0, 1 from r;";
    const std::string none = "update details set fileCount=null, folderCount=null;";
    const std::string counts = none + "update details set fileCount=7, folderCount=8 where fileName='a\\';";
    for (const std::string& script :
         {std::string(), none, none + many,
          none + "drop index details_folders; drop index details_parentFolder;",
          std::string("drop table nodes; drop table scans; create index i on details (owner desc);"),
          none + "create index details_location on details (fullPath, drive) where "
                 "substr(fullPath, -1) = '\\';"}) { // of an earlier version
        const ScanFile file(save(script));
        EXPECT_EQ(told(file, key()), "25, 5 files, 4 folders") << script;
        EXPECT_EQ(told(file, key("a")), "15, 3 files, 2 folders") << script;
        EXPECT_EQ(told(file, key("b")), "5, 1 files, 0 folders") << script;
        EXPECT_EQ(told(file, key("none")), "not scanned") << script;
        EXPECT_EQ(told(file, ""), "not scanned") << script;
        EXPECT_EQ(file.find(modSavedScan::possibleKeys(tree.typed("a"))), key("a")) << script;
        EXPECT_EQ(file.find(modSavedScan::possibleKeys(tree.typed("none"))), "") << script;
    }
    EXPECT_EQ(told(ScanFile(save(none + "delete from details where isFolder=0;")), key("a")),
              "15, ? files, 2 folders");
    EXPECT_EQ(told(ScanFile(save(counts + "delete from details where isFolder=0;")), key("a")),
              "15, 7 files, 8 folders");
    EXPECT_EQ(told(ScanFile(save(counts)), key("b")), "5, 1 files, 0 folders") << "not every row has them";
    const ScanFile above(
        save("delete from details; insert into details (parentFolder, fileName, isFolder, size) "
             "values ('Q:\\', 'f', 0, 7), ('Q:\\', 'g\\', 1, 2), ('R:\\x\\', 'y', 0, 1);"));
    EXPECT_EQ(told(above, "Q:\\"), "9, 1 files, 1 folders") << "a drive's root has no row";
    const std::string root =
        "delete from details; insert into details (parentFolder, fileName, isFolder, size, "
        "fileCount, folderCount) values ('Q:\\', 'f', 0, 7, null, null), ('Q:\\', 'g\\', 1, 2, 3, "
        "4), ('Q:\\', 'h\\', 1, 2, 5, 6);";
    EXPECT_EQ(told(ScanFile(save(counts + root)), "Q:\\"), "11, 9 files, 12 folders");
    EXPECT_EQ(told(ScanFile(save(counts + root + "update details set fileCount=null where fileName='g\\';")),
                   "Q:\\"),
              "11, 1 files, 2 folders");
    EXPECT_EQ(told(above, "R:\\"), "not scanned") << "but something in it";
}

TEST_F(SavedFile, tellsWhenItWasScanned) {
    scan("a");
    scan("b");
    const std::string times = "update scans set finished='1970-01-01 00:00:10' where path like '%\\a\\';"
                              "update scans set finished='1970-01-01 00:00:20' where path like '%\\b\\';";
    const ScanFile file(save(times));
    EXPECT_EQ(file.scans().size(), 2U);
    EXPECT_EQ(file.finished(key("a/one")), 10);
    EXPECT_EQ(file.finished(key("b")), 20);
    EXPECT_EQ(file.finished(key()), 20) << "the last of them";
    for (const char* script : {"drop table scans;", "delete from scans;", "update scans set finished='soon';",
                               "update scans set finished=null;"}) {
        const std::string changed = save(script);
        EXPECT_EQ(ScanFile(changed).finished(key("a")),
                  platform::entryFacts(platform::toInternal(changed)).modified)
            << script;
    }
}

TEST_F(SavedFile, isRefusedWhereItWouldRunWhatItsAuthorWrote) {
    scan();
    const struct {
        const char* script;
        int number;
    } cases[] = {
        {"drop table details;", databaseError::noSuchTable},
        {"drop table details; create view details as select 1 as size;", databaseError::damaged},
        {"create trigger t after insert on details begin select 1; end;", databaseError::damaged},
        {"alter table details add column x as (hex(zeroblob(400000)));", databaseError::damaged},
        {"create index i on details (hex(owner));", databaseError::damaged},
        {"create index i on details (owner) where owner like 'x%';", databaseError::damaged},
        {"drop index details_folders; create index details_folders on details (parentFolder, fileName) where "
         "isFolder + 0 = 1 and size > 0;",
         databaseError::damaged},
        {"drop table scans; create view scans as select 1 as path;", databaseError::damaged},
        {"pragma user_version=1;", 0},
    };
    for (const auto& each : cases) {
        int number = 0;
        try {
            const ScanFile file(save(each.script));
        } catch (const RuntimeError& error) {
            number = error.number();
            EXPECT_NE(std::string(error.what()).find(".mdb was not loaded"), std::string::npos)
                << error.what();
        }
        EXPECT_EQ(number, each.number) << each.script;
    }
}

// A tree of pages, each of which has the next one many times below it: more rows than could ever be read.
std::string endlessRows(const TemporaryFolder& folder, const std::string& table) {
    constexpr std::size_t pageSize = 512;
    constexpr std::size_t children = 70;
    constexpr std::size_t depth = 12;
    const std::string file = folder.typed(table);
    runSqliteScript(
        file, "pragma page_size=512; create table details (idx integer primary key, parentFolder, fileName, "
              "isFolder, size); create table scans (scanId integer primary key, path);"
              "insert into details values (1, 'Q:\\', 'f', 0, 7); insert into scans values (1, 'Q:\\');");
    std::string bytes = folder.read(table);
    const std::size_t pages = bytes.size() / pageSize;
    const std::string root = std::to_string(pages + 1);
    const char leaf = table == "details" ? '\2' : '\3';
    runSqliteScript(file, "pragma writable_schema=on; update sqlite_master set rootpage=" + root +
                              " where name='" + table + "';");
    bytes = folder.read(table);
    for (std::size_t level = 1; level <= depth; ++level) {
        const char next = level == depth ? leaf : static_cast<char>(pages + level + 1);
        std::string page = std::string("\5\0\0\0", 4) + static_cast<char>(children);
        const std::size_t content = pageSize - children * 5;
        page.append({static_cast<char>(content >> 8U), static_cast<char>(content & 0xFFU), '\0', '\0', '\0',
                     '\0', next});
        std::string cells;
        for (std::size_t i = 0; i < children; ++i) {
            const std::size_t at = content + i * 5;
            page.append({static_cast<char>(at >> 8U), static_cast<char>(at & 0xFFU)});
            cells.append({'\0', '\0', '\0', next, static_cast<char>(i + 1)});
        }
        bytes.append(page).append(content - page.size(), '\0').append(cells);
    }
    bytes[31] = static_cast<char>(pages + depth); // the number of pages
    folder.write(table, bytes);
    return file;
}

TEST_F(SavedFile, ofMoreRowsThanItsBytesIsRefusedInTime) {
    for (const char* table : {"details", "scans"}) {
        std::string reason;
        try {
            const ScanFile file(endlessRows(application, table));
            static_cast<void>(file.folder("Q:\\"));
        } catch (const RuntimeError& error) {
            reason = error.what();
        }
        EXPECT_NE(reason.find("The database is damaged"), std::string::npos) << table << ": " << reason;
    }
}

// What the rows hold may be anything; figures stay figures.
TEST_F(SavedFile, bearsAnyValue) {
    scan();
    const ScanFile file(
        save("update details set size='9e999' where isFolder=1; update scans set path=zeroblob(100000), "
             "host=9e999, finished=x'00', unreadableFiles=-1, cancelled='yes';"));
    const auto folder = file.folder(key("a"));
    EXPECT_TRUE(folder && folder->size < 1e30);
    ASSERT_EQ(file.scans().size(), 1U);
    EXPECT_EQ(file.scans().front().unreadableFiles, 0);
    EXPECT_FALSE(file.scans().front().cancelled);
}

} // namespace
