#include "db/dao.h"

#include <gtest/gtest.h>

#include <functional>

#include "db/copyRows.h"
#include "db/values.h"
#include "platform/files.h"
#include "support/errorNumberOf.h"
#include "support/expected.h"
#include "support/sqliteScript.h"
#include "support/temporaryFolder.h"

namespace {

std::unique_ptr<Database> openTemplateCopy(const TemporaryFolder& folder, const char* name = "x.dat") {
    platform::copyFile(templateFile(), folder.typed(name));
    return DBEngine::OpenDatabase(folder.typed(name));
}

void append(Database& database, const char* name, double size) {
    const auto table = database.OpenRecordset("details");
    table->AddNew();
    table->Fields("FILENAME").set(std::string(name));
    table->Fields("size").setNumber(size);
    table->Update();
}

TEST(Dao, appendsAndReadsRows) {
    const TemporaryFolder folder;
    const auto database = openTemplateCopy(folder);
    append(*database, "a \"quoted\" one", 1.5);
    append(*database, "b", 5e9);
    const auto rows =
        database->OpenRecordset("select idx, fileName, size, owner from details order by size desc");
    EXPECT_EQ(rows->RecordCount(), 2);
    EXPECT_EQ(rows->Fields("filename").text(), "b");
    EXPECT_EQ(rows->Fields("size").text(), "5000000000");
    EXPECT_TRUE(rows->Fields("owner").isNull());
    EXPECT_EQ(rows->Fields("owner").text(), "");
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(0).value(), Value(std::int64_t{1}));
    EXPECT_EQ(rows->Fields("size").text(), "1.5");
    rows->MoveNext();
    EXPECT_TRUE(rows->EndOfFile());
    rows->MoveFirst();
    EXPECT_EQ(rows->Fields("fileName").text(), "b");
    rows->MoveLast();
    EXPECT_EQ(rows->Fields("fileName").text(), "a \"quoted\" one");
    EXPECT_EQ(database->Execute("update details set owner=\"me\" where size>2"), 1);
    const auto joined = database->OpenRecordset(
        "select fileName & owner as both from details where Left(fileName & owner, 2)=\"bm\"");
    ASSERT_FALSE(joined->EndOfFile());
    EXPECT_EQ(joined->Fields("both").text(), "bme") << "NULL counts as empty";
}

TEST(Dao, undoesASmallTransactionThatIsNotCommitted) {
    const TemporaryFolder folder;
    const auto database = openTemplateCopy(folder);
    append(*database, "kept", 1);
    const auto names = [&] {
        std::string result;
        const auto rows = database->OpenRecordset("select fileName from details order by idx");
        for (; !rows->EndOfFile(); rows->MoveNext()) {
            result += rows->Fields(0).text();
        }
        return result;
    };
    for (const bool commits : {false, true, false}) {
        SmallTransaction transaction(*database);
        database->Execute("delete * from details");
        append(*database, "new", 2);
        if (commits) {
            transaction.commit();
        }
    }
    EXPECT_EQ(names(), "new");
    database->BeginTrans(); // later transactions work without a journal
    append(*database, "more", 3);
    database->CommitTrans();
    EXPECT_EQ(names(), "newmore");
}

TEST(Dao, letsOthersWorkWhileAStatementRunsLong) {
    const TemporaryFolder folder;
    const auto database = openTemplateCopy(folder);
    database->BeginTrans();
    for (int i = 0; i < 1500; ++i) {
        append(*database, "x", i);
    }
    database->CommitTrans();
    int calls = 0;
    const char* const longStatement =
        "select count(*) from details as a, details as b where a.size*b.size=-1";
    {
        const LongWork work(*database, [&] { ++calls; });
        EXPECT_EQ(database->OpenRecordset(longStatement)->Fields(0).text(), "0");
    }
    EXPECT_GT(calls, 3);
    const int callsBefore = calls;
    EXPECT_EQ(database->OpenRecordset(longStatement)->Fields(0).text(), "0");
    EXPECT_EQ(calls, callsBefore);
}

TEST(Dao, endsAStatementOnAFileOfOthersThatFindsNoRow) {
    const TemporaryFolder folder;
    runSqliteScript(folder.typed("x.dat"), "create table t (a); with recursive r(x) as (select 1 union all "
                                           "select x+1 from r where x<3000) insert into t select x from r;");
    const auto database = DBEngine::OpenDatabase(folder.typed("x.dat"), OpenMode::readOnly);
    const auto rowsOf = [&](const char* statement) {
        std::int64_t count = 0;
        const auto rows = database->OpenRecordset(statement);
        for (; !rows->EndOfFile() && count < 1'000'000; rows->MoveNext()) {
            ++count;
        }
        return count;
    };
    int calls = 0;
    const LongWork work(*database, [&] { ++calls; });
    EXPECT_EQ(errorNumberOf([&] { rowsOf("select b.a from t as b, t as c where b.a*c.a=-1"); }),
              databaseError::damaged);
    EXPECT_EQ(rowsOf("select b.a from t as b, t as c"), 1'000'000) << "as many steps, but not for one row";
    EXPECT_GT(calls, 0);
}

