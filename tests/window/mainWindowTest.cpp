#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <filesystem>

#include "platform/files.h"
#include "support/unprivileged.h"
#include "views/widgets/listView.h"
#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class MainWindow : public testing::Test, public WindowFixture {
protected:
    // a/big.bin 3000, a/deep/x.txt 10, b/note.txt 200, own.txt 50
    void makeTree() const {
        tree.write("a/big.bin", std::string(3000, 'x'));
        tree.write("a/deep/x.txt", std::string(10, 'x'));
        tree.write("b/note.txt", std::string(200, 'x'));
        tree.write("own.txt", std::string(50, 'x'));
    }
    void openOnTree() {
        makeTree();
        open().openPath(tree.typed());
    }
    void pressF5(const char* focus = "tvw", bool autoRepeat = false) {
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_F5, Qt::NoModifier, {}, autoRepeat);
        QApplication::sendEvent(&control<QWidget>(focus), &release);
    }
    void clickHeader(const char* list, int section) {
        QHeaderView& header = *control<QTreeView>(list).header();
        const int middle = header.sectionViewportPosition(section) + header.sectionSize(section) / 2;
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(middle, header.height() / 2));
    }
    void clickBar(int index) {
        auto& chart = control<FolderChart>("tc");
        QTest::mouseClick(&chart, Qt::LeftButton, {}, chart.markOf(index).center().toPoint());
    }
    QTabWidget& tabs() { return control<QTabWidget>("XTab"); }
    QLineEdit& pathBox() { return control<QLineEdit>("txtPath"); }
    std::string selected() { return control<FolderTree>("tvw").selectedKey(); }
    std::string settingsFile() const { return application.read("settings.ini"); }
};

// --- Start and end --------------------------------------------------------------------------------------

TEST_F(MainWindow, startsEmptyAndSavesOnlyWhatItShould) {
    open();
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("Spannory ")));
    EXPECT_EQ(pathBox().text(), QStringLiteral("(Type network [UNC] path here)"));
    ASSERT_EQ(tabs().count(), 4);
    const char* const captions[] = {"Chart", "Files && Folders", "File Types", "Owners"};
    for (int tab = 0; tab < 4; ++tab) {
        EXPECT_EQ(tabs().tabText(tab).toStdString(), captions[tab]);
        tabs().setCurrentIndex(tab);
    }
    auto& tvw = control<FolderTree>("tvw");
    EXPECT_EQ(tvw.text("ROOT"), QStringLiteral("My Computer"));
    EXPECT_TRUE(tvw.isExpanded("ROOT"));
    EXPECT_FALSE(tvw.findNode("NETWORK"));
    EXPECT_THAT(query("select count(*) from details"), ElementsAre("0"));
    click("ROOT");
    EXPECT_THAT(bars(), IsEmpty());
    EXPECT_FALSE(control<Animation>("ani").isPlaying());

    command("ShowOwners");
    EXPECT_EQ(settingsFile().find("User_Settings"), std::string::npos) << "nothing is written before the end";
    window->close();
    for (const char* line : {"DetailListSortColumn=2", "DetailListSortOrder=1", "FileTypeListSortColumn=3",
                             "FileTypeListSortOrder=1", "UserListSortColumn=2", "UserListSortOrder=1",
                             "getOwnerInfo=0", "dontUseNetwork=1"}) {
        EXPECT_THAT(settingsFile(), HasSubstr(line));
    }
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(MainWindow, opensWhateverIsBroken) {
    const struct {
        const char* name;
        const char* settings;
        bool hasTemplate;
        std::size_t messages;
    } cases[] = {
        {"no template, so no database", "[startup]\r\ndontUseNetwork=1\r\n", false, 1},
        {"a sort column of letters", "[User_Settings]\r\nDetailListSortColumn=abc\r\n", true, 1},
        {"columns that no list has",
         "[User_Settings]\r\nDetailListSortColumn=99\r\nFileTypeListSortColumn=-5\r\nUserListSortColumn="
         "0\r\n",
         true, 0},
        {"garbage", "\x01\xFF[[]=\r\n=\r\n]\0x", true, 0},
    };
    makeTree();
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        dialogs.messages.clear();
        application.write("settings.ini", each.settings);
        application.write("2.avi", "no animation");
        if (each.hasTemplate) {
            platform::copyFile(SPANNORY_TEMPLATE, application.internal("001.dat"));
        } else {
            application.write("001.dat", "no database");
        }
        open().openPath(tree.typed());
        pressF5();
        for (int tab = 0; tab < tabs().count(); ++tab) {
            tabs().setCurrentIndex(tab);
        }
        EXPECT_EQ(selected(), key()) << "the tree works at any rate";
        EXPECT_THAT(dialogs.messages, SizeIs(each.messages));
        EXPECT_EQ(rows("lvwF").size(), each.hasTemplate ? 3U : 0U);
        EXPECT_TRUE(window->close());
        close();
    }
}

