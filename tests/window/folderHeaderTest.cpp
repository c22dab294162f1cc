#include "window/folderHeader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <functional>

#include "base/formatSize.h"
#include "support/testSystem.h"
#include "window/windowFixture.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class HeaderInWindow : public MainWindow {
protected:
    std::string label(const char* name) { return control<QLabel>(name).text().toStdString(); }
    std::string figures() { return label("lblFigures"); }
    QList<QToolButton*> crumbs() {
        QList<QToolButton*> shown;
        for (QToolButton* each : control<QWidget>("breadcrumbs").findChildren<QToolButton*>()) {
            if (each->isVisible() && each->objectName().startsWith(QStringLiteral("cmdCrumb"))) {
                shown.push_back(each);
            }
        }
        return shown;
    }
    QToolButton& crumbOf(std::string_view folder) {
        for (QToolButton* each : control<QWidget>("breadcrumbs").findChildren<QToolButton*>()) {
            if (each->accessibleName().toStdString() == tree.typed(folder) && !each->isHidden()) {
                return *each;
            }
        }
        throw std::runtime_error("no button");
    }
};

TEST_F(HeaderInWindow, saysWhatToDoAndThenWhatTheFolderHolds) {
    makeTree();
    open();
    EXPECT_EQ(figures(), "Choose a folder on the left, type a path, or drop a folder here.");
    EXPECT_FALSE(control<QWidget>("breadcrumbs").isVisible());
    const std::pair<const char*, const char*> cases[] = {
        {"", "3.2 Kb, 4 files, 3 folders"},
        {"a", "2.9 Kb, 2 files, 1 folder"},
        {"a/deep", "10 bytes, 1 file, 0 folders"},
    };
    for (const auto& [name, expected] : cases) {
        window->openPath(tree.typed(name));
        EXPECT_EQ(figures(), expected);
        EXPECT_THAT(label("lblDrive"), EndsWith(" free"));
        EXPECT_THAT(label("lblDrive"), HasSubstr("% of used space, "));
    }
    click("ROOT");
    EXPECT_EQ(figures(), cases[2].second) << "as the views";
    tree.write("a/deep/more.txt", "12345");
    pressF5();
    EXPECT_EQ(figures(), cases[2].second);
    window->openPath(tree.typed("a/deep"));
    pressF5();
    EXPECT_EQ(figures(), "15 bytes, 2 files, 0 folders");
    testSystem::removeAll(tree / "a/deep");
    window->openPath(tree.typed());
    click(key("a"));
    control<FolderTree>("tvw").selectNode(key("a/deep"));
    QTest::keyClick(&control<FolderTree>("tvw"), Qt::Key_Return);
    EXPECT_EQ(figures(), "") << "it is gone";
}

TEST_F(HeaderInWindow, growsWithTheScanAndKeepsTheMarkOfACancelledOne) {
    makeTree();
    open();
    for (const bool intoEmptyTable : {true, false}) {
        std::string growing;
        std::string items;
        duringScan([&] {
            control<QTimer>("tmrChart").start(0);
            EXPECT_TRUE(QTest::qWaitFor([&] { return panel(1).ends_with(" items so far"); })) << panel(1);
            growing = figures();
            command("CancelScan");
        });
        window->openPath(tree.typed(intoEmptyTable ? "" : "second"));
        EXPECT_TRUE(growing.ends_with(" folders …") || !intoEmptyTable) << growing;
        EXPECT_THAT(panel(1), EndsWith(" items."));
        EXPECT_TRUE(figures().empty() || figures().ends_with(" …")) << figures();
        pressF5();
        EXPECT_THAT(figures(), EndsWith(intoEmptyTable ? " 3 folders" : " 1 folder"));
        tree.write("second/1/file", "x");
    }
}

// What the scan has recorded of a subfolder without a row counts in both; all else of the drive does not.
TEST_F(HeaderInWindow, agreesWithTheChartDuringAScanOfAFolderAbove) {
    tree.write("a/1", std::string(5000, 'x'));
    tree.write("m/1", std::string(7000, 'x'));
    for (int i = 0; i < 300; ++i) { // there is time to look
        tree.write("m/d" + std::to_string(i) + "/2", std::string(300, 'x'));
    }
    open();
    window->openPath(tree.typed("a"));
    std::string header;
    std::function<void()> look = [&] {
        control<QTimer>("tmrChart").start(0);
        QTest::qWait(1);
        double total = 0;
        bool isUnfinished = false;
        for (const ChartEntry& entry : control<FolderChart>("tc").entries()) {
            total += entry.size;
            isUnfinished = isUnfinished || (entry.unfinished && entry.size > 0);
        }
        if (isUnfinished) {
            header = figures();
            EXPECT_THAT(header, StartsWith(modLvw::formatSize(total) + ", "));
        } else {
            EXPECT_NE(figures(), "");
            duringScan(look);
        }
    };
    duringScan(look);
    window->openPath(tree.typed());
    EXPECT_NE(header, "");
}

