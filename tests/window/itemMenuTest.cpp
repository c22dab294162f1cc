#include "window/itemMenu.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QTest>

#include "platform/paths.h"
#include "support/testSystem.h"
#include "window/windowFixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

class ItemMenuTest : public MainWindow {
protected:
    static std::string clipboardText() { return QGuiApplication::clipboard()->text().toStdString(); }
    static QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    // The keys of what an open menu offers: those that are enabled.
    static std::string offered() {
        std::string keys;
        for (const QAction* action : openMenu()->actions()) {
            if (action->isVisible() && action->isEnabled() &&
                action->objectName().startsWith(QStringLiteral("Item")) && !action->isSeparator()) {
                keys += action->objectName().mid(4).toStdString() + ' ';
            }
        }
        return keys;
    }
    // Chooses from the open menu.
    static void choose(const char* key) {
        QMenu& menu = *openMenu();
        for (QAction* action : menu.actions()) {
            if (action->objectName() == QString::fromUtf8(key)) {
                menu.close();
                action->trigger();
                return;
            }
        }
        FAIL() << key;
    }
    static void rightClick(QWidget& where, QPoint place) {
        QTest::mouseClick(&where, Qt::RightButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, where.mapToGlobal(place));
        QApplication::sendEvent(&where, &event);
    }
    void rightClickNode(const std::string& key) {
        auto& tvw = control<FolderTree>("tvw");
        const QModelIndex node = static_cast<TreeModel*>(tvw.model())->indexOf(key);
        tvw.scrollTo(node);
        rightClick(*tvw.viewport(), tvw.visualRect(node).topLeft() + QPoint(5, 5));
    }
    ListView& filesTab() {
        tabs().setCurrentIndex(1);
        auto& list = control<ListView>("lvwF");
        list.setFocus();
        return list;
    }
    // Selects the rows with these names.
    void selectRows(const std::vector<std::string>& names) {
        ListView& list = filesTab();
        list.clearSelection();
        for (int row = 0; row < list.model()->rowCount(); ++row) {
            const QModelIndex index = list.model()->index(row, 0);
            if (testing::Matches(Contains(index.data().toString().toStdString()))(names)) {
                list.selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
                list.selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
            }
        }
    }
};

TEST_F(ItemMenuTest, standsForTheItemThatWasClicked) {
    openOnTree();
    rightClickNode(key("b"));
    EXPECT_EQ(selected(), key()) << "the right button selects nothing";
    EXPECT_EQ(offered(), "Open Show CopyPath Properties ScanAgain Trash Exclude ");
    choose("ItemCopyPath");
    EXPECT_EQ(clipboardText(), tree.typed("b"));

    auto& chart = control<FolderChart>("tc");
    rightClick(chart, chart.markOf(1).center().toPoint()); // |Files| 50, b 200, a 3010
    choose("ItemOpen");
    EXPECT_EQ(selected(), key("b"));
    window->openPath(tree.typed());
    rightClick(chart, chart.markOf(0).center().toPoint());
    EXPECT_EQ(openMenu(), nullptr) << "the files are no item";

    selectRows({"a", "own.txt"});
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(&control<ListView>("lvwF"), &byKey);
    EXPECT_EQ(offered(), "CopyPath Properties ScanAgain Trash Exclude ");
    choose("ItemCopyPath");
    EXPECT_EQ(clipboardText(), tree.typed("a") + "\n" + tree.typed("own.txt"));

    tabs().setCurrentIndex(2); // file types are no items
    QApplication::sendEvent(&control<ListView>("lvwT"), &byKey);
    EXPECT_EQ(offered(), "");
    openMenu()->close();
}