TEST_F(MainWindow, remembersItsShape) {
    open().resize(777, 555);
    tabs().setCurrentIndex(2);
    control<QTreeView>("lvwT").header()->resizeSection(1, 123);
    window->close();
    close();
    open();
    EXPECT_EQ(window->size(), QSize(777, 555));
    EXPECT_EQ(tabs().currentIndex(), 2);
    EXPECT_EQ(control<QTreeView>("lvwT").header()->sectionSize(1), 123);
    close();

    application.write("window.ini",
                      "[General]\nXTab=77\ngeometry=x\nlvwT=-5, abc, 2000000000, 60\nlvwF=99\n");
    open();
    EXPECT_EQ(tabs().currentIndex(), 0);
    for (int column = 0; column < 3; ++column) {
        const int width = control<QTreeView>("lvwT").header()->sectionSize(column);
        EXPECT_TRUE(width > 40 && width < 500) << width;
    }
    EXPECT_EQ(control<QTreeView>("lvwF").header()->sectionSize(0), 99);
}

TEST_F(MainWindow, closesWhenTheRunningScanHasEnded) {
    makeTree();
    open();
    bool closedAtOnce = true;
    duringScan([&] { closedAtOnce = window->close(); });
    window->openPath(tree.typed());
    EXPECT_FALSE(closedAtOnce);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->isVisible(); }));
    EXPECT_THAT(settingsFile(), HasSubstr("DetailListSortColumn=2"));
}

// --- Asking for scans -----------------------------------------------------------------------------------

TEST_F(MainWindow, scansWhatIsTypedIntoThePathBox) {
    makeTree();
    open();
    pathBox().setFocus();
    QTest::qWait(0);
    EXPECT_EQ(pathBox().selectedText(), pathBox().text()) << "the first key replaces the hint";
    EXPECT_TRUE(control<QPushButton>("cmdGo").isDefault());
    EXPECT_FALSE(pathBox().acceptDrops()) << "a folder dropped on it is dropped on the window";
    for (const std::string& wrong : {tree.typed("own.txt"), tree.typed("missing"), std::string()}) {
        dialogs.messages.clear();
        pathBox().setText(QString::fromStdString(wrong));
        QTest::keyClick(&pathBox(), Qt::Key_Return);
        EXPECT_THAT(
            dialogs.messages,
            ElementsAre("Directory not found.  You can select a directory in the list on the left hand "
                        "side of the screen, or try again."))
            << wrong;
    }
    dialogs.messages.clear();
    for (int turn = 0; turn < 2; ++turn) { // the second time the node is there already
        pathBox().setText(QString::fromStdString(tree.typed() + (turn == 0 ? "" : "/")));
        QTest::keyClick(&pathBox(), Qt::Key_Return);
        EXPECT_EQ(selected(), key());
        EXPECT_EQ(panel(1), "8 items.");
        EXPECT_TRUE(panel(3).starts_with("Finished in ")) << panel(3);
        EXPECT_TRUE(control<FolderTree>("tvw").parentKey(key()).empty());
    }
    control<FolderTree>("tvw").setFocus();
    EXPECT_FALSE(control<QPushButton>("cmdGo").isDefault());
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(MainWindow, keysReachThePathBoxAndEveryView) {
    open().show();
    QApplication::setActiveWindow(window.get());
    auto& folders = control<FolderTree>("tvw");
    QTest::keyClick(&folders, Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(tabs().currentIndex(), 3);
    QTest::keyClick(&folders, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(tabs().currentIndex(), 0);
    for (int turn = 0; turn < 2; ++turn) { // the second time the keyboard is there already
        QTest::keyClick(window->focusWidget(), Qt::Key_L, Qt::ControlModifier);
        QTest::keyClicks(window->focusWidget(), QStringLiteral("/x"));
        EXPECT_EQ(pathBox().text(), QStringLiteral("/x"));
    }
}

TEST_F(MainWindow, scansAFolderThatIsDropped) {
    makeTree();
    open();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(tree.typed("own.txt"))),
                  QUrl::fromLocalFile(QString::fromStdString(tree.typed("a")))});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    EXPECT_TRUE(QTest::qWaitFor([&] { return selected() == key("a"); }));
    EXPECT_EQ(panel(1), "4 items.");
}

