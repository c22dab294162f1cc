#include "views/folderFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>

#include "platform/locale.h"
#include "platform/text.h"
#include "support/expected.h"
#include "support/scanFixture.h"

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class FolderFigures : public testing::Test, protected ScanFixture {
protected:
    std::vector<std::string> fileTypes(const std::string& folder) {
        return described(modFigures::fileTypes(working.database(), folder));
    }
    std::vector<std::string> owners(const std::string& folder) {
        return described(modFigures::owners(working.database(), folder));
    }
    std::vector<std::string> entries(const std::string& folder) {
        std::vector<std::string> result;
        for (const ChartEntry& entry : modFigures::chartEntries(working.database(), folder)) {
            result.push_back(entry.label + "|" + valueText(entry.size));
        }
        return result;
    }
    void recordFile(const std::string& path, double size, const std::string& owner) {
        EXPECT_TRUE(search.updateDetail(path, {}, size, {}, {}, owner));
    }
    void recordFolder(const std::string& path) {
        EXPECT_TRUE(search.recordFolder(path, {{.size = search.folderSum(path)}, 0, false, {}, {}, "me"}));
    }

private:
    static std::vector<std::string> described(const std::vector<modFigures::FileGroup>& groups) {
        std::vector<std::string> result;
        for (const modFigures::FileGroup& group : groups) {
            result.push_back(group.name + "|" + valueText(group.size) + "|" + group.count);
        }
        return result;
    }
};

TEST_F(FolderFigures, tellExtensionsApartByCaseOnlyWhenAsked) {
    tree.write("a.TXT", "12345");
    tree.write("b.txt", "123");
    tree.write("sub/c.txt", "1");
    scan();
    EXPECT_THAT(fileTypes(key()), ElementsAre("txt|9|3"));
    working.database().Execute("delete * from details");
    settings.setCaseSensitiveExt(true);
    scan();
    EXPECT_THAT(fileTypes(key()), UnorderedElementsAre("TXT|5|1", "txt|4|2"));
}

// Which rows are read depends on how large a part of the table they are; what they give does not.
TEST_F(FolderFigures, areTheSameForASmallAndALargePartOfTheTable) {
    for (const char* folder : {"plain", "a#b", "[x]", "it's", "a%_?*"}) {
        for (const int others : {0, 1, 100}) {
            SCOPED_TRACE(folder + std::string(" beside ") + std::to_string(others));
            search.resetAll();
            const std::string path = key() + folder;
            recordFile(path + "\\one.txt", 5, "me");
            recordFile(path + "\\sub\\two.txt", 7, "me");
            for (int i = 0; i < others; ++i) {
                recordFile(path + "beside\\" + std::to_string(i) + ".txt", 1000, "other");
            }
            EXPECT_THAT(fileTypes(path + "\\"), ElementsAre("txt|12|2"));
            EXPECT_THAT(owners(path + "\\"), ElementsAre("me|12|2"));
        }
    }
}

// The database's own grouping is what they must be equal to; of groups with the same name, the last is shown.
TEST_F(FolderFigures, areThoseOfTheDatabasesGroups) {
    const std::vector<std::string> extensions{"null", "''", "'txt'", "'TXT'", "'ext 1'", "'z'"};
    const std::vector<std::string> names{"null",       "''",         "'Anna'", "'anna'",
                                         "'\u00c9va'", "'\u00e9va'", "'Zoe'"};
    Database& database = working.database();
    std::minstd_rand random; // NOLINT: the same rows each time
    const auto one = [&](const std::vector<std::string>& texts) { return texts[random() % texts.size()]; };
    for (int i = 0; i < 500; ++i) {
        database.Execute("insert into details "
                         "(parentFolder,fileName,isFolder,extension,description,owner,size) values ('" +
                         key() + "','f',0," + one(extensions) + "," + one(names) + "," + one(names) + "," +
                         (i % 10 == 0 ? "null" : std::to_string(i)) + ")");
    }
    const auto grouped = [&](const std::string& shown, const std::string& columns) {
        std::map<std::string, std::string> last;
        const auto rows = database.OpenRecordset("select " + shown +
                                                 ",sum(size) as total,count(extension) as files "
                                                 "from details where isFolder=0 group by " +
                                                 columns);
        for (; !rows->EndOfFile(); rows->MoveNext()) {
            const std::string name(rows->Fields(0).text());
            last[platform::namesIgnoreCase() && shown == "owner" ? platform::lowerCase(name) : name] =
                valueText(rows->Fields(1).number()) + "|" + std::string(rows->Fields(2).text());
        }
        std::vector<std::string> result;
        for (const auto& [name, figures] : last) {
            result.push_back(name + "|" + figures);
        }
        return result;
    };
    EXPECT_THAT(fileTypes(key()),
                testing::UnorderedElementsAreArray(grouped("extension", "extension,description")));
    std::vector<std::string> found = owners(key());
    if (platform::namesIgnoreCase()) {
        std::transform(found.begin(), found.end(), found.begin(), platform::lowerCase);
    }
    EXPECT_THAT(found, testing::UnorderedElementsAreArray(grouped("owner", "owner")));
}

