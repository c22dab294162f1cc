#include "window/pathBox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QTest>
#include <atomic>
#include <condition_variable>
#include <mutex>

#include "platform/locale.h"
#include "platform/paths.h"
#include "window/folderCompletion.h"
#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PathBoxInWindow : public MainWindow {
protected:
    std::string shown() { return pathBox().text().toStdString(); }
};

TEST_F(PathBoxInWindow, showsTheFolderOnShowUnlessAnotherIsBeingTyped) {
    openActive();
    window->openPath(tree.typed());
    click(key("a"));
    EXPECT_EQ(shown(), tree.typed("a"));
    QTest::keyClick(window->focusWidget(), Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(pathBox().selectedText(), pathBox().text());
    QTest::keyClick(&pathBox(), Qt::Key_Return);
    EXPECT_EQ(selected(), key("a"));

    pathBox().selectAll();
    QTest::keyClicks(&pathBox(), QString::fromStdString(tree.typed("b")));
    duringScan([&] { window->openPath(tree.typed("a/deep")); });
    QTest::keyClick(&pathBox(), Qt::Key_Return);
    EXPECT_EQ(shown(), tree.typed("a/deep"));
    pathBox().setFocus();
    QTest::qWait(0); // all of it is selected
    pathBox().end(false);
    QTest::keyClicks(&pathBox(), QStringLiteral("x"));
    Q_EMIT control<FolderTree>("tvw").nodeClicked(key());
    EXPECT_EQ(shown(), tree.typed("a/deep") + "x");
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(PathBoxInWindow, givesTheFocusToWhatItOpened) {
    openActive();
    window->openPath(tree.typed());
    dialogs.file = application.typed("saved.mdb");
    command("ExportMDB");
    const std::string missing = tree.typed("missing");
    application.write("words.mdb", "no scan");
    const struct {
        int tab;
        std::string typed;
        const char* focused;
    } cases[]{{0, tree.typed("a"), "tc"},   {1, tree.typed("b"), "lvwF"},
              {2, tree.typed("b"), "lvwT"}, {3, tree.typed("a"), "lvwU"},
              {1, missing, "txtPath"},      {1, application.typed("words.mdb"), "txtPath"},
              {1, dialogs.file, "lvwF"}};
    for (const auto& each : cases) {
        tabs().setCurrentIndex(each.tab);
        QTest::keyClick(window->focusWidget(), Qt::Key_L, Qt::ControlModifier);
        QTest::keyClicks(&pathBox(), QString::fromStdString(each.typed));
        window->openPath(tree.typed()); // as if it had been dropped meanwhile
        ASSERT_EQ(window->focusWidget(), &pathBox());
        pathBox().setText(QString::fromStdString(each.typed));
        QTest::keyClick(&pathBox(), Qt::Key_Return);
        EXPECT_EQ(window->focusWidget()->objectName(), QString::fromUtf8(each.focused)) << each.typed;
    }
    QTest::keyClick(window->focusWidget(), Qt::Key_Home);
    const std::string before = selected();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    for (const int tab : {1, 0}) {
        tabs().setCurrentIndex(tab);
        auto& view = control<QWidget>(tab == 0 ? "tc" : "lvwF");
        view.setFocus(Qt::TabFocusReason);
        QApplication::sendEvent(&view, &held);
        EXPECT_EQ(selected(), before) << "Enter may still be down from the path box";
    }
}

// A box of its own, whose folders are made up.
class Completion : public testing::Test {
protected:
    Completion() {
        box.show();
        box.activateWindow();
        box.setFocus();
    }
    // What is offered, once there is something or this time has passed.
    std::vector<std::string> offered(int milliseconds = 2000) {
        const QAbstractItemView* const list = box.completer()->popup();
        std::vector<std::string> paths;
        if (QTest::qWaitFor([&] { return list->isVisible(); }, milliseconds)) {
            for (int row = 0; row < list->model()->rowCount(); ++row) {
                paths.push_back(list->model()->index(row, 0).data().toString().toStdString());
            }
        }
        return paths;
    }
    void type(const char* text) {
        box.clear();
        box.completer()->popup()->hide();
        QTest::keyClicks(&box, QString::fromUtf8(text));
    }

    QLineEdit box;
};

TEST_F(Completion, offersFoldersThatBeginAsTyped) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
    const auto listings = std::make_shared<std::atomic<int>>(0); // the threads may outlive the test
    FolderCompletion completion(box, [listings](const QString& folder) {
        ++*listings;
        return folder == QStringLiteral("/home/")
                   ? QStringLiteral("bea|anna|.hidden|anton|an\nother|Anna 2").split(u'|')
                   : QStringList();
    });
    const struct {
        const char* typed;
        std::vector<std::string> offered;
    } cases[]{{"/home/an", platform::namesIgnoreCase()
                               ? std::vector<std::string>{"/home/anna", "/home/Anna 2", "/home/anton"}
                               : std::vector<std::string>{"/home/anna", "/home/anton"}},
              {"/home/.", {"/home/.hidden"}},
              {"/home/b", {"/home/bea"}}};
    for (const auto& each : cases) {
        type(each.typed);
        EXPECT_EQ(offered(), each.offered) << each.typed;
    }
    for (const char* typed : {"home", "/home/anton", "/home/x", "/nowhere/a"}) {
        type(typed);
        EXPECT_THAT(offered(100), IsEmpty()) << typed;
    }
    type("/home/an");
    EXPECT_FALSE(offered().empty());
    QTest::keyClick(box.completer()->popup(), Qt::Key_Down);
    QTest::keyClick(box.completer()->popup(), Qt::Key_Return);
    EXPECT_EQ(box.text(), QStringLiteral("/home/anna"));
    EXPECT_FALSE(box.completer()->popup()->isVisible());
    EXPECT_LE(*listings, 20) << "once for each folder that was typed on the way";
}

TEST_F(Completion, goesOnWhileADriveDoesNotAnswer) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
    struct Gate {
        std::mutex mutex;
        std::condition_variable opened;
        bool isOpen = false;
        int entered = 0;
        int left = 0;
    };
    const auto gate = std::make_shared<Gate>();
    {
        FolderCompletion completion(box, [gate](const QString& folder) {
            if (folder.startsWith(QStringLiteral("/dead"))) {
                std::unique_lock lock(gate->mutex);
                ++gate->entered;
                gate->opened.wait(lock, [&] { return gate->isOpen; });
                ++gate->left;
            }
            return QStringList{QStringLiteral("folder")};
        });
        type("/dead/f");
        type("/home/f");
        EXPECT_THAT(offered(), ElementsAre("/home/folder"));
        for (int i = 0; i < 9; ++i) {
            type(("/dead" + std::to_string(i) + "/f").c_str());
        }
        EXPECT_THAT(offered(50), IsEmpty());
    } // those that wait outlive it
    {
        const std::lock_guard lock(gate->mutex);
        gate->isOpen = true;
    }
    gate->opened.notify_all();
    const auto counts = [&] {
        const std::lock_guard lock(gate->mutex);
        return std::pair(gate->entered, gate->left);
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return counts().first == counts().second; }));
    EXPECT_GE(counts().first, 1);
    EXPECT_LE(counts().first, 4) << "no more threads wait at the same time";
}

TEST(CompletionLister, listsFoldersAndNothingElse) {
    const TemporaryFolder folder;
    for (const char* file : {"one/x", "Two/x", ".three/x", "file"}) {
        folder.write(file, "x");
    }
    const QString typed = QString::fromStdString(folder.typed()) + QLatin1Char(platform::displaySeparator);
    QStringList names = FolderCompletion::subfolders(typed);
    names.sort();
    EXPECT_EQ(names.join(u' '), QStringLiteral(".three Two one"));
    EXPECT_THAT(FolderCompletion::subfolders(typed + QStringLiteral("missing/")), SizeIs(0));
}

} // namespace
