#include "export/databaseFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/files.h"
#include "support/scanFixture.h"
#include "support/sqliteScript.h"
#include "support/testSystem.h"
#include "views/folderFigures.h"
#include "views/folderSummary.h"

namespace {

class DatabaseFile : public testing::Test, protected ScanFixture {
protected:
    std::string make(const char* name, const std::string& script) {
        std::string file = application.typed(name);
        runSqliteScript(file, script);
        return file;
    }
    int load(const std::string& file) {
        try {
            modExport::loadDatabase(working, file, userInterface);
        } catch (const RuntimeError& error) {
            EXPECT_NE(std::string(error.what()).find(file), std::string::npos) << error.what();
            return error.number();
        }
        return 0;
    }
    std::string count() { return cell("select count(*) from details"); }
};

TEST_F(DatabaseFile, isCopiedAndLoadedBackUnchanged) {
    tree.write("a/" + testSystem::hostileNames().front(), "123");
    tree.write("b", "");
    scan();
    working.database().Execute("insert into nodes (nodeIndex, nodeKey) values (1, \"ROOT\")");
    const auto before = rows("select * from details");
    const auto scans = rows("select * from scans");
    EXPECT_EQ(scans.size(), 1U);
    const std::string copy = application.typed("copy.mdb");
    application.write("copy.mdb-wal",
                      "\x37\x7f\x06\x82 of another database, which would be applied to this one");
    application.write("copy.mdb-journal", "");
    EXPECT_FALSE(modExport::copyDatabase(working, copy, userInterface));
    EXPECT_EQ(application.read("copy.mdb").substr(0, 15), "SQLite format 3");
    working.database().Execute("delete * from details where isFolder=1");
    EXPECT_EQ(load(copy), 0);
    EXPECT_EQ(rows("select * from details"), before);
    EXPECT_EQ(cell("select count(*) from nodes"), "2") << "saved nodes are appended to the existing ones";
    EXPECT_EQ(cell("select count(*) from sqlite_master where type=\"index\""), "2");
    EXPECT_EQ(rows("select * from scans"), scans);

    const auto failure = modExport::copyDatabase(working, application.typed("no/where.mdb"), userInterface);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), 76);
    application.write("letter-wal", "Dear");
    EXPECT_TRUE(modExport::copyDatabase(working, application.typed("letter"), userInterface));
    EXPECT_EQ(application.read("letter-wal"), "Dear");
    EXPECT_FALSE(platform::somethingExists(application.internal("letter")));
    EXPECT_EQ(rows("select * from details"), before) << "the program keeps its database";

    working.close();
    platform::deleteFile(working.path());
    EXPECT_THROW(static_cast<void>(modExport::copyDatabase(working, copy, userInterface)), RuntimeError);
    EXPECT_EQ(count(), "0") << "or uses a new one if someone has removed it";
    EXPECT_EQ(load(copy), 0);
    EXPECT_EQ(rows("select * from details"), before);
}