TEST_F(MainWindow, listsScansAndShowsASelectedFolder) {
    openOnTree();
    EXPECT_THAT(bars(), ElementsAre("|Files|=50", "b=200", "a=3010"));
    auto& tvw = control<FolderTree>("tvw");
    EXPECT_THAT(tvw.childKeys(key()), ElementsAre(key("a"), key("b")));
    EXPECT_TRUE(tvw.findNode("DUMMY" + key("a")));
    EXPECT_FALSE(tvw.isExpanded(key("a")));

    tree.write("a/later.txt", "unseen");
    click(key("a"));
    EXPECT_THAT(bars(), ElementsAre("deep=10", "|Files|=3000")) << "stored rows, not walked again";
    tvw.setExpanded(key("a"), true);
    EXPECT_FALSE(tvw.findNode("DUMMY" + key("a")));
    EXPECT_EQ(tvw.tag(key("a")), QStringLiteral("FOLDERS_PROCESSED"));
    EXPECT_THAT(tvw.childKeys(key("a")), ElementsAre(key("a/deep")));
}

TEST_F(MainWindow, marksAFolderThatMayNotBeReadOnce) {
    makeTree();
    open();
    std::filesystem::permissions(tree / "a", std::filesystem::perms::none);
    {
        const Unprivileged nobody;
        if (!nobody.is()) {
            GTEST_SKIP() << "this user reads everything";
        }
        window->openPath(tree.typed());
        click(key("a"));
        click(key("a"));
    }
    std::filesystem::permissions(tree / "a", std::filesystem::perms::owner_all);
    EXPECT_EQ(control<FolderTree>("tvw").text(key("a")), QStringLiteral("a (Access Denied)"));
}

TEST_F(MainWindow, queuesWhatIsClickedDuringAScan) {
    makeTree();
    tree.write("many/1/file", "x");
    open();
    duringScan([&] {
        window->openPath(tree.typed("a"));
        EXPECT_THAT(query("select fileName from details"), IsEmpty()) << "two scans never run at once";
        window->openPath(tree.typed("b"));
    });
    window->openPath(tree.typed("many"));
    EXPECT_THAT(query("select fileName from details"), UnorderedElementsAre("note.txt", "b\\"))
        << "the first was cancelled at its first folder, and only the last click counts";
    EXPECT_EQ(selected(), key("b"));
    EXPECT_THAT(bars(), ElementsAre("|Files|=200"));

    duringScan([&] {
        window->openPath(tree.typed("many"));
        duringScan([&] { window->openPath(tree.typed("a/deep")); }); // within the queued scan
    });
    window->openPath(tree.typed("a"));
    EXPECT_EQ(selected(), key("a/deep"));
    EXPECT_THAT(bars(), ElementsAre("|Files|=10"));
    EXPECT_THAT(query("select fileName from details where fileName=\"file\""), IsEmpty());
    EXPECT_FALSE(window->search().processing);
    EXPECT_FALSE(window->search().CancelScan);
    EXPECT_TRUE(panel(3).starts_with("Finished in "));
}

TEST_F(MainWindow, goesOnWithTheScanOfTheFolderThatIsClickedAgain) {
    makeTree();
    open();
    window->openPath(tree.typed("a"));
    duringScan([&] {
        click(key());
        EXPECT_FALSE(window->search().CancelScan);
    });
    window->openPath(tree.typed());
    EXPECT_EQ(panel(1), "8 items.") << "nothing is recorded twice";
    tree.write("b/later.txt", "x");
    duringScan([&] { pressF5(); });
    pressF5();
    EXPECT_THAT(query("select fileName from details where fileName=\"later.txt\""), SizeIs(testing::Ge(1U)))
        << "a refresh begins again";
}