TEST_F(HeaderInWindow, losesTheMarkWhenAScanOfAFolderAboveIsComplete) {
    makeTree();
    open();
    duringScan([&] { command("CancelScan"); });
    window->openPath(tree.typed("a"));
    EXPECT_THAT(figures(), testing::AnyOf("", EndsWith(" …")));
    window->openPath(tree.typed());
    click(key("a"));
    EXPECT_EQ(figures(), "2.9 Kb, 2 files, 1 folder");
}

TEST_F(HeaderInWindow, pathIsMadeOfButtonsThatShowTheirFolders) {
    makeTree();
    open();
    window->resize(1600, 700);
    window->openPath(tree.typed("a/deep"));
    crumbOf("a").click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return selected() == key("a"); }));
    EXPECT_EQ(figures(), "2.9 Kb, 2 files, 1 folder") << "it was scanned, though it was not in the tree";
    click(key("a/deep"));
    crumbOf("a").click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return selected() == key("a"); }));

    crumbOf("").click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return selected() == key(); }));
    EXPECT_EQ(panel(1), "8 items.");
}

TEST_F(HeaderInWindow, foldersAboveThatHaveNoRoomAreInAMenu) {
    const std::string deep = "one folder/another folder/a third folder & more/the last of all these folders";
    tree.write(deep + "/file.txt", "x");
    open();
    window->openPath(tree.typed(deep));
    auto& more = control<QToolButton>("cmdCrumbMore");
    auto& row = control<QWidget>("breadcrumbs");
    for (const int width : {1900, 900, 640, 480}) {
        window->resize(width, 600);
        QApplication::processEvents();
        int right = 0;
        for (const QToolButton* each : crumbs()) {
            EXPECT_GE(each->x(), right) << width;
            right = each->geometry().right();
        }
        EXPECT_LE(right, row.width()) << width;
        EXPECT_EQ(crumbs().back()->accessibleName().toStdString(), tree.typed(deep)) << width;
        EXPECT_EQ(more.isVisible(), width < 1900) << width;
    }
    const QList<QAction*> above = more.menu()->actions();
    ASSERT_FALSE(above.empty());
    EXPECT_EQ(above.front()->text(), QStringLiteral("a third folder && more")) << "the nearest first";
    above.front()->trigger();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return selected() == key("one folder/another folder/a third folder & more"); }));
}

TEST_F(HeaderInWindow, namesTheSavedScanUntilNothingOfItIsLeft) {
    openOnTree();
    dialogs.file = application.typed("saved.mdb");
    command("ExportMDB");
    EXPECT_FALSE(control<QLabel>("lblSavedScan").isVisible());
    command("LoadMDB");
    EXPECT_TRUE(control<QLabel>("lblSavedScan").isVisible());
    EXPECT_THAT(label("lblSavedScan"), StartsWith("Saved scan: " + application.typed("saved.mdb") + " ("));
    EXPECT_EQ(figures(), "3.2 Kb, 4 files, 3 folders");
    EXPECT_EQ(label("lblDrive"), "") << "it may be of another machine";
    click(key("a"));
    EXPECT_EQ(figures(), "2.9 Kb, 2 files, 1 folder");
    EXPECT_TRUE(control<QLabel>("lblSavedScan").isVisible());
    click(key());
    pressF5();
    EXPECT_THAT(label("lblSavedScan"), StartsWith("Partly scanned again. Saved scan: "));
    click(key("a/deep"));
    EXPECT_THAT(label("lblSavedScan"), StartsWith("Saved scan: "));
    pressF5();
    EXPECT_FALSE(control<QLabel>("lblSavedScan").isVisible()) << "all of it was scanned here";
    command("ExactFigures"); // so that F5 leaves nothing
    click(key());
    pressF5();
    EXPECT_FALSE(control<QLabel>("lblSavedScan").isVisible());
    EXPECT_THAT(label("lblDrive"), EndsWith(" free"));
}

} // namespace
