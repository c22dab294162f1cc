#include "tree/folderSelection.h"

#include <gmock/gmock.h>

#include "support/scanFixture.h"
#include "support/testSystem.h"
#include "tree/treeOperations.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class CountingViews final : public FolderViews {
public:
    void updateGraph() override {}
    void refreshActiveView() override { ++refreshes; }
    void followRows() override { ++refreshes; }
    void clearFilesList() override {}

    int refreshes = 0;
};

class FolderSelectionTest : public testing::Test, public ScanFixture {
protected:
    FolderSelectionTest() {
        QObject::connect(&selection, &FolderSelection::scanRuns,
                         [this](bool running) { scans += running ? 1 : 0; });
        tvw.addNode({}, {"ROOT", {}, {}, {}});
        tree.write("a/one.txt", "1");
        tree.write("a/deep/two.txt", "22");
        tree.write("b/three.txt", "333");
    }
    std::string count() { return cell("select count(*) from details"); }
    // Rows as left by a scan that was cancelled before it finished any folder: none has a stamp.
    void load(std::string_view name = {}) {
        scan(name);
        working.database().Execute("update details set scanCompleteTime=NULL");
        selection.showLoaded();
        selection.cmdGo_Click(tree.typed(name));
        scans = 0;
    }
    void click(std::string_view name) {
        if (!tvw.findNode(key(name))) {
            modGlobal::addTopNode(tvw, images, key(name));
        }
        tvw.selectNode(key(name));
        selection.tvw_NodeClick(key(name));
    }

    FolderTree tvw;
    ImageList images;
    CountingViews views;
    FolderSelection selection{{tvw, images, search, settings, working, userInterface, views}};
    int scans = 0;
};

// Also where everything recorded goes first.
TEST_F(FolderSelectionTest, leavesNoTableWithoutIndexes) {
    const std::vector<std::function<void()>> ways{
        [this] { click("b"); }, [this] { selection.refreshScreen(); },
        [this] { selection.scanFolderAgain(key("b")); }, [this] { selection.scanAgain(); },
        [this] {
            settings.setExact(true);
            selection.scanFolderAgain(key("b"));
        }};
    for (const auto& scan : ways) {
        scan();
        EXPECT_EQ(count(), "2");
        EXPECT_FALSE(search.isBulkLoad());
        EXPECT_TRUE(working.database().hasIndexes());
        EXPECT_EQ(cell("select count(*) from sqlite_master where type=\"index\""), "2");
    }
}

TEST_F(FolderSelectionTest, heldItRemembersTheLastClickOnly) {
    selection.cmdGo_Click(tree.typed("b"));
    const std::string rowsBefore = count();
    {
        const HeldSelection held(selection);
        {
            const HeldSelection nested(selection);
            selection.refreshScreen();
            selection.cmdGo_Click(tree.typed("a"));
        }
        click("a/deep");
        EXPECT_EQ(count(), rowsBefore);
        EXPECT_EQ(scans, 1);
    }
    EXPECT_THAT(rows("select fileName from details where isFolder=0"), ElementsAre("three.txt", "two.txt"));
    {
        const HeldSelection held(selection);
        selection.tvw_NodeClick(key("a"));
        tvw.replaceNodes({});
    }
    { const HeldSelection nothingHappensMeanwhile(selection); }
    EXPECT_EQ(scans, 2) << "nothing of the old tree is selected";
    EXPECT_THAT(userInterface.messages, IsEmpty());
}

TEST_F(FolderSelectionTest, showsLoadedFoldersFromTheirRowsUntilTheyAreRefreshed) {
    load();
    const std::string loaded = count();
    EXPECT_THAT(userInterface.statuses, Contains(std::pair(StatusPanel::items, loaded + " items.")));
    tree.write("a/later.txt", "x");
    tree.write("c/new.txt", "x");
    views.refreshes = 0;
    click("a");
    EXPECT_EQ(count(), loaded);
    EXPECT_EQ(scans, 0);
    EXPECT_EQ(views.refreshes, 1);
    EXPECT_TRUE(tvw.findNode(key("a/deep"))) << "everything else that a click does";

    click("c");
    EXPECT_EQ(scans, 1) << "not in the file";
    selection.refreshScreen();
    click("a");
    selection.refreshScreen();
    EXPECT_EQ(cell("select count(*) from details where fileName=\"later.txt\""), "1");
    EXPECT_EQ(scans, 3);
}

