#include "widgets/filesList.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>

#include "base/errorLog.h"
#include "platform/locale.h"
#include "support/scanFixture.h"
#include "views/folderFigures.h"
#include "widgets/groupLists.h"
#include "widgets/listView.h"
#include "widgets/lvsort.h"
#include "widgets/systemIcons.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

namespace {

// The cells of each row joined by "|".
std::vector<std::string> shown(const ListView& list, int columns = 5) {
    std::vector<std::string> result;
    for (int i = 0; i < list.rows().rowCount(); ++i) {
        std::string line(list.rows().row(i).cell(0).text);
        for (int column = 1; column < std::min(columns, list.rows().columnCount()); ++column) {
            line.append("|").append(list.rows().row(i).cell(column).text);
        }
        result.push_back(line);
    }
    return result;
}

struct Lists : testing::Test {
    void update(const std::string& key) { files.updateFileFolderListview(database, key); }
    void updateGroups(const std::string& key) {
        groups.updateFileTypeListview(database, key);
        groups.updateUserListview(database, key);
    }
    void record(const std::string& path, double size, const std::string& owner = {}) {
        fixture.search.updateDetail(path, {}, size, "01/02/2005 03:04:05 PM", "12/01/2004 12:00:00 AM",
                                    owner);
    }
    [[nodiscard]] std::vector<std::string> names() const { return shown(lvwF, 1); }

    ScanFixture fixture;
    Database& database = fixture.working.database();
    ImageList images;
    ListView lvwF{FilesList::columns(), &images};
    ListView lvwT{GroupLists::fileTypeColumns(), nullptr};
    ListView lvwU{GroupLists::ownerColumns(), nullptr};
    QAbstractItemModelTester tester{&lvwF.rows(), QAbstractItemModelTester::FailureReportingMode::Fatal};
    FilesList files{lvwF, images};
    GroupLists groups{lvwT, lvwU};
};

} // namespace

TEST_F(Lists, rowsCarryAllThatSortingAndOpeningNeed) {
    std::string folder = "/\\"; // the stored paths of its files are cut
    for (int i = 0; i < 4; ++i) {
        folder += std::string(100, 'x') + "\\";
    }
    record(folder + "file.txt", 1536, "me");
    record(folder + "sub\\", 5);
    update(folder);
    EXPECT_THAT(shown(lvwF), ElementsAre("file.txt|1.5 Kb|me|12/01/2004 12:00:00 AM|01/02/2005 03:04:05 PM",
                                         "sub|5 bytes||12/01/2004 12:00:00 AM|01/02/2005 03:04:05 PM"));
    const ListRow& subfolder = lvwF.rows().row(1);
    EXPECT_EQ(subfolder.key(), folder + "sub\\");
    EXPECT_EQ(subfolder.tag(), "FOLDER");
    EXPECT_EQ(lvwF.rows().row(0).tag(), "FILE");
    EXPECT_EQ(std::get<double>(subfolder.cell(1).tag), 5);
    EXPECT_EQ(std::get<std::string_view>(subfolder.cell(4).tag), "sub\\");
}

TEST_F(Lists, theFilesListGrowsWithItsFolder) {
    record("/\\d\\one", 1);
    record("/\\d\\two", 2);
    record("/\\e\\other", 3);
    update("/\\d\\");
    modLvw::lvsort(lvwF, 2, 1, true);
    record("/\\d\\three", 3);
    update("/\\d\\");
    update("ROOT");
    update("");
    EXPECT_THAT(names(), ElementsAre("two", "one", "three")) << "new rows go to the end";
    database.Execute("delete * from details where fileName=\"two\"");
    update("/\\d\\");
    EXPECT_THAT(names(), ElementsAre("one", "three")) << "filled again after rows were deleted";
    files.clear();
    EXPECT_THAT(names(), IsEmpty());
    update("/\\d\\");
    EXPECT_THAT(names(), ElementsAre("one", "three"));
    database.Execute("delete * from details where fileName=\"one\"");
    record("/\\d\\four", 4);
    record("/\\d\\one", 1);
    update("/\\d\\");
    EXPECT_THAT(names(), ElementsAre("three", "four", "one")) << "and when as many others took their places";
    database.Execute("update details set size=2048 where fileName=\"four\"");
    update("/\\d\\");
    EXPECT_THAT(shown(lvwF, 2), ElementsAre("three|3 bytes", "four|2.0 Kb", "one|1 bytes"));
    update("/\\e\\");
    EXPECT_THAT(names(), ElementsAre("other"));
}

