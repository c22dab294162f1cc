#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QTest>
#include <QTimer>
#include <filesystem>

#include "widgets/chartLabel.h"
#include "widgets/listView.h"
#include "widgets/qtText.h"
#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// --- The views ------------------------------------------------------------------------------------------

TEST_F(MainWindow, showsTheRowsOnEveryTab) {
    openOnTree();
    tabs().setCurrentIndex(1);
    ASSERT_THAT(rows("lvwF"), SizeIs(3));
    EXPECT_THAT(rows("lvwF")[0], HasSubstr("a|2.9 Kb|")) << "largest first";
    EXPECT_THAT(rows("lvwF")[2], HasSubstr("own.txt|50 bytes|"));
    tabs().setCurrentIndex(2);
    EXPECT_THAT(rows("lvwT"), ElementsAre("txt|260 bytes|3", "bin|2.9 Kb|1"));
    tabs().setCurrentIndex(3);
    ASSERT_THAT(rows("lvwU"), SizeIs(1));
    EXPECT_THAT(rows("lvwU")[0], HasSubstr("|3.2 Kb|4"));
    click(key("b"));
    EXPECT_THAT(rows("lvwU")[0], HasSubstr("|200 bytes|1"));
    EXPECT_THAT(rows("lvwT"), SizeIs(2)) << "a view is updated when its tab is chosen";
    tabs().setCurrentIndex(2);
    EXPECT_THAT(rows("lvwT"), ElementsAre("txt|200 bytes|1"));
}

TEST_F(MainWindow, remembersHowListsAreSorted) {
    openOnTree();
    tabs().setCurrentIndex(1);
    auto& list = control<ListView>("lvwF");
    const auto firstNames = [&](int column) {
        clickHeader("lvwF", column - 1);
        return rows("lvwF")[0].substr(0, rows("lvwF")[0].find('|'));
    };
    EXPECT_EQ(firstNames(1), "a");
    EXPECT_EQ(firstNames(1), "own.txt") << "clicking again reverses the order";
    EXPECT_EQ(window->settings().lvwFSortColumn(), 1);
    EXPECT_EQ(window->settings().lvwFSortOrder(), 1);
    click(key("a"));
    EXPECT_EQ(rows("lvwF")[0].substr(0, 4), "deep") << "a refilled list is sorted as before";
    EXPECT_EQ(list.selectedRow(), 0);
    window->close();
    EXPECT_THAT(settingsFile(), HasSubstr("DetailListSortColumn=1"));
}

TEST_F(MainWindow, descendsIntoFoldersFromListAndChart) {
    openOnTree();
    tabs().setCurrentIndex(1);
    auto& list = control<ListView>("lvwF");
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(selected(), key("a"));
    EXPECT_THAT(rows("lvwF"), SizeIs(2));

    tabs().setCurrentIndex(0);
    clickBar(1);
    EXPECT_EQ(selected(), key("a")) << "the files' bar opens nothing";
    EXPECT_EQ(tabs().currentIndex(), 0);
    clickBar(0);
    EXPECT_EQ(selected(), key("a/deep"));
    EXPECT_TRUE(control<FolderTree>("tvw").isExpanded(key("a")));
    EXPECT_THAT(bars(), ElementsAre("|Files|=10"));
    EXPECT_EQ(control<FolderChart>("tc").state().folder, modQt::shownPath(key("a/deep")));

    auto& chart = control<FolderChart>("tc");
    clickBar(0);
    QTest::mouseDClick(&chart, Qt::LeftButton, {}, chart.markOf(0).center().toPoint());
    EXPECT_EQ(tabs().currentIndex(), 1) << "where those files are";
    tabs().setCurrentIndex(0);
    chart.setFocus();
    QTest::keyClick(&chart, Qt::Key_Home);
    QTest::keyClick(&chart, Qt::Key_Return);
    EXPECT_EQ(tabs().currentIndex(), 1);
    tabs().setCurrentIndex(0);

    std::filesystem::remove_all(tree / "b");
    click(key());
    clickBar(1);
    EXPECT_EQ(selected(), key("b"));
    EXPECT_THAT(dialogs.messages, IsEmpty()) << "a deleted folder is shown from its rows";
}

TEST_F(MainWindow, showsAScanGrow) {
    for (int i = 0; i < 50; ++i) {
        tree.write("many/" + std::to_string(i) + "/file", "x");
    }
    open();
    std::size_t barsSeen = 0;
    std::size_t rowsSeen = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, window.get(), [&] {
        if (window->search().processing) {
            auto& tick = control<QTimer>("tmrChart");
            if (tick.interval() > 0) {
                tick.setInterval(0); // instead of a second
            }
            barsSeen = std::max(barsSeen, bars().size());
            rowsSeen = std::max(rowsSeen, rows("lvwF").size());
        }
    });
    watch.start(0);
    window->openPath(tree.typed("many"));
    EXPECT_GT(barsSeen, 0U);
    tabs().setCurrentIndex(1);
    window->database().database().Execute("delete * from details");
    pressF5();
    EXPECT_GT(rowsSeen, 0U);
    EXPECT_THAT(rows("lvwF"), SizeIs(50));
}

TEST_F(MainWindow, chartShowsTheFolderBeingRead) {
    for (int i = 0; i < 50; ++i) {
        tree.write("many/" + std::to_string(i) + "/file", "x");
    }
    open();
    double most = 0;
    QString name;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, window.get(), [&] {
        if (window->search().processing) {
            auto& tick = control<QTimer>("tmrChart");
            if (tick.interval() > 0) {
                tick.setInterval(0); // instead of a second
            }
            const FolderChart& chart = control<FolderChart>("tc");
            for (const ChartEntry& entry : chart.entries()) {
                if (entry.unfinished && entry.size > most) {
                    most = entry.size;
                    name = chartLabel(entry);
                }
            }
        }
    });
    watch.start(0);
    window->openPath(tree.typed());
    EXPECT_GT(most, 1);
    EXPECT_LE(most, 50);
    EXPECT_EQ(name, QStringLiteral("many\u2026"));
    EXPECT_THAT(bars(), ElementsAre("many=50"));
    EXPECT_FALSE(control<FolderChart>("tc").entries().front().unfinished);
}

// --- Commands -------------------------------------------------------------------------------------------

TEST_F(MainWindow, carriesOutTheMenusCommands) {
    openOnTree();
    const auto isChecked = [&](const char* name) {
        return window->findChild<QAction*>(QString::fromUtf8(name))->isChecked();
    };
    EXPECT_TRUE(isChecked("ViewBarChart"));
    command("ViewPieChart");
    EXPECT_EQ(control<FolderChart>("tc").chartStyle(), ChartStyle::pie);
    EXPECT_TRUE(isChecked("ViewPieChart"));
    EXPECT_FALSE(isChecked("ViewBarChart"));
    window->database().database().Execute("delete * from details where fileName=\"own.txt\"");
    command("ViewBarChart");
    EXPECT_EQ(control<FolderChart>("tc").chartStyle(), ChartStyle::bar);
    EXPECT_THAT(bars(), ElementsAre("b=200", "a=3010")) << "redrawn from the rows";

    EXPECT_TRUE(isChecked("ShowOwners"));
    command("ShowOwners");
    EXPECT_FALSE(isChecked("ShowOwners"));
    click(key("b"));
    command("Refresh");
    EXPECT_THAT(query("select owner from details where fileName=\"note.txt\""), ElementsAre(""));
    command("HelpAbout");
    EXPECT_EQ(dialogs.abouts, 1);
    command("ExitApp");
    EXPECT_FALSE(window->isVisible());
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

} // namespace