TEST_F(DatabaseFile, mayKeepFoldersOnly) {
    for (const char* file : {"a/one/x", "a/y", "b/x"}) {
        tree.write(file, "12345");
    }
    tree.write("c", "1234567");
    tree.write("b/empty/none", "");
    scan();
    const std::string folders = "select * from details where isFolder=1";
    const auto before = rows(folders);
    const auto scans = rows("select * from scans");
    const std::string copy = application.typed("folders.mdb");
    EXPECT_FALSE(modExport::copyPart(working, {{}, true}, copy, userInterface));
    EXPECT_EQ(count(), "10") << "the program keeps its rows";
    EXPECT_TRUE(modExport::copyPart(working, {{}, true}, application.typed("no/where"), userInterface));
    for (const auto& entry : std::filesystem::directory_iterator(application.path())) {
        EXPECT_NE(entry.path().extension(), ".tmp") << "left by a copy";
    }
    EXPECT_EQ(load(copy), 0);
    EXPECT_EQ(rows("select * from details"), before);
    EXPECT_EQ(rows("select * from scans"), scans);
    EXPECT_EQ(cell("select count(*) from sqlite_master where type=\"index\""), "2");

    const auto text = [this](const char* name) {
        std::string result =
            modFigures::summaryText(modFigures::summary(working.database(), key(name))) + ":";
        for (const ChartEntry& entry : modFigures::chartEntries(working.database(), key(name))) {
            result.append(" ").append(entry.label).append(" ").append(valueText(entry.size));
        }
        return result;
    };
    EXPECT_EQ(text(""), "22 bytes, 5 files, 4 folders: b 5 |Files| 7 a 10");
    EXPECT_EQ(text("a/one"), "5 bytes, 1 file, 0 folders: |Files| 5");
    working.database().Execute("delete * from details where fileName='a\\'");
    EXPECT_EQ(text("a"), "5 bytes, 1 file, 1 folder: one 5") << "of the folders in it";
    EXPECT_EQ(text("b/empty"), "0 bytes, 1 file, 0 folders:");
    working.database().Execute("update details set fileCount=null");
    EXPECT_EQ(text("a/one"), "5 bytes, files not kept, 0 folders: |Files| 5");
}

