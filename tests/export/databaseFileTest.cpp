#include "export/databaseFile.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "support/scanFixture.h"
#include "support/sqliteScript.h"
#include "support/testSystem.h"

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

TEST_F(DatabaseFile, isRefusedWhenItIsNotToBeTrusted) {
    tree.write("file", "123");
    scan();
    const std::string rowsBefore = count();
    application.write("garbage",
                      "no database at all, though long enough to hold a header of one hundred bytes "
                      "and more of them");
    const std::string good =
        make("good", "create table details (fileName text, size real, parentFolder text);"
                     "create table nodes (nodeKey text);"
                     "insert into details values ('x', 1, 'p'), ('y', 2, 'p');");
    application.write("cut", application.read("good").substr(0, 6000));
    application.write("short", application.read("good").substr(0, application.read("good").size() - 1));
    const std::pair<std::string, int> refused[] = {
        {application.typed("missing"), databaseError::fileMissing},
        {application.typed(), databaseError::fileMissing},
        {application.typed("garbage"), databaseError::notADatabase},
        {application.typed("cut"), databaseError::damaged},
        {application.typed("short"), databaseError::damaged},
        {make("none", "create table other (x);"), databaseError::noSuchTable},
        {make("view", "create view details as with recursive r(x) as (select 1 union all select x+1 from r) "
                      "select x as size from r; create table nodes (nodeKey text);"),
         databaseError::noSuchTable},
    };
    for (const auto& [file, number] : refused) {
        EXPECT_EQ(load(file), number) << file;
        EXPECT_EQ(count(), rowsBefore) << file;
    }
    EXPECT_EQ(load(make("columns", "create table details (hostile text); insert into details values ('x');"
                                   "create table nodes (nodeKey text);")),
              databaseError::unknownTargetField);
    EXPECT_EQ(count(), "0");
    EXPECT_EQ(
        load(make("nonodes", "create table details (fileName text); insert into details values ('z');")),
        databaseError::noSuchTable);
    EXPECT_EQ(count(), "1") << "the rows were loaded before the missing nodes were noticed";
    EXPECT_EQ(load(good), 0);
    EXPECT_EQ(rows("select fileName, size from details order by fileName"),
              (std::vector<std::string>{"x|1", "y|2"}));
    scan();
    EXPECT_EQ(count(), "4") << "a scan can follow";
}

} // namespace