TEST_F(FolderSelectionTest, keepsWhatWasLoadedOfAFolderThatIsNotHere) {
    load();
    const std::string loaded = count();
    tree.write("b/later.txt", "x");
    testSystem::removeAll(tree / "a");
    for (const bool exact : {false, true}) {
        settings.setExact(exact);
        click("a/deep");
        selection.refreshScreen();
        click("a");
        selection.refreshScreen();
        EXPECT_THAT(userInterface.messages, SizeIs(2));
        EXPECT_EQ(count(), loaded);
        userInterface.messages.clear();
    }
    EXPECT_EQ(scans, 0);
    click("b");
    selection.refreshScreen();
    EXPECT_EQ(cell("select size from details where fileName=\"b\\\""), "4");
    EXPECT_THAT(userInterface.messages, IsEmpty());
}

TEST_F(FolderSelectionTest, walksAFolderOfWhichOnlyASubfolderWasLoaded) {
    load("a");
    click("a");
    EXPECT_EQ(scans, 0);
    selection.cmdGo_Click(tree.typed());
    EXPECT_EQ(scans, 1);
    EXPECT_EQ(cell("select count(*) from details where fileName=\"three.txt\""), "1");
}

// The row numbers at the end that a refresh frees are used again.
TEST_F(FolderSelectionTest, recordsNothingOfAFolderThatIsGone) {
    selection.cmdGo_Click(tree.typed());
    click("a/deep");
    testSystem::removeAll(tree / "a/deep");
    scans = 0;
    click("a/deep");
    EXPECT_EQ(scans, 0);
    EXPECT_EQ(cell("select count(*) from details where parentFolder Like \"*deep*\" or fileName=\"deep\\\""),
              "0");
    EXPECT_EQ(cell("select size from details where fileName=\"a\\\""), "1");
    EXPECT_THAT(userInterface.statuses,
                Contains(std::pair(StatusPanel::folder, "The folder no longer exists.")));
    tree.write("a/deep", "1234"); // a file now
    selection.cmdGo_Click(tree.typed("a"));
    click("a/deep");
    EXPECT_EQ(cell("select size from details where fileName=\"a\\\""), "5");
    EXPECT_EQ(cell("select count(*) from details where fileName Like \"deep*\""), "1");
}

TEST_F(FolderSelectionTest, goesWhereAFolderIsRecorded) {
    if (!testSystem::makeLink(tree / "b", tree / "link")) {
        GTEST_SKIP() << "no links can be made here";
    }
    selection.cmdGo_Click(tree.typed("link"));
    EXPECT_EQ(tvw.selectedKey(), platform::recordedPath(key("link")));
    click("a/deep");
    testSystem::removeAll(tree / "a/deep");
    testSystem::makeLink(tree / "b", tree / "a/deep");
    click("a/deep");
    EXPECT_EQ(tvw.selectedKey(), platform::recordedPath(key("a/deep")));
    const bool isFollowed = tvw.selectedKey() != key("a/deep");
    EXPECT_EQ(cell("select count(*) from details where fileName=\"two.txt\""), isFollowed ? "0" : "1");
}

TEST_F(FolderSelectionTest, scansAgainAllThatWasScanned) {
    selection.cmdGo_Click(tree.typed("b"));
    selection.cmdGo_Click(tree.typed("a"));
    tree.write("a/deep/later.txt", "4444");
    tree.write("b/later.txt", "4444");
    scans = 0;
    selection.scanAgain();
    EXPECT_EQ(scans, 3) << "both, and a look at the selected one";
    EXPECT_EQ(cell("select sum(size) from details where isFolder=0"), "14");
    EXPECT_EQ(tvw.selectedKey(), key("a"));

    userInterface.onYield = [this] { search.CancelScan = true; };
    scans = 0;
    selection.scanAgain();
    EXPECT_EQ(scans, 1) << "cancelled";
    userInterface.onYield = {};

    load();
    tree.write("b/last.txt", "x");
    selection.scanAgain();
    EXPECT_EQ(scans, 0) << "loaded rows stay";
}

TEST_F(FolderSelectionTest, takesNoNewRowForALoadedOne) {
    load("a");
    int folders = 0;
    userInterface.onYield = [&] {
        folders += search.processing ? 1 : 0;
        search.CancelScan = folders == 2; // the files of a are recorded, but a is not stamped
    };
    selection.refreshScreen();
    EXPECT_EQ(folders, 2);
    EXPECT_EQ(cell("select count(*) from details where fileName=\"one.txt\""), "1");
    scans = 0;
    click("a");
    EXPECT_EQ(scans, 1);
}

} // namespace