// Names with the characters of patterns, and a path that is cut when stored.
TEST_F(Lists, allFiguresAreFoundForAnyFolder) {
    for (const std::string& name : {std::string("C#"), std::string("x[1]"), std::string("]!*?"),
                                    std::string(200, 'p') + "\\" + std::string(200, 'q')}) {
        const std::string folder = "/\\" + name + "\\";
        record(folder + "sub\\a.txt", 5, "me");
        record(folder + "sub\\", 5, "me");
        updateGroups(folder);
        EXPECT_THAT(shown(lvwT), ElementsAre("txt|5 bytes|1")) << name;
        EXPECT_THAT(shown(lvwU), ElementsAre("me|5 bytes|1")) << name;
        const std::vector<ChartEntry> bars = modFigures::chartEntries(database, folder);
        ASSERT_THAT(bars, SizeIs(1)) << name;
        EXPECT_EQ(bars[0].label, "sub") << name;
    }
}

TEST_F(Lists, onlyRowsInViewFetchIcons) {
    for (int i = 0; i < 100; ++i) {
        const std::string name = std::to_string(i) + ".txt";
        fixture.tree.write(name, "");
        record(fixture.key() + name, i);
    }
    update(fixture.key());
    files.getListViewIcons();
    EXPECT_EQ(images.count(), 0) << "of a list on a hidden tab";
    lvwF.resize(400, 200);
    lvwF.show();
    for (int tick = 0; tick < 100; ++tick) { // each ends after a while
        files.getListViewIcons();
    }
    EXPECT_EQ(images.count(), 1);
    EXPECT_FALSE(lvwF.rows().index(0, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    const int last = lvwF.rowsInView().second;
    EXPECT_FALSE(lvwF.rows().row(last).icon.isEmpty());
    EXPECT_TRUE(lvwF.rows().row(last + 1).icon.isEmpty());
}

TEST_F(Lists, groupsChangeInPlaceAndVanishedOnesStay) {
    record("/\\d\\a.TXT", 1000, "Me");
    record("/\\d\\sub\\b.txt", 24, "ME");
    record("/\\d\\none", 1);
    record("/\\d2\\c.txt", 7);
    updateGroups("/\\d\\");
    EXPECT_THAT(shown(lvwT), UnorderedElementsAre("txt|1.0 Kb|2", "(no extension)|1 bytes|1"));
    const bool same = platform::namesIgnoreCase();
    EXPECT_THAT(shown(lvwU),
                UnorderedElementsAreArray(
                    same ? std::vector<std::string>{"me|1.0 Kb|2", "|1 bytes|1"}
                         : std::vector<std::string>{"me|1,000 bytes|1", "me|24 bytes|1", "|1 bytes|1"}));
    EXPECT_NE(modLvw::itemIndex("KEY_ME", lvwU), -1);
    EXPECT_EQ(modLvw::itemIndex("KEY_mE", lvwU) != -1, same);
    EXPECT_NE(modLvw::itemIndex("KEY_", lvwU), -1);

    modLvw::lvsort(lvwT, 1, 1, true);
    record("/\\d\\c.txt", 1024);
    record("/\\d\\d.new", 3);
    database.Execute("delete * from details where fileName=\"none\"");
    updateGroups("/\\d\\");
    updateGroups("ROOT");
    EXPECT_THAT(shown(lvwT), ElementsAre("txt|2.0 Kb|3", "(no extension)|1 bytes|1", "new|3 bytes|1"));
    modLvw::lvsort(lvwT, 2, 1, true);
    EXPECT_THAT(shown(lvwT), ElementsAre("txt|2.0 Kb|3", "new|3 bytes|1", "(no extension)|1 bytes|1"));
    updateGroups("/\\d2\\");
    EXPECT_THAT(shown(lvwT), ElementsAre("txt|7 bytes|1"));
    EXPECT_THAT(shown(lvwU), ElementsAre("|7 bytes|1"));
}

// On every system, even if it ignores case in names.
TEST_F(Lists, fileTypesGoByCaseWhereTheSettingSaysSo) {
    fixture.settings.setCaseSensitiveExt(true);
    record("/\\d\\a.TXT", 5);
    updateGroups("/\\d\\");
    record("/\\d\\b.txt", 7);
    updateGroups("/\\d\\");
    record("/\\d\\c.TXT", 1);
    updateGroups("/\\d\\");
    EXPECT_THAT(shown(lvwT), ElementsAre("txt|6 bytes|2", "txt|7 bytes|1")) << "shown in lower case";
}

TEST_F(Lists, whatTheEngineRefusesIsLoggedByTheRoutinesName) {
    modGlobal::setErrorLog(&fixture.userInterface);
    const std::string key = "/\\d\"\\";
    update(key);
    updateGroups(key);
    EXPECT_THAT(fixture.userInterface.messages, IsEmpty()) << "a quote ends no statement";
    fixture.working.details().rows->Close(); // before its database
    database.Close();
    update(key);
    updateGroups(key);
    modGlobal::setErrorLog();
    EXPECT_THAT(fixture.userInterface.messages, ElementsAre(HasSubstr("[frmMain.updateFileFolderListview]"),
                                                            HasSubstr("[frmMain.updateFileTypeListview]"),
                                                            HasSubstr("[frmMain.updateUserListview]")));
}
