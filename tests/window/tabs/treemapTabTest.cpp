#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QClipboard>
#include <QImage>
#include <QTest>
#include <QTimer>

#include "widgets/treemap.h"
#include "window/breadcrumbs.h"
#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The treemap in the window.
class TreemapTab : public MainWindow {
protected:
    Treemap& treemap() { return control<Treemap>("tmp"); }
    // The paths below the folder on show, folders before their contents, once it has been read.
    std::vector<std::string> items(const std::string& folder) {
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return treemap().tree() && treemap().tree()->folder() == folder && treemap().selectable() > 0;
        }));
        std::vector<std::string> result;
        for (int i = 1; i < treemap().selectable(); ++i) {
            result.push_back(treemap().pathOf(i).substr(folder.size()));
        }
        return result;
    }
    void openTreemap() {
        openOnTree();
        command("ViewTreemap");
        static_cast<void>(items(key()));
    }
    QPoint middleOf(const std::string& path) {
        for (int i = treemap().selectable(); i-- > 0;) {
            if (treemap().pathOf(i) == path) {
                return treemap().markOf(i).center().toPoint();
            }
        }
        throw std::out_of_range(path);
    }
    void click(const std::string& path) { QTest::mouseClick(&treemap(), Qt::LeftButton, {}, middleOf(path)); }
    void doubleClick(const std::string& path) {
        click(path);
        QTest::mouseDClick(&treemap(), Qt::LeftButton, {}, middleOf(path));
    }
    // The last part of the path above the tabs, and the part that stands out.
    std::string crumbs() {
        std::string last;
        std::string shown;
        for (const QToolButton* each : control<Breadcrumbs>("breadcrumbs").findChildren<QToolButton*>()) {
            if (each->objectName().startsWith(QStringLiteral("cmdCrumb")) && each->isVisible()) {
                last = each->text().toStdString();
                shown = each->objectName() == QStringLiteral("cmdCrumbLast") ? last : shown;
            }
        }
        return last == shown ? last : last + " below " + shown;
    }
    std::string marks() {
        std::string result;
        for (const char* each : {"ViewBarChart", "ViewPieChart", "ViewTreemap"}) {
            result += control<QAction>(each).isChecked() ? each : "";
        }
        return result;
    }
};

TEST_F(TreemapTab, isOneOfThreeLooks) {
    openTreemap();
    EXPECT_EQ(marks(), "ViewTreemap");
    EXPECT_THAT(items(key()),
                testing::UnorderedElementsAre("a\\", "a\\big.bin", "a\\deep\\", "a\\deep\\x.txt", "b\\",
                                              "b\\note.txt", "own.txt"));
    EXPECT_TRUE(treemap().isVisible());
    EXPECT_FALSE(control<FolderChart>("tc").isVisible());
    command("ViewPieChart");
    EXPECT_EQ(marks(), "ViewPieChart");
    EXPECT_FALSE(treemap().isVisible());
    EXPECT_TRUE(control<FolderChart>("tc").isVisible());
    EXPECT_THAT(bars(), testing::SizeIs(3));
    command("ViewTreemap");
    EXPECT_EQ(marks(), "ViewTreemap");
    command("ViewBarChart");
    EXPECT_EQ(marks(), "ViewBarChart");
    EXPECT_EQ(control<FolderChart>("tc").chartStyle(), ChartStyle::bar);
}

TEST_F(TreemapTab, selectionIsShownAboveAndCommandsApplyToIt) {
    openTreemap();
    const std::string folder = crumbs();
    click(key("a") + "deep\\x.txt");
    EXPECT_EQ(crumbs(), "deep below " + folder);
    EXPECT_EQ(selected(), key()) << "nothing is scanned or left";
    treemap().setFocus();
    command("ItemCopyPath");
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), tree.typed("a/deep/x.txt"));
    tabs().setCurrentIndex(1);
    EXPECT_EQ(crumbs(), folder) << "the list shows the folder";
    tabs().setCurrentIndex(0);
    EXPECT_EQ(crumbs(), "deep below " + folder);
    click(key() + "own.txt");
    EXPECT_EQ(crumbs(), folder);
    dialogs.answer = false;
    QTest::keyClick(&treemap(), Qt::Key_Delete);
    EXPECT_THAT(dialogs.questions, testing::SizeIs(1));
}

TEST_F(TreemapTab, doubleClickGoesThere) {
    openTreemap();
    doubleClick(key("a") + "deep\\x.txt");
    EXPECT_EQ(selected(), key("a/deep"));
    EXPECT_THAT(items(key("a/deep")), ElementsAre("x.txt"));
    EXPECT_EQ(crumbs(), "deep");
    doubleClick(key("a/deep") + "x.txt");
    EXPECT_EQ(tabs().currentIndex(), 1) << "where that file is listed";
    tabs().setCurrentIndex(0);
    static_cast<void>(items(key("a/deep")));
    treemap().setFocus();
    QTest::keyClick(&treemap(), Qt::Key_Backspace);
    EXPECT_EQ(selected(), key("a"));
    static_cast<void>(items(key("a")));
    QTest::keyClick(&treemap(), Qt::Key_Home);
    EXPECT_EQ(treemap().selectedPath(), key("a") + "big.bin");
}

TEST_F(TreemapTab, followsScansAndRows) {
    openTreemap();
    tree.write("a/new.bin", std::string(5000, 'x'));
    pressF5();
    EXPECT_TRUE(QTest::qWaitFor([&] { return treemap().tree()->nodes().front().size == 8260; }));
    tabs().setCurrentIndex(2);
    MainWindow::click(key("b"));
    tabs().setCurrentIndex(0);
    EXPECT_THAT(items(key("b")), ElementsAre("note.txt"));
    dialogs.file = application.typed("saved.mdb");
    command("ExportMDB");
    command("LoadMDB");
    MainWindow::click(key());
    EXPECT_THAT(items(key()), testing::Contains("a\\new.bin"));
}

TEST_F(TreemapTab, growsWhileAScanFillsTheTable) {
    for (int i = 0; i < 60; ++i) {
        tree.write("many/" + std::to_string(i) + "/file.x", std::string(100, 'x'));
    }
    open();
    command("ViewTreemap");
    double most = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, window.get(), [&] {
        if (window->search().isBulkLoad()) {
            auto& tick = control<QTimer>("tmrChart");
            if (tick.interval() > 0) {
                tick.setInterval(0); // instead of a second
            }
            if (treemap().tree() && !treemap().tree()->isEmpty()) {
                most = std::max(most, treemap().tree()->nodes().front().size);
            }
        }
    });
    watch.start(0);
    window->openPath(tree.typed());
    EXPECT_GT(most, 100);
    EXPECT_LE(most, 6000);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return testing::Matches(testing::Contains("many\\7\\file.x"))(items(key()));
    })) << "afterwards files have their places";
}

TEST_F(TreemapTab, isExportedInPlaceOfTheChart) {
    openTreemap();
    tabs().setCurrentIndex(1);
    dialogs.file = application.typed("map.png");
    command("ExportChartEntire");
    EXPECT_EQ(QImage(QString::fromStdString(dialogs.file)).size(), Treemap::usualSize);
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

} // namespace
