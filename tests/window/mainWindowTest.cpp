#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QTest>

#include "platform/files.h"
#include "support/expected.h"
#include "support/testSystem.h"
#include "window/windowFixture.h"

using namespace std::string_literals;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

// --- Start and end --------------------------------------------------------------------------------------

TEST_F(MainWindow, startsEmptyAndSavesOnlyWhatItShould) {
    open();
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("Spannory ")));
    EXPECT_EQ(pathBox().text(), QStringLiteral("(Type network [UNC] path here)"));
    ASSERT_EQ(tabs().count(), 5);
    const char* const captions[] = {"Chart", "Files && Folders", "File Types", "Owners", "Find"};
    for (int tab = 0; tab < 5; ++tab) {
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
        std::string settings;
        bool hasTemplate;
        std::size_t messages;
    } cases[] = {
        {"somebody else's file where the database should be",
         "[startup]\r\ndontUseNetwork=1\r\n[APPLICATION_SETTINGS]\r\ndatabasePath=" +
             application.typed("thesis.txt") + "\r\n",
         true, 1},
        {"no template, so no database", "[startup]\r\ndontUseNetwork=1\r\n", false, 1},
        {"a sort column of letters", "[User_Settings]\r\nDetailListSortColumn=abc\r\n", true, 1},
        {"columns that no list has",
         "[User_Settings]\r\nDetailListSortColumn=99\r\nFileTypeListSortColumn=-5\r\nUserListSortColumn="
         "0\r\n",
         true, 0},
        {"garbage", "\x01\xFF[[]=\r\n=\r\n]\0x"s, true, 0},
    };
    makeTree();
    application.write("thesis.txt", "precious");
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        dialogs.messages.clear();
        application.write("settings.ini", each.settings);
        application.write("2.avi", "no animation");
        if (each.hasTemplate) {
            platform::copyFile(templateFile(), application.internal("001.dat"));
        } else {
            application.write("001.dat", "no database");
        }
        open().openPath(tree.typed());
        pressF5();
        for (int tab = 0; tab < tabs().count(); ++tab) {
            tabs().setCurrentIndex(tab);
        }
        EXPECT_EQ(selected(), key()) << "the tree works in any case";
        EXPECT_THAT(dialogs.messages, SizeIs(each.messages));
        EXPECT_EQ(rows("lvwF").size(), each.hasTemplate ? 3U : 0U);
        EXPECT_TRUE(window->close());
        close();
    }
    EXPECT_EQ(application.read("thesis.txt"), "precious");
}

