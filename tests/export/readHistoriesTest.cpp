#include "export/readHistories.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/formatSize.h"
#include "export/databaseFile.h"
#include "export/historyLines.h"
#include "platform/paths.h"
#include "support/scanFixture.h"
#include "support/sqliteScript.h"

namespace {

using modExport::FolderHistories;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class Histories : public testing::Test, protected ScanFixture {
protected:
    // Finished on that day of January at noon.
    void save(const std::string& name, const std::string& day, const std::string& script = {}) {
        search.resetAll();
        scan();
        const std::string file = folder.typed(name);
        EXPECT_FALSE(modExport::copyDatabase(working, file, userInterface));
        runSqliteScript(file,
                        "update scans set host='vm', finished='2026-01-" + day + " 12:00:00';" + script);
    }
    void changedOn(const std::string& name, int day) const {
        std::filesystem::last_write_time(folder / name, std::filesystem::file_time_type::clock::now() +
                                                            std::chrono::hours(24 * day));
    }
    [[nodiscard]] FolderHistories read(std::string_view name, std::size_t most = 2) {
        visits = 0;
        return modExport::readHistories(modExport::savedScansAt(folder.typed()), tree.typed(name),
                                        {most, [] { return true; }, [this](std::size_t) { ++visits; }});
    }
    // "b 9 - 7": the last name, and the sizes.
    [[nodiscard]] static std::vector<std::string> told(const FolderHistories& histories) {
        std::vector<std::string> result;
        for (std::size_t number = 0; number <= histories.subfolders.size(); ++number) {
            const modExport::FolderHistory& history = modExport::historyOf(histories, number);
            std::string text;
            for (const modExport::HistoryPoint& point : history.points) {
                text += " " + (point.folder ? std::to_string(static_cast<int>(point.folder->size)) : "-");
            }
            const std::vector<modTimeChart::Line> lines = modExport::historyLines(histories);
            result.push_back((number == 0 ? "all" : lines.at(number).name) + text);
        }
        return result;
    }

    TemporaryFolder folder;
    int visits = 0;
};

TEST_F(Histories, ofTheLargestInTheNewestScanComeFromOneVisitOfEachFile) {
    tree.write("was large/x", std::string(90, 'x'));
    tree.write("grows/x", std::string(10, 'x'));
    save("1.mdb", "01");
    std::filesystem::remove_all(tree / "was large");
    tree.write("grows/x", std::string(20, 'x'));
    tree.write("new/x", std::string(30, 'x'));
    tree.write("small/x", "x");
    save("2.mdb", "02");
    std::filesystem::remove_all(tree / "grows");
    tree.write("grows", "a file");
    save("4.mdb", "04", "update details set fileName='gone' where fileName='grows';");
    runSqliteScript(folder.typed("4.mdb"), "update scans set path='/elsewhere\\'; delete from details;");
    std::filesystem::remove(tree / "grows");
    tree.write("grows/x", std::string(40, 'x'));
    save("3.mdb", "03");

    changedOn("1.mdb", 1);
    changedOn("2.mdb", 2);
    changedOn("3.mdb", 3);
    changedOn("4.mdb", 4);
    const std::vector<std::string> expected{"all 100 51 71", "grows 10 20 40", "new - 30 30"};
    FolderHistories histories = read({});
    EXPECT_EQ(told(histories), expected);
    EXPECT_EQ(visits, 4);
    EXPECT_EQ(histories.files, 4U);
    EXPECT_EQ(histories.folder.others, 1U);
    EXPECT_EQ(histories.subfolders.front().points.back().change, 20);
    EXPECT_EQ(histories.subfolders.front().points.back().folder->files, 1);

    changedOn("1.mdb", 5); // as copying may leave it
    EXPECT_EQ(told(read({})), expected);
    EXPECT_EQ(visits, 8);
    EXPECT_THAT(told(read({}, 0)), ElementsAre("all 100 51 71"));
    EXPECT_THAT(told(read("grows")), ElementsAre("all 10 20 40"));
    EXPECT_THAT(told(read("was large")), ElementsAre("all 90 - -"));
}

// An earlier version: no index, no counts, no table of scans.
TEST_F(Histories, ofEarlierFilesAreNotCountedForSubfolders) {
    tree.write("a/b/x", std::string(10, 'x'));
    save("1.mdb", "01",
         "drop table scans; drop index details_folders; alter table details drop column fileCount; "
         "alter table details drop column folderCount;");
    const FolderHistories histories = read("a");
    EXPECT_THAT(told(histories), ElementsAre("all 10", "b 10"));
    EXPECT_EQ(histories.folder.points.front().folder->files, 1);
    EXPECT_EQ(histories.subfolders.front().points.front().folder->files, std::nullopt);
}

TEST_F(Histories, canBeInterruptedAndTellWhatIsThere) {
    tree.write("a/x", "123");
    for (const char* day : {"01", "02", "03"}) {
        save(std::string(day) + ".mdb", day);
    }
    const std::vector<std::string> files = modExport::savedScansAt(folder.typed());
    int asked = 0;
    const FolderHistories some =
        modExport::readHistories(files, tree.typed(), {2, [&] { return ++asked < 3; }, {}});
    EXPECT_EQ(some.files, 2U);
    EXPECT_THAT(some.folder.points, SizeIs(2));
    EXPECT_THAT(modExport::historyRemark(some, 3),
                HasSubstr("Reading was cancelled: 2 of 3 saved scans were read."));
}

// The engine asks while a statement goes through a large table.
TEST_F(Histories, areInterruptedWithinAFile) {
    tree.write("a/x", "123");
    save("1.mdb", "01",
         "update details set fileCount=null;"
         "with recursive n(i) as (select 1 union all select i+1 from n where i<300000)"
         "insert into details(parentFolder,fileName,isFolder,size)"
         " select (select parentFolder||fileName||'\\' from details where fileName like 'a%' and isFolder=1"
         " limit 1)||i||'\\','x',0,1 from n;"
         "drop index details_parentFolder;");
    int asked = 0;
    const FolderHistories none = modExport::readHistories(
        modExport::savedScansAt(folder.typed()), tree.typed("a"), {2, [&] { return ++asked < 2; }, {}});
    EXPECT_EQ(none.files, 0U);
    EXPECT_THAT(none.folder.points, IsEmpty());
    EXPECT_THAT(none.folder.failures, IsEmpty());
    EXPECT_GE(asked, 2);
}

modExport::HistoryPoint point(int day, std::optional<double> size, const char* host, bool cancelled = false) {
    modExport::HistoryPoint result;
    result.moment = platform::Seconds{86400} * day;
    if (size) {
        result.folder = ScanFile::Folder{*size, 1, 0};
    }
    result.host = host;
    result.isCancelled = cancelled;
    return result;
}

TEST(HistoryLines, areOneForEachFolderAndMachine) {
    FolderHistories histories;
    histories.folder = {platform::displayPath("/home\\me\\"),
                        {point(1, 5, "a"), point(2, 7, ""), point(3, {}, "a", true)},
                        0,
                        {}};
    histories.subfolders = {{platform::displayPath("/home\\me\\in\\"), {point(2, -3, "")}, 0, {}}};
    std::vector<std::string> told;
    for (const modTimeChart::Line& line : modExport::historyLines(histories)) {
        std::string text = line.name + ":" + std::to_string(line.group) + std::to_string(line.pattern);
        for (const modTimeChart::Point& each : line.points) {
            text += " " + std::to_string(each.row) + (each.isThere ? "" : " not there") +
                    (each.isComplete ? "" : " cancelled");
        }
        told.push_back(text);
    }
    EXPECT_THAT(told, ElementsAre("me (a):00 0 2 not there cancelled", "me (unknown machine):01 1",
                                  "in (unknown machine):11 0"));
    EXPECT_EQ(modExport::historyLines(histories).back().points.front().size, 0);
}

TEST(HistoryLines, pointsTellWhatIsKnown) {
    modExport::FolderHistory history{"/a", {point(1, 2048, "vm"), point(2, {}, "vm", true)}, 0, {}};
    history.points.front().change = -5;
    const std::string full = modExport::pointText(history, 0, true);
    EXPECT_THAT(full, testing::StartsWith("/a\n01/0"));
    EXPECT_THAT(full, testing::EndsWith("\n2.0 Kb (2,048 bytes)\n1 file, 0 folders\n-5 bytes since the scan "
                                        "before\nMachine: vm"));
    EXPECT_THAT(modExport::pointText(history, 1, false), testing::EndsWith("M\nnot there"));
}

TEST(HistoryLines, remarkSaysWhyThereIsNoCurve) {
    const std::vector<modExport::HistoryPoint> one{point(1, 5, "a")};
    const std::vector<modExport::HistoryPoint> absent{point(1, {}, "a"), point(2, {}, "a")};
    const struct {
        modExport::FolderHistory history;
        std::size_t files;
        const char* text;
    } cases[] = {
        {{"/a", {}, 3, {}}, 3, "None of the 3 saved scans there is of this folder."},
        {{"/a", one, 0, {}}, 1, "There is one saved scan of this folder; a curve begins with the second."},
        {{"/a", absent, 0, {}}, 2, "The folder was not there in any of the 2 saved scans."},
        {{"/a", {}, 0, {"b is no scan."}},
         1,
         "None of the files could be read as a saved scan. b is no scan."},
        {{"/a", {point(1, 5, "a"), point(2, 5, "b")}, 1, {"x.", "y.", "z."}},
         6,
         "2 saved scans of this folder. 1 more there is of other folders. They are of several machines, each "
         "with lines of its own: a, b. x. 2 more could not be read."},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(modExport::historyRemark({each.history, {}, each.files}, each.files), each.text);
    }
}

} // namespace