TEST_F(DatabaseFile, isRefusedWhenItIsNotToBeTrusted) {
    tree.write("file", "123");
    scan();
    application.write("garbage",
                      "no database at all, though long enough to hold a header of one hundred bytes "
                      "and more of them");
    const std::string good =
        make("good", "create table details (fileName text, size real, parentFolder text);"
                     "create table nodes (nodeKey text);"
                     "insert into details values ('x', 1, 'p'), ('y', 2, 'p');");
    application.write("cut", application.read("good").substr(0, 6000));
    application.write("short", application.read("good").substr(0, application.read("good").size() - 1));
    const std::string details = "create table details (idx integer primary key, size);";
    const std::string nodes = "create table nodes (nodeKey text);";
    const std::pair<std::string, int> refused[] = {
        {application.typed("missing"), databaseError::fileMissing},
        {application.typed(), databaseError::fileMissing},
        {application.typed("garbage"), databaseError::notADatabase},
        {application.typed("cut"), databaseError::damaged},
        {application.typed("short"), databaseError::damaged},
        {make("none", "create table other (x);"), databaseError::noSuchTable},
        {make("nonodes", "create table details (fileName text); insert into details values ('z');"),
         databaseError::noSuchTable},
        {make("columns", "create table details (hostile text); insert into details values ('x');" + nodes),
         databaseError::unknownTargetField},
        {make("view", "create view details as with recursive r(x) as (select 1 union all select x+1 from r) "
                      "select x as size from r;" +
                          nodes),
         databaseError::damaged},
        {make("generated", "create table details (idx integer primary key, owner as (hex(zeroblob(400000))));"
                           "insert into details values (1);" +
                               nodes),
         databaseError::damaged},
        {make("trigger", details + nodes + "create trigger t after insert on NODES begin select 1; end;"),
         databaseError::damaged},
        {make("virtual", nodes + "pragma writable_schema=on; insert into sqlite_master values "
                                 "('table','details','details',0,'CREATE VIRTUAL TABLE details USING x()');"),
         databaseError::damaged},
        // A column that was added later takes no room in the rows.
        {make("default", "create table details (size); with recursive r(x) as (select 1 union all select x+1 "
                         "from r where x<2000) insert into details select x from r;"
                         "alter table details add column owner default '" +
                             std::string(1000, 'x') + "';" + nodes),
         databaseError::damaged},
        {make("nodes", details +
                           "create table nodes (nodeKey); insert into nodes values (1), (2), (3);"
                           "alter table nodes add column nodeText default '" +
                           std::string(60000, 'x') + "';"),
         databaseError::damaged},
        {make("infinite", details + nodes + "insert into details values (1, 9e999);"),
         databaseError::damaged},
        {make("twice",
              "create table details (idx, size); insert into details values (1, 5), (1, 6);" + nodes),
         databaseError::damaged},
        {application.typed("later"), databaseError::engine},
        {make("huge", details + nodes + "insert into details values (1, -1e19);"), databaseError::damaged},
        {make("text", details + nodes + "insert into details values (1, 5), (2, '9e999');"),
         databaseError::damaged},
        {make("scansView", details + nodes + "create view scans as select 1 as scanId;"),
         databaseError::damaged},
        {make("scansTrigger", details + nodes +
                                  "create table scans (path); create trigger t after insert on "
                                  "Scans begin select 1; end;"),
         databaseError::damaged},
        {make("scansGenerated", details + nodes + "create table scans (scanId, path as (zeroblob(9)));"),
         databaseError::damaged},
        {make("scansColumn", details + nodes + "create table scans (hostile); insert into scans values (1);"),
         databaseError::unknownTargetField},
        {make("scansValue", details + nodes +
                                "create table scans (path); insert into scans values "
                                "(zeroblob(2000000));"),
         databaseError::damaged},
        {make("scansFlag", details + nodes + "create table scans (cancelled); insert into scans values (2);"),
         databaseError::damaged},
        {make("scansCount", details + nodes +
                                "create table scans (unreadableFiles); insert into scans values "
                                "('many');"),
         databaseError::damaged},
        {make("scansMany", details + nodes +
                               "create table scans (scanId); with recursive r(x) as (select 1 union all "
                               "select x+1 from r where x<200) insert into scans select x from r;"),
         databaseError::damaged},
        {make("word", details + nodes + "insert into details values (1, 'big');"), databaseError::damaged},
        {make("last", details + nodes + "insert into details values (9223372036854775807, 1);"),
         databaseError::damaged},
    };
    std::string later = application.read("good");
    later[47] = 9; // the number of a format of the schema
    application.write("later", later);
    const auto before = rows("select * from details");
    for (const auto& [file, number] : refused) {
        EXPECT_EQ(load(file), number) << file;
        EXPECT_EQ(rows("select * from details"), before) << file;
    }
    EXPECT_EQ(cell("select count(*) from sqlite_master where type=\"index\""), "2");
    EXPECT_EQ(cell("select count(*) from nodes"), "0") << "not those of a file whose rows were refused";
    for (const auto& entry : std::filesystem::directory_iterator(application.path())) {
        EXPECT_NE(entry.path().extension(), ".tmp") << "left by a load";
    }
    EXPECT_FALSE(working.database().holdsLoadedRows());
    EXPECT_EQ(load(good), 0);
    EXPECT_TRUE(working.database().holdsLoadedRows());
    working.close();
    working.reopen();
    EXPECT_TRUE(working.database().holdsLoadedRows());
    EXPECT_EQ(rows("select fileName, size from details order by fileName"),
              (std::vector<std::string>{"x|1", "y|2"}));
    scan();
    EXPECT_EQ(count(), "4") << "a scan can follow";
    EXPECT_TRUE(working.holdsLoadedRows()) << "beside the loaded rows";
    working.startAnew();
    EXPECT_FALSE(working.database().holdsLoadedRows());
}

// Of all files, those in UTF-16 hold a text in the fewest bytes.
TEST_F(DatabaseFile, isLoadedHoweverDenselyItIsStored) {
    std::string letters;
    for (int i = 0; i < 300; ++i) {
        letters += "\u4E2D";
    }
    const std::string script = "pragma encoding='UTF-16'; pragma page_size=512;"
                               "create table details (idx integer primary key, size, fileName, owner);"
                               "create table nodes (nodeKey);"
                               "with recursive r(x) as (select 1 union all select x+1 from r where x<5000) "
                               "insert into details select x, 9.2e18, '" +
                               letters + "', NULL from r; vacuum;";
    EXPECT_EQ(load(make("dense", script)), 0);
    EXPECT_EQ(count(), "5000");
    EXPECT_EQ(cell("select fileName from details where idx=5000"), letters);
    EXPECT_EQ(load(make("small", "create table details (isFolder); create table nodes (nodeKey);"
                                 "insert into details values (0), (1), (0);")),
              0);
}

} // namespace