TEST_F(MainWindow, remembersItsShape) {
    open().resize(900, 555);
    tabs().setCurrentIndex(3);
    tabs().setCurrentIndex(2); // the views behind it do not notice that the window gets smaller
    window->resize(777, 555);
    control<QTreeView>("lvwT").header()->resizeSection(1, 123);
    window->close();
    close();
    open();
    EXPECT_EQ(window->size(), QSize(777, 555));
    EXPECT_EQ(tabs().currentIndex(), 2);
    EXPECT_EQ(control<QTreeView>("lvwT").header()->sectionSize(1), 123);
    tabs().setCurrentIndex(3);
    EXPECT_EQ(control<QTreeView>("lvwU").header()->length(), control<QTreeView>("lvwU").viewport()->width());
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

TEST_F(MainWindow, opensWhateverLiesInPlaceOfItsState) {
    const std::filesystem::path state = application / "window.ini";
    if (!testSystem::makePipe(state)) {
        GTEST_SKIP() << "this system has no pipes among its files";
    }
    open();
    EXPECT_TRUE(window->isVisible());
    window->close();
    EXPECT_TRUE(std::filesystem::is_fifo(state));
    close();
    std::filesystem::remove(state);
    open().close();
    constexpr auto own = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    EXPECT_EQ(std::filesystem::status(state).permissions(), own);
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
    EXPECT_FALSE(pathBox().acceptDrops()) << "a folder dropped on it goes to the window";
    for (const std::string& wrong : {tree.typed("own.txt"), tree.typed("missing"), std::string()}) {
        dialogs.messages.clear();
        pathBox().setText(QString::fromStdString(wrong));
        QTest::keyClick(&pathBox(), Qt::Key_Return);
        EXPECT_THAT(
            dialogs.messages,
            ElementsAre("Directory not found.  You can select a directory in the list on the left hand "
                        "side of the screen, or try again."))
            << wrong;
        EXPECT_EQ(dialogs.subjects, wrong.empty() ? std::vector<std::string>() : std::vector{wrong});
        dialogs.subjects.clear();
    }
    dialogs.messages.clear();
    for (int turn = 0; turn < 2; ++turn) { // the second time, the node already exists
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
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    auto& folders = control<FolderTree>("tvw");
    QTest::keyClick(&folders, Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(tabs().currentIndex(), 4);
    QTest::keyClick(&folders, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(tabs().currentIndex(), 0);
    for (int turn = 0; turn < 2; ++turn) { // the second time, it already has the focus
        QTest::keyClick(window->focusWidget(), Qt::Key_L, Qt::ControlModifier);
        QTest::keyClicks(window->focusWidget(), QStringLiteral("/x"));
        EXPECT_EQ(pathBox().text(), QStringLiteral("/x"));
    }
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
    EXPECT_THAT(bars(), ElementsAre("deep=10", "|Files|=3000")) << "recorded rows, not scanned again";
    tvw.setExpanded(key("a"), true);
    EXPECT_FALSE(tvw.findNode("DUMMY" + key("a")));
    EXPECT_EQ(tvw.tag(key("a")), QStringLiteral("FOLDERS_PROCESSED"));
    EXPECT_THAT(tvw.childKeys(key("a")), ElementsAre(key("a/deep")));
}

TEST_F(MainWindow, marksAFolderThatMayNotBeReadOnce) {
    makeTree();
    open();
    {
        const testSystem::ClosedFolder closed(tree / "a");
        if (!closed.isClosed()) {
            GTEST_SKIP() << "this user may read everything";
        }
        window->openPath(tree.typed());
        click(key("a"));
        click(key("a"));
    }
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
    command("CancelScan"); // nothing is running, and the next scan must not be cancelled
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
    // Each refresh scans a and b again, but not deeper folders; every file counts once.
    tree.write("a/deep/x.txt", "");
    std::string content;
    const auto refreshed = [&] {
        return query(
            "select size from details where fileName=\"note.txt\" or fileName=\"x.txt\" order by size");
    };
    const auto changed = [&] {
        content += "12345678901";
        tree.write("b/note.txt", content);
        return ElementsAre("10", std::to_string(content.size()));
    };
    const auto first = changed();
    command("Refresh");
    EXPECT_THAT(refreshed(), first);
    EXPECT_THAT(rows("lvwF"), SizeIs(4));
    for (const char* focus : {"txtPath", "cmdGo", "lvwF", "XTab"}) {
        const auto expected = changed();
        pressF5(focus);
        EXPECT_THAT(refreshed(), expected) << focus;
    }
    EXPECT_THAT(dialogs.messages, SizeIs(1));
}

// A desktop may turn dark in the evening.
TEST_F(MainWindow, followsThePaletteWhileItIsOpen) {
    openOnTree();
    const QPalette before = QApplication::palette();
    QPalette dark;
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button}) {
        dark.setColor(role, QColor(40, 40, 40));
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        dark.setColor(role, Qt::white);
    }
    for (const QPalette& palette : {dark, before}) {
        QApplication::setPalette(palette);
        QApplication::processEvents();
        for (const QWidget* widget : window->findChildren<QWidget*>()) {
            const auto lightness = [widget](QPalette::ColorRole role) {
                return widget->palette().color(QPalette::Active, role).lightness();
            };
            EXPECT_EQ(lightness(QPalette::WindowText) > 128, palette == dark)
                << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
            EXPECT_EQ(lightness(widget->backgroundRole()) < 128, palette == dark)
                << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
        }
    }
}

} // namespace