TEST(Dao, failsWithTheEnginesNumbers) {
    const TemporaryFolder folder;
    const auto database = openTemplateCopy(folder);
    append(*database, "a", 1);
    folder.write("text", "this is no database, however long it may be");
    folder.write("cut", folder.read("x.dat").substr(0, 20000));
    testSystem::makePipe(folder / "pipe");
    const auto open = [&](const char* name) {
        return [&folder, name] {
            const auto opened = DBEngine::OpenDatabase(folder.typed(name), OpenMode::readOnly);
            const auto rows = opened->OpenRecordset("select * from details");
        };
    };
    const std::pair<int, std::function<void()>> cases[] = {
        {databaseError::fileMissing, open("nothing")},
        {databaseError::fileMissing, open("pipe")},
        {databaseError::fileMissing, open("")},
        {databaseError::notADatabase, open("text")},
        {databaseError::damaged, open("cut")},
        {databaseError::inUse, open("x.dat")},
        {databaseError::syntax, [&] { database->Execute("delete from details where"); }},
        {databaseError::syntax, [&] { database->Execute("insert details"); }},
        {databaseError::noSuchTable, [&] { database->Execute("delete from absent"); }},
        {databaseError::missingValue, [&] { database->Execute("delete from details where [absent]=1"); }},
        {databaseError::duplicateKey, [&] { database->Execute("insert into details (idx) values (1)"); }},
        {databaseError::noSuchField,
         [&] { static_cast<void>(database->OpenRecordset("select idx from details")->Fields("size")); }},
        {databaseError::noCurrentRecord,
         [&] {
             static_cast<void>(
                 database->OpenRecordset("select idx from details where 0=1")->Fields(0).text());
         }},
        {databaseError::noCurrentRecord,
         [&] { database->OpenRecordset("select idx from details where 0=1")->MoveNext(); }},
        {databaseError::noCurrentRecord, [&] { database->OpenRecordset("details")->MoveFirst(); }},
        {databaseError::readOnly, [&] { database->OpenRecordset("select idx from details")->AddNew(); }},
    };
    int index = 0;
    for (const auto& [number, action] : cases) {
        EXPECT_EQ(errorNumberOf(action), number) << "case " << index;
        ++index;
    }
    database->Close();
    EXPECT_EQ(errorNumberOf([&] { database->Execute("delete * from details"); }),
              databaseError::objectClosed);
}

TEST(Dao, copiesRowsByColumnName) {
    const TemporaryFolder folder;
    const auto target = openTemplateCopy(folder, "target.dat");
    runSqliteScript(folder.typed("it's.dat"),
                    "create table details (size, FILENAME); insert into details values (1, 'a'), (NULL, 'b');"
                    "create table nodes (other); insert into nodes values (1);");
    const auto source = DBEngine::OpenDatabase(folder.typed("it's.dat"), OpenMode::readOnly);
    EXPECT_EQ(copyRows(*source, *target, "details"), 2);
    const auto rows = target->OpenRecordset("select fileName, size from details order by idx");
    EXPECT_EQ(rows->Fields(0).text(), "a");
    EXPECT_EQ(rows->Fields(1).number(), 1);
    rows->MoveNext();
    EXPECT_EQ(rows->Fields(0).text(), "b");
    EXPECT_TRUE(rows->Fields(1).isNull());
    EXPECT_EQ(errorNumberOf([&] { copyRows(*source, *target, "nodes"); }), databaseError::unknownTargetField);
}

TEST(Values, becomeSqlTextAndFieldValuesByKind) {
    const Value null;
    const Value empty = std::string();
    const Value name = std::string("O'Brien");
    const Value zero = std::int64_t{0};
    const Value real = 4096.0;
    struct Case {
        Value value;
        int kind;
        const char* sql;
        Value field;
    };
    const Case cases[] = {
        {null, 5, "NULL", null},
        {empty, 1, "NULL", null},
        {name, 1, "'O'Brien'", name}, // odd on purpose: quotes are not doubled
        {zero, 2, "NULL", empty},
        {real, 2, "4096", empty},
        {empty, 3, "NULL", null},
        {real, 3, "4096", std::string("4096")},
        {zero, 4, "0", std::string("0")},
        {empty, 5, "\"\"", empty},
        {name, 5, "\"O'Brien\"", name},
        {empty, 6, "NULL", null},
        {name, 6, "\"O'Brien\"", name},
        {name, 7, "", empty},
        {name, 0, "", empty},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(modGlobal::vtsSQL(c.value, c.kind), c.sql) << c.kind;
        EXPECT_EQ(modGlobal::vts(c.value, c.kind), c.field) << c.kind;
    }
    EXPECT_EQ(modGlobal::quoted(R"(a" or ""=")"), R"("a"" or """"=""")");
    EXPECT_EQ(valueText(9007199254740993.0 * 1000), "9007199254740992000");
    EXPECT_EQ(valueText(-0.5), "-0.5");
}

} // namespace
