#include <gtest/gtest.h>

#include <filesystem>

#include "db/folderRows.h"
#include "support/scanFixture.h"

namespace {

class HardLinksInScans : public testing::Test, protected ScanFixture {};

// The names of a file may lie in folders that are scanned apart, and come and go.
TEST_F(HardLinksInScans, aFileWithSeveralNamesTakesItsRoomOnTheDiskOnce) {
    namespace fs = std::filesystem;
    tree.write("a/data", std::string(50'000, 'x'));
    fs::create_directories(tree / "b");
    fs::create_hard_link(tree / "a/data", tree / "b/again");
    fs::create_hard_link(tree / "a/data", tree / "third");
    const auto counted = [this] { // those that count, and what all take
        std::vector<std::string> names =
            rows("select fileName from details where isFolder=0 and sizeOnDisk>0");
        std::string text = std::to_string(names.size());
        return text + (std::stod(cell("select sum(sizeOnDisk) from details where isFolder=0")) < 80'000
                           ? " once"
                           : " more than once");
    };
    EXPECT_EQ(cell("select sum(size) from details where isFolder=0"), "~");
    for (const char* const folder : {"b", "a", ""}) {
        scan(folder);
        EXPECT_EQ(counted(), "1 once") << folder;
    }
    EXPECT_EQ(cell("select sum(size) from details where isFolder=0"), "150000") << "sizes count each name";
    for (const char* const folder : {"a", "b", "", "a"}) {
        search.resetWholeFolder(key(folder));
        scan(folder);
        EXPECT_EQ(counted(), "1 once") << folder;
    }
    search.resetAll();
    scan();
    EXPECT_EQ(counted(), "1 once");
}

class SizesOnDisk : public testing::Test, protected ScanFixture {
protected:
    [[nodiscard]] modFolderRows::Totals recorded() const {
        return modFolderRows::find(working.database(), key()).totals;
    }
    [[nodiscard]] modFolderRows::Totals fresh() const {
        ScanFixture other;
        modProcessFiles::processMain(key(), {other.search, other.settings, other.userInterface});
        return modFolderRows::find(other.working.database(), key()).totals;
    }
};

// The system gives a number again that a file had which is gone, but whose row is still there.
TEST_F(SizesOnDisk, aFileIsNotTakenForAnotherThatHadItsNumber) {
    namespace fs = std::filesystem;
    tree.write("a/x", std::string(40'000, 'x'));
    fs::create_hard_link(tree / "a/x", tree / "a/w");
    fs::create_directory(tree / "b");
    scan();
    fs::remove(tree / "a/x");
    fs::remove(tree / "a/w");
    tree.write("b/new", std::string(400'000, 'x'));
    fs::create_hard_link(tree / "b/new", tree / "b/new2");
    for (const char* const folder : {"b", "a"}) {
        search.resetWholeFolder(key(folder));
        scan(folder);
    }
    EXPECT_EQ(recorded(), fresh());
}

// Scans of earlier versions tell sizes only; what is not known of a part is not known of the whole.
TEST_F(SizesOnDisk, areNotKnownUntilAllIsScannedAgain) {
    tree.write("a/x", std::string(40'000, 'x'));
    tree.write("b/y", std::string(400'000, 'x'));
    scan();
    auto old = working.prepareSuccessor();
    for (const std::string& row : rows("select drive,parentFolder,fileName,isFolder,size from details")) {
        std::string values = "\"" + row;
        for (const char* const mark : {"\",\"", "\",\"", "\",", ","}) {
            values.replace(values.find('|'), 1, mark);
        }
        old->database().Execute("insert into details (drive,parentFolder,fileName,isFolder,size) values (" +
                                values + ")");
    }
    working.replaceBy(std::move(old));
    search.rowsReplaced();
    working.setOnDisk(true);
    EXPECT_FALSE(recorded().isKnown);
    for (const char* const folder : {"a", "b"}) {
        search.resetWholeFolder(key(folder));
        scan(folder);
        EXPECT_FALSE(recorded().isKnown) << folder;
        EXPECT_EQ(recorded().size, 440'000);
        EXPECT_TRUE(working.lacksSizesOnDisk()) << folder;
        EXPECT_FALSE(working.database().countsSizeOnDisk()) << folder;
    }
    search.resetWholeFolder(key());
    scan();
    EXPECT_EQ(recorded(), fresh());
    EXPECT_FALSE(working.lacksSizesOnDisk());
    EXPECT_TRUE(working.database().countsSizeOnDisk());
}

// A loaded database may hold any number of these.
TEST_F(SizesOnDisk, ofAnySizeAddUp) {
    for (int i = 0; i < 1100; ++i) {
        working.database().Execute(
            "insert into details (parentFolder,fileName,isFolder,size,sizeOnDisk,fileCount,folderCount) "
            "values "
            "(\"C:\\d\\\",\"" +
            std::to_string(i) + "\\\"," + (i == 0 ? "9223372036854775807" : "1") +
            ",9000000000000000000,9000000000000000000,9007199254740992,9007199254740992)");
    }
    const modFolderRows::Totals totals = modFolderRows::totals(working.database(), "C:\\d\\");
    EXPECT_GT(totals.sizeOnDisk, 9e21);
    EXPECT_GT(totals.files, 0);
    EXPECT_GT(totals.folders, 0);
}

} // namespace