TEST_F(ItemMenuTest, worksByKeysOnWhatIsSelected) {
    openOnTree();
    QWidget& tvw = control<FolderTree>("tvw");
    tvw.setFocus();
    const auto copyPath = [&](QWidget& where) {
        QTest::keyClick(&where, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        return clipboardText();
    };
    EXPECT_EQ(copyPath(tvw), tree.typed());
    selectRows({"a"});
    EXPECT_EQ(copyPath(filesTab()), tree.typed("a"));
    QTest::keyClick(&filesTab(), Qt::Key_Return, Qt::AltModifier);
    EXPECT_THAT(dialogs.shownProperties,
                ElementsAre(Contains(Pair("Path", tree.typed("a") + platform::displaySeparator))));

    selectRows({"a", "b"}); // fewer than two rows copy the whole list
    QTest::keyClick(&filesTab(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(clipboardText(), HasSubstr("\r\nb,200 bytes,"));
    EXPECT_THAT(clipboardText(), testing::Not(HasSubstr("own.txt")));
    selectRows({"a"});
    QTest::keyClick(&filesTab(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(clipboardText(), HasSubstr("own.txt"));

    QTest::keyClick(&filesTab(), Qt::Key_Return);
    EXPECT_EQ(selected(), key("a"));
}

// With the focus in the chart, keys are for a bar. Nobody has pointed at the shown folder: it is not deleted.
TEST_F(ItemMenuTest, keysAreForTheBarThatIsHighlighted) {
    openOnTree();
    dialogs.answer = false;
    auto& chart = control<FolderChart>("tc"); // |Files| 50, b 200, a 3010
    chart.setFocus();
    const auto point = [&](QPointF place) {
        QMouseEvent move(QEvent::MouseMove, place, chart.mapToGlobal(place), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(&chart, &move);
    };
    const struct {
        int hovered;  // no bar: -1
        int selected; // by keys
        const char* deleted;
        const char* copied;
    } cases[]{{-1, -1, nullptr, ""},
              {1, -1, "b", "b"},
              {0, -1, nullptr, ""},
              {1, 2, "a", "a"},
              {1, 0, nullptr, ""}};
    for (const auto& each : cases) {
        SCOPED_TRACE(testing::Message() << each.hovered << ' ' << each.selected);
        control<FolderTree>("tvw").setFocus(); // so that no bar is selected
        window->openPath(tree.typed("b"));
        control<FolderTree>("tvw").setFocus();
        window->openPath(tree.typed());
        chart.setFocus();
        point(each.hovered < 0 ? QPointF(1, 1) : chart.markOf(each.hovered).center());
        if (each.selected >= 0) {
            chart.selectRank(chart.rankOf(each.selected));
        }
        dialogs.questions.clear();
        QTest::keyClick(&chart, Qt::Key_Delete);
        if (each.deleted == nullptr) {
            EXPECT_THAT(dialogs.questions, IsEmpty());
        } else {
            EXPECT_THAT(dialogs.questions, ElementsAre(HasSubstr("Move " + tree.typed(each.deleted) + " (")));
        }
        QTest::keyClick(&chart, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(clipboardText(), tree.typed(each.copied));
    }
}

TEST_F(ItemMenuTest, chartIsUsedByKeysAlone) {
    openOnTree();
    window->openPath(tree.typed("a"));
    auto& chart = control<FolderChart>("tc");
    chart.setFocus();
    ASSERT_EQ(chart.selected(), -1);
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {}, {});
    QTest::keyClick(&chart, Qt::Key_Return);
    EXPECT_EQ(chart.selected(), 1) << "the largest: the files";
    QTest::keyClick(&chart, Qt::Key_Backspace);
    EXPECT_EQ(selected(), key());
    EXPECT_EQ(chart.shownEntry(chart.selected()).label, "a") << "where one came from";
    QApplication::sendEvent(&chart, &byKey);
    choose("ItemCopyPath");
    EXPECT_EQ(clipboardText(), tree.typed("a"));
    QTest::keyClick(&chart, Qt::Key_Return);
    EXPECT_EQ(selected(), key("a"));
}

TEST_F(ItemMenuTest, showsTheKeyOfACopyOnlyWhereItDoesTheSame) {
    openOnTree();
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {}, {});
    const std::pair<std::vector<std::string>, bool> cases[]{
        {{"a"}, true}, {{"a", "b"}, false}, {{"b"}, true}};
    for (const auto& [names, isShown] : cases) {
        selectRows(names);
        QApplication::sendEvent(&control<ListView>("lvwF"), &byKey);
        const QString text = openMenu()->actions().at(1)->text();
        EXPECT_EQ(text.endsWith(QStringLiteral("Ctrl+C")), isShown) << text.toStdString();
        openMenu()->close();
        QTest::qWait(0);
    }
}

TEST_F(ItemMenuTest, tellsPropertiesOfOneAndOfSeveral) {
    openOnTree();
    selectRows({"own.txt"});
    command("ItemProperties");
    selectRows({"own.txt", "a"});
    command("ItemProperties");
    ASSERT_EQ(dialogs.shownProperties.size(), 2U);
    EXPECT_THAT(
        dialogs.shownProperties[0],
        testing::IsSupersetOf({Pair("Name", "own.txt"), Pair("Kind", "File"), Pair("Size", "50 bytes")}));
    EXPECT_THAT(dialogs.shownProperties[1],
                ElementsAre(Pair("Items", "2"), Pair("Folders", "1"), Pair("Files", "1"),
                            Pair("In the folders", "2 files, 1 folder"),
                            Pair("Size (scanned)", "3.0 Kb (3,060 bytes)"),
                            Pair("Size on disk (scanned)", testing::_)));
    const PropertyRows several = dialogs.shownProperties.back();
    command("SizeOnDisk");
    selectRows({"own.txt", "a"});
    command("ItemProperties");
    EXPECT_EQ(dialogs.shownProperties.back(), several) << "whichever size is shown elsewhere";
    command("SizeOnDisk");
    control<FolderTree>("tvw").setFocus();
    command("ItemProperties");
    EXPECT_THAT(dialogs.shownProperties.back(),
                testing::IsSupersetOf({Pair("Kind", "Folder"), Pair("Size (scanned)", "3.2 Kb (3,260 bytes)"),
                                       Pair("Contains", "4 files, 3 folders")}));
    EXPECT_THAT(dialogs.shownProperties.back(), Contains(Pair("Size on disk (scanned)", testing::_)));
    selectRows({"b"});
    command("ItemProperties");
    EXPECT_THAT(dialogs.shownProperties.back(), Contains(Pair("Contains", "1 file, 0 folders")));
}

TEST_F(ItemMenuTest, scansAgainWithoutGoingThere) {
    openOnTree();
    tree.write("a/more.bin", std::string(90, 'x'));
    selectRows({"a", "own.txt"});
    command("ItemScanAgain");
    EXPECT_EQ(selected(), key());
    EXPECT_THAT(rows("lvwF"), Contains(HasSubstr("a|3.0 Kb|")));
    EXPECT_EQ(query("select sum(size) from details where isFolder=0"), std::vector<std::string>{"3350"});
}

TEST_F(ItemMenuTest, offersOnlyWhatMakesSenseForALoadedScan) {
    openOnTree();
    dialogs.file = application.typed("saved.mdb");
    command("ExportMDB");
    command("LoadMDB");
    click(key());
    rightClickNode(key("b"));
    EXPECT_EQ(offered(), "Open CopyPath ScanAgain ") << "it is on this machine, too";
    openMenu()->close();
    testSystem::removeAll(tree / "b");
    rightClickNode(key("b"));
    EXPECT_EQ(offered(), "Open CopyPath ");
    openMenu()->close();
    QTest::qWait(0);
    command("ItemTrash");
    EXPECT_THAT(dialogs.questions, IsEmpty());
    command("ItemExclude");
    EXPECT_THAT(settingsFile(), testing::Not(HasSubstr("Excludes")));
}

TEST_F(ItemMenuTest, hasNoTrashWhenNothingMayBeChanged) {
    openOnTree();
    window->settings().setReadOnly(true);
    selectRows({"own.txt"});
    QTest::keyClick(&filesTab(), Qt::Key_Delete);
    command("ItemTrash");
    EXPECT_THAT(dialogs.questions, IsEmpty());
    command("ItemExclude");
    EXPECT_THAT(rows("lvwF"), Contains(HasSubstr("own.txt")));
    rightClickNode(key("b"));
    EXPECT_EQ(offered(), "Open Show CopyPath Properties ScanAgain ");
    openMenu()->close();
}

TEST_F(ItemMenuTest, excludesFromThisAndLaterScans) {
    openOnTree();
    auto& excludes = control<QLabel>("lblExcludes");
    EXPECT_FALSE(excludes.isVisibleTo(window.get()));
    tree.write("a/deep/[x] 1", std::string(400, 'x'));
    selectRows({"a"});
    command("ItemScanAgain");
    selectRows({"own.txt", "b"});
    command("ItemExclude");
    EXPECT_EQ(panel(3), "Excluded from scans: 2 items");
    EXPECT_THAT(rows("lvwF"), ElementsAre(HasSubstr("a|3.3 Kb|")));
    EXPECT_EQ(query("select size from details where fileName=\"" + tree.path().filename().string() + "\\\""),
              std::vector<std::string>{"3410"});
    EXPECT_FALSE(control<FolderTree>("tvw").findNode(key("b")));

    window->openPath(tree.typed("a/deep"));
    selectRows({"[x] 1"});
    command("ItemExclude");
    EXPECT_EQ(panel(3), "Excluded from scans: " + platform::displayPath(tree.internal("a/deep/[x] 1")));
    EXPECT_THAT(rows("lvwF"), ElementsAre(HasSubstr("x.txt|")));
    EXPECT_THAT(dialogs.questions, IsEmpty());
    EXPECT_TRUE(excludes.isVisibleTo(window.get()));
    EXPECT_EQ(excludes.text().toStdString(), "3 excludes");
    EXPECT_THAT(excludes.toolTip().toStdString(), HasSubstr("own.txt"));

    window->openPath(tree.typed("b"));
    EXPECT_THAT(query("select idx from details where fileName=\"note.txt\""), IsEmpty());
    EXPECT_EQ(panel(4), "1 item was left out by excludes.");
    close();
    open().openPath(tree.typed());
    EXPECT_EQ(query("select sum(size) from details where isFolder=0"), std::vector<std::string>{"3010"});
    EXPECT_EQ(panel(4), "3 items were left out by excludes.");
}

TEST_F(ItemMenuTest, excludesNothingThatCannotBeStored) {
    openOnTree();
    const testSystem::ReadOnlyFile settings(application / "settings.ini");
    if (!settings.isReadOnly()) {
        GTEST_SKIP() << "the file can be written anyway";
    }
    selectRows({"own.txt"});
    command("ItemExclude");
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_THAT(dialogs.messages[0], HasSubstr("own.txt: It cannot be stored"));
    EXPECT_THAT(rows("lvwF"), Contains(HasSubstr("own.txt")));
}

} // namespace
