#include "db/earlierScan.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "export/databaseFile.h"
#include "support/errorNumberOf.h"
#include "support/scanFixture.h"
#include "support/sqliteScript.h"
#include "support/testSystem.h"

namespace {

class EarlierScanTest : public testing::Test, protected ScanFixture {
protected:
    std::string make(const char* name, const std::string& script) {
        std::string file = application.typed(name);
        runSqliteScript(file, script);
        return file;
    }
    int open(const std::string& file) {
        try {
            const EarlierScan scan(working, file, userInterface, {});
        } catch (const RuntimeError& error) {
            EXPECT_NE(std::string(error.what()).find(file), std::string::npos) << error.what();
            return error.number();
        }
        return 0;
    }
};

TEST_F(EarlierScanTest, isRefusedWhenItsFileIsNotToBeTrusted) {
    tree.write("file", "123");
    scan();
    const auto before = rows("select * from details");
    application.write("garbage", std::string(5000, 'x'));
    const std::string details = "create table details (idx integer primary key, size, owner);";
    const std::string scans = "insert into details values (1, 5, 'me');";
    const std::pair<std::string, int> refused[] = {
        {application.typed("missing"), databaseError::fileMissing},
        {application.typed("garbage"), databaseError::notADatabase},
        {application.typed("main.dat"), databaseError::inUse},
        {make("none", "create table other (x);"), databaseError::noSuchTable},
        {make("view", "create view details as select 1 as size;"), databaseError::damaged},
        {make("generated", "create table details (size, owner as (hex(zeroblob(400000))));"),
         databaseError::damaged},
        {make("trigger", details + "create trigger t after insert on details begin select 1; end;"),
         databaseError::damaged},
        {make("default", "create table details (size); with recursive r(x) as (select 1 union all select x+1 "
                         "from r where x<2000) insert into details select x from r;"
                         "alter table details add column owner default '" +
                             std::string(1000, 'x') + "';"),
         databaseError::damaged},
        {make("infinite", details + "insert into details values (1, 9e999, '');"), databaseError::damaged},
        {make("word", details + "insert into details values (1, 'big', '');"), databaseError::damaged},
        {make("scans", details + scans + "create view scans as select 1 as path;"), databaseError::damaged},
    };
    for (const auto& [file, number] : refused) {
        EXPECT_EQ(open(file), number) << file;
        EXPECT_EQ(rows("select * from details"), before) << file;
    }
    EXPECT_EQ(open(make("good", details + scans)), 0);
    for (const auto& entry : std::filesystem::directory_iterator(application.path())) {
        EXPECT_NE(entry.path().extension(), ".tmp") << "left behind";
    }
}

// A load, which makes a file beside the working database too, does not disturb one that is kept.
TEST_F(EarlierScanTest, isKeptWhileAnotherIsLoaded) {
    tree.write("file", "123");
    scan();
    const std::string file = application.typed("saved.mdb");
    ASSERT_FALSE(modExport::copyDatabase(working, file, userInterface));
    EarlierScan earlier(working, file, userInterface, {});
    const auto count = [&] {
        const auto found =
            earlier.database().OpenRecordset("select count(*) as total from details where size=3");
        return found->Fields(0).number();
    };
    const double before = count();
    EXPECT_EQ(before, 2);
    modExport::loadDatabase(working, file, userInterface);
    EXPECT_EQ(count(), before);
    EXPECT_TRUE(earlier.database().holdsLoadedRows());
    EXPECT_EQ(earlier.scans().size(), 1U);
}

TEST_F(EarlierScanTest, tellsWhyScansDoNotGoTogether) {
    using modScans::Scan;
    Scan whole;
    whole.path = key();
    whole.exact = true;
    whole.withOwners = true;
    const auto changed = [&](auto change) {
        Scan scan = whole;
        change(scan);
        return scan;
    };
    const Scan cancelled = changed([](Scan& scan) { scan.cancelled = true; });
    const Scan inexact = changed([](Scan& scan) { scan.exact = false; });
    const Scan others = changed([](Scan& scan) {
        scan.withOwners = false;
        scan.excludes = "*.o";
    });
    const struct {
        std::vector<Scan> before;
        std::vector<Scan> now;
        const char* expected;
    } cases[] = {
        {{whole}, {whole}, ""},
        {{}, {}, ""},
        {{inexact}, {}, ""},
        {{cancelled}, {}, "the saved scan was cancelled"},
        {{inexact}, {cancelled}, "the later scan was cancelled, not all of their sizes are exact"},
        {{whole}, {others}, "they left out different items"},
        {{whole}, {whole, inexact}, "not all of their sizes are exact"},
    };
    for (const auto& [before, now, expected] : cases) {
        EXPECT_EQ(modScans::differences(before, now), expected);
    }
}

// A part of a folder may have been scanned otherwise than the folder.
TEST_F(EarlierScanTest, takesAllScansOfAFolderTogether) {
    std::vector<modScans::Scan> scans(5);
    scans[0].path = "/\\srv\\";
    scans[1].path = "/\\srv\\a\\";
    scans[2].path = "/\\srv\\a\\deep\\";
    scans[3].path = "/\\srv\\ab\\";
    scans[4].path = "C:\\";
    const std::pair<const char*, std::vector<std::string>> folders[] = {
        {"/\\srv\\", {scans[0].path, scans[1].path, scans[2].path, scans[3].path}},
        {"/\\srv\\a\\", {scans[1].path, scans[2].path}},
        {"/\\srv\\a\\other\\", {scans[1].path}},
        {"/\\", {scans[0].path, scans[1].path, scans[2].path, scans[3].path}},
        {"D:\\", {}}};
    for (const auto& [folder, expected] : folders) {
        std::vector<std::string> found;
        for (const modScans::Scan& scan : modScans::within(scans, folder)) {
            found.push_back(scan.path);
        }
        EXPECT_EQ(found, expected) << folder;
    }
}

} // namespace