TEST_F(MainWindow, cancelsByMenuAndEscape) {
    makeTree();
    open();
    const std::function<void()> ways[] = {
        [this] { command("CancelScan"); },
        [this] { QTest::keyClick(&control<FolderTree>("tvw"), Qt::Key_Escape); },
    };
    for (const auto& cancel : ways) {
        bool played = false;
        duringScan([&] {
            played = control<Animation>("ani").isPlaying();
            cancel();
        });
        window->openPath(tree.typed());
        EXPECT_THAT(query("select count(*) from details where scanCompleteTime is not null"),
                    ElementsAre("0"));
        EXPECT_TRUE(played);
        EXPECT_FALSE(control<Animation>("ani").isPlaying());
        pressF5();
        EXPECT_THAT(query("select count(*) from details where scanCompleteTime is null and isFolder=1"),
                    ElementsAre("0"));
        window->database().database().Execute("delete * from details");
    }
    command("CancelScan"); // nothing runs: the next scan is not meant
    window->openPath(tree.typed());
    EXPECT_EQ(panel(1), "8 items.");
}

TEST_F(MainWindow, showsOneMessageOfAScanAndCountsTheOthers) {
    QStatusBar statusBar;
    QProgressBar progressBar;
    WindowInterface interface(dialogs, statusBar, progressBar);
    for (const int errors : {1, 3, 0}) {
        dialogs.messages.clear();
        interface.beginScan();
        for (int i = 0; i < errors; ++i) {
            interface.message("an error");
        }
        interface.endScan();
        EXPECT_THAT(dialogs.messages, SizeIs(static_cast<std::size_t>(std::min(errors, 2))));
    }
    interface.message("afterwards");
    EXPECT_THAT(dialogs.messages, ElementsAre("afterwards"));
}

TEST_F(MainWindow, refreshesNarrowly) {
    open();
    pressF5();
    EXPECT_THAT(dialogs.messages, ElementsAre("You must first select a folder."));
    makeTree();
    window->openPath(tree.typed());
    tabs().setCurrentIndex(1);
    EXPECT_THAT(rows("lvwF"), SizeIs(3));

    tree.write("new.txt", "12345");
    pressF5("tvw", true);
    EXPECT_EQ(panel(1), "8 items.") << "a key held down refreshes when it is released";
    pressF5();
    EXPECT_THAT(rows("lvwF"), SizeIs(4));
    // The rows of a and b were deleted, so that both are scanned again, but those of their files were not.
    EXPECT_THAT(query("select fileName from details where fileName=\"note.txt\""), SizeIs(2));
    EXPECT_THAT(query("select fileName from details where fileName=\"x.txt\""), SizeIs(1));
    command("Refresh");
    EXPECT_THAT(query("select fileName from details where fileName=\"note.txt\""), SizeIs(3));
    EXPECT_THAT(rows("lvwF"), SizeIs(4));
    std::size_t times = 3;
    for (const char* focus : {"txtPath", "cmdGo", "lvwF", "XTab"}) {
        pressF5(focus);
        EXPECT_THAT(query("select fileName from details where fileName=\"note.txt\""), SizeIs(++times))
            << focus;
    }
    EXPECT_THAT(dialogs.messages, SizeIs(1));
}

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
    const auto owners = query("select owner from details where fileName=\"own.txt\"");
    ASSERT_THAT(rows("lvwU"), SizeIs(1));
    EXPECT_THAT(rows("lvwU")[0], HasSubstr("|3.2 Kb|4"));
    click(key("b"));
    EXPECT_THAT(rows("lvwU")[0], HasSubstr("|200 bytes|1"));
    EXPECT_THAT(rows("lvwT"), SizeIs(2)) << "a view follows when its tab is chosen";
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
    EXPECT_EQ(firstNames(1), "own.txt") << "clicked again: the other way round";
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
    clickBar(0);
    EXPECT_EQ(selected(), key("a/deep"));
    EXPECT_TRUE(control<FolderTree>("tvw").isExpanded(key("a")));
    EXPECT_THAT(bars(), ElementsAre("|Files|=10"));

    std::filesystem::remove_all(tree / "b");
    click(key());
    clickBar(1);
    EXPECT_EQ(selected(), key("b"));
    EXPECT_THAT(dialogs.messages, IsEmpty()) << "a folder that is gone is shown from its rows";
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
    EXPECT_THAT(bars(), ElementsAre("b=200", "a=3010")) << "drawn anew from the rows";

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