// The chart and the tables make lengths and shares of them.
TEST_F(FolderFigures, areFiniteWhateverWasRecorded) {
    recordFile("C:\\a.x", HUGE_VAL, "me");
    recordFile("C:\\d\\b.y", -HUGE_VAL, "you");
    recordFolder("C:\\d\\");
    const std::string greatest = valueText(0x1p96);
    EXPECT_THAT(entries("C:\\"), ElementsAre("d|-" + greatest, "|Files||" + greatest));
    EXPECT_THAT(fileTypes("C:\\"), UnorderedElementsAre("x|" + greatest + "|1", "y|-" + greatest + "|1"));
    EXPECT_THAT(owners("C:\\"), UnorderedElementsAre("me|" + greatest + "|1", "you|-" + greatest + "|1"));
}

TEST_F(FolderFigures, keepTheSamePathOnTwoDrivesApart) {
    const std::string drives[] = {"C:\\", "/mnt/data\\"};
    double size = 1;
    for (const std::string& drive : drives) {
        recordFile(drive + "docs\\deep\\a.txt", size, "me");
        recordFolder(drive + "docs\\deep\\");
        recordFile(drive + "docs\\b.txt", size + 1, "me");
        recordFile(drive + "own.bin", size + 4, "you");
        size = 10;
    }
    recordFolder("C:\\docs\\");
    EXPECT_NE(search.getLastScanStopTimeByLocationKey("C:\\docs\\"), "");
    EXPECT_EQ(search.getLastScanStopTimeByLocationKey("/mnt/data\\docs\\"), "");
    recordFolder("/mnt/data\\docs\\");
    for (const std::string& drive : drives) {
        EXPECT_FALSE(search.recordFolder(drive, {{.size = search.folderSum(drive)}, 0, false, {}, {}, "me"}))
            << "a drive has no row";
    }
    EXPECT_THAT(entries("C:\\"), ElementsAre("docs|3", "|Files||5"));
    EXPECT_THAT(entries("/mnt/data\\"), ElementsAre("|Files||14", "docs|21"));
    EXPECT_THAT(entries("/mnt/data\\docs\\"), ElementsAre("deep|10", "|Files||11"));
    EXPECT_THAT(fileTypes("C:\\"), UnorderedElementsAre("txt|3|2", "bin|5|1"));
    EXPECT_THAT(fileTypes("/mnt/data\\docs\\"), ElementsAre("txt|21|2"));
    EXPECT_THAT(owners("/mnt/data\\"), UnorderedElementsAre("me|21|2", "you|14|1"));
    EXPECT_EQ(search.folderSum("C:\\"), 8);

    search.resetScanCompleteTime("C:\\docs\\");
    EXPECT_THAT(entries("C:\\"), ElementsAre("|Files||5"));
    EXPECT_THAT(entries("/mnt/data\\"), ElementsAre("|Files||14", "docs|21"));
    EXPECT_EQ(modFigures::itemsText(working.database()), "7 items.");
}

// What a running scan has read of the folder that it is in; all else has its row.
TEST_F(FolderFigures, countTheFolderBeingRead) {
    const auto running = [this](const std::string& folder) {
        std::vector<std::string> result;
        for (const ChartEntry& entry :
             modFigures::chartEntries(working.database(), folder, modFigures::ScanState::running)) {
            result.push_back(entry.label + "|" + valueText(entry.size) + (entry.unfinished ? "|so far" : ""));
        }
        return result;
    };
    EXPECT_THAT(running("C:\\"), testing::IsEmpty());
    recordFile("C:\\own.x", 4, "me");
    recordFile("C:\\done\\a.x", 7, "me");
    EXPECT_THAT(running("C:\\"), ElementsAre("|Files||4", "done|7|so far"));
    EXPECT_THAT(running("C:\\done\\"), ElementsAre("|Files||7")) << "its own files";
    recordFolder("C:\\done\\");
    EXPECT_THAT(running("C:\\"), ElementsAre("|Files||4", "done|7"));

    recordFile("C:\\now\\b.x", 20, "me");
    recordFile("C:\\now\\inner\\c.x", 300, "me");
    recordFolder("C:\\now\\inner\\");
    recordFile("C:\\now\\second\\deep\\d.x", 1000, "me");
    EXPECT_THAT(running("C:\\"), ElementsAre("|Files||4", "done|7", "now|1320|so far")) << "nothing twice";
    EXPECT_THAT(running("C:\\now\\"), ElementsAre("|Files||20", "inner|300", "second|1000|so far"));
    EXPECT_THAT(running("C:\\no\\"), testing::IsEmpty()) << "a name that only begins alike is another folder";
    EXPECT_THAT(running("D:\\"), testing::IsEmpty());
    EXPECT_THAT(entries("C:\\"), ElementsAre("|Files||4", "done|7")) << "no scan is running";
}

// Cancelled at the first subfolder, to avoid scanning a whole drive.
TEST_F(FolderFigures, areThoseOfADrivesRootToo) {
    const std::string root = testSystem::root();
    userInterface.onYield = [&] { search.CancelScan = search.CancelScan || userInterface.yields == 2; };
    EXPECT_TRUE(modProcessFiles::processMain(root, {search, settings, userInterface}).cancelled);
    const std::vector<std::string> found = rows("select fileName from details");
    for (const auto& entry : testSystem::entriesOf(testSystem::pathOf(platform::toNative(root)))) {
        if (!entry.isFolder) {
            EXPECT_THAT(found, testing::Contains(entry.name));
        }
    }
    recordFile(root + "a file of the test's", 7, "me");
    EXPECT_THAT(rows("select distinct drive, folder, parentFolder from details where isFolder=0"),
                ElementsAre(root + "|" + root + "|" + root));
    EXPECT_THAT(entries(root), testing::Contains("|Files||" + valueText(search.folderSum(root))))
        << "beside other volumes";
}

} // namespace
