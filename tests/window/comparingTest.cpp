#include "window/comparing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "base/modGlobal.h"
#include "support/testSystem.h"
#include "widgets/changesList.h"
#include "window/windowFixture.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

// A window that shows a tree of which a scan was saved before it changed.
class ComparingInWindow : public MainWindow {
protected:
    // a/big.bin 3000 -> 5000, a/deep/ gone with x.txt 10, b/note.txt 200 -> 100, own.txt the same, and
    // new/more.bin 70 new.
    void openOnChangedTree() {
        openOnTree();
        save();
        tree.write("a/big.bin", std::string(5000, 'x'));
        tree.write("b/note.txt", std::string(100, 'x'));
        tree.write("new/more.bin", std::string(70, 'x'));
        testSystem::removeAll(tree / "a/deep");
        scanAnew();
    }
    void save() {
        dialogs.file = before();
        command("ExportMDB");
        dialogs.file.clear();
    }
    void scanAnew() {
        window->settings().setExact(true); // so that a refresh scans all below
        click(key());
        pressF5();
    }
    [[nodiscard]] std::string before() const { return (application / "before.mdb").string(); }
    [[nodiscard]] std::vector<std::string> changes() { return rows("lvwChanges"); }
    [[nodiscard]] std::string label(const char* name) { return control<QLabel>(name).text().toStdString(); }
    [[nodiscard]] bool isOpen() { return command("CloseComparison", QString())->isEnabled(); }
    [[nodiscard]] bool hasTab() { return tabs().tabText(tabs().count() - 1) == QStringLiteral("Changes"); }
    QAction* command(const char* key, const QString&) {
        return window->findChild<QAction*>(QString::fromUtf8(key));
    }
    using WindowFixture::command;
    void activate(const std::string& name) {
        auto& list = control<ListView>("lvwChanges");
        for (int row = 0; row < list.rows().rowCount(); ++row) {
            if (list.rows().text(row, 0) == name) {
                list.selectRow(row);
                QTest::keyClick(&list, Qt::Key_Return);
                return;
            }
        }
        throw std::runtime_error("no row " + name);
    }
};

const std::vector<std::string> changesOfTree{"a|2.9 Kb|4.9 Kb|+1.9 Kb|grown|",
                                             "b|200 bytes|100 bytes|-100 bytes|shrunk|",
                                             "new||70 bytes|+70 bytes|new|"};

TEST_F(ComparingInWindow, listsWhatHasChangedAndGoesDownIntoItEvenIfItIsGone) {
    openOnChangedTree();
    EXPECT_FALSE(hasTab());
    EXPECT_FALSE(isOpen());
    window->compareWith(before());
    EXPECT_THAT(dialogs.messages, IsEmpty());
    ASSERT_TRUE(hasTab());
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(tabs().currentIndex(), tabs().count() - 1);
    const QAbstractItemModelTester tester(&control<ListView>("lvwChanges").rows(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(changes(), changesOfTree);
    EXPECT_EQ(label("lblChanges"), "3 items have changed: 1 new, 1 grown, 1 shrunk.");
    EXPECT_THAT(label("lblComparison"), AllOf(StartsWith("Change: +1.9 Kb. Before: 3.2 Kb (before.mdb, "),
                                              HasSubstr("Now: 5.1 Kb (scanned ")));
    activate("a");
    EXPECT_EQ(selected(), key("a"));
    EXPECT_THAT(changes(),
                ElementsAre("big.bin|2.9 Kb|4.9 Kb|+2.0 Kb|grown|", "deep|10 bytes||-10 bytes|gone|"));
    activate("deep");
    EXPECT_EQ(selected(), key("a")) << "the tree does not have it";
    EXPECT_THAT(changes(), ElementsAre("x.txt|10 bytes||-10 bytes|gone|"));
    EXPECT_THAT(label("lblChanges"), StartsWith("Former contents of " + tree.typed("a/deep") + ": 1 item"));
    activate("x.txt");
    EXPECT_THAT(panel(3), HasSubstr("is no longer there."));
    EXPECT_THAT(dialogs.opened, IsEmpty());
    control<QToolButton>("cmdFormerUp").click();
    EXPECT_THAT(changes(), SizeIs(2));
    EXPECT_EQ(control<ListView>("lvwChanges").selectedRow(), 1) << "where it was";
    activate("deep");
    command("GoUp");
    EXPECT_THAT(changes(), SizeIs(2));
    command("GoUp");
    EXPECT_EQ(selected(), key());
    EXPECT_EQ(changes(), changesOfTree);
    command("CloseComparison");
    EXPECT_FALSE(hasTab());
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(label("lblComparison"), "");
    EXPECT_TRUE(control<QLabel>("lblComparison").isHidden());
}

TEST_F(ComparingInWindow, sortsByEachColumnAndFilters) {
    openOnChangedTree();
    window->compareWith(before());
    const auto names = [this] {
        std::string result;
        for (const std::string& row : changes()) {
            result += row.substr(0, row.find('|')) + " ";
        }
        return result;
    };
    const struct {
        int column;
        const char* up;
    } cases[] = {
        {modChangesList::name, "a b new "},  {modChangesList::before, "new b a "},
        {modChangesList::now, "new b a "},   {modChangesList::change, "b new a "},
        {modChangesList::state, "a new b "}, {modChangesList::balance, "new b a "},
    };
    for (const auto& each : cases) {
        for (const bool isUp : {true, false}) {
            clickHeader("lvwChanges", each.column - 1);
            const std::string up = each.up;
            const std::string last = up.substr(up.rfind(' ', up.size() - 2) + 1);
            EXPECT_THAT(names(), StartsWith(isUp ? up : last)) << each.column;
        }
    }
    control<ListView>("lvwChanges").setFilter("GROWN");
    EXPECT_EQ(names(), "a ");
}

TEST_F(ComparingInWindow, refusedFilesAndCancelLeaveAllAsItIs) {
    openOnChangedTree();
    window->compareWith(before());
    application.write("text.mdb", "no database");
    const std::string header = label("lblComparison");
    const struct {
        std::string file;
        std::size_t messages;
    } cases[] = {{(application / "text.mdb").string(), 1},
                 {(application / "missing.mdb").string(), 1},
                 {(application / "main.dat").string(), 1},
                 {"", 0}}; // Cancel in the file dialog
    for (const auto& each : cases) {
        dialogs.messages.clear();
        dialogs.file = each.file;
        command("CompareScan");
        EXPECT_THAT(dialogs.messages, SizeIs(each.messages)) << each.file;
        EXPECT_EQ(changes(), changesOfTree);
        EXPECT_EQ(label("lblComparison"), header);
    }
}

TEST_F(ComparingInWindow, canBeCancelledWithNothingChanged) {
    openOnChangedTree();
    const auto cancel = [this] {
        QTimer::singleShot(0, window.get(), [this] {
            auto* box = window->findChild<QDialog*>(QStringLiteral("frmWork"));
            ASSERT_NE(box, nullptr);
            box->show(); // as if it took long
            QTest::keyClick(box, Qt::Key_Escape);
        });
    };
    cancel();
    window->compareWith(before());
    EXPECT_FALSE(isOpen());
    EXPECT_THAT(panel(3), HasSubstr("The comparison was cancelled."));
    window->compareWith(before());
    const std::string header = label("lblComparison");
    cancel();
    window->compareWith(before());
    EXPECT_EQ(changes(), changesOfTree);
    EXPECT_EQ(label("lblComparison"), header);
    EXPECT_EQ(window->findChild<QDialog*>(QStringLiteral("frmWork")), nullptr);
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(ComparingInWindow, followsWhatIsShown) {
    openOnChangedTree();
    window->compareWith(before());
    const std::string& a = changesOfTree.front();
    const std::pair<std::function<void()>, std::vector<std::string>> steps[] = {
        {[this] {
             tree.write("b/note.txt", std::string(300, 'x'));
             scanAnew();
         },
         {a, "b|200 bytes|300 bytes|+100 bytes|grown|", changesOfTree.back()}},
        {[this] {
             click(key("new"));
             command("ItemExclude");
         },
         {a, "b|200 bytes|300 bytes|+100 bytes|grown|"}},
        {[this] {
             window->settings().setExact(false);
             command("ExactFigures");
         },
         {a, "b|200 bytes|300 bytes|+100 bytes|grown|"}},
    };
    for (const auto& [step, expected] : steps) {
        step();
        EXPECT_TRUE(QTest::qWaitFor([&, &wanted = expected] { return changes() == wanted; }))
            << testing::PrintToString(changes());
        EXPECT_TRUE(QTest::qWaitFor([this] { return label("lblComparison").starts_with("Change: "); }));
        EXPECT_FALSE(control<MessageBar>("messageBar").holds(MessageBar::Topic::outdatedComparison));
    }
    EXPECT_TRUE(control<MessageBar>("messageBar").holds(MessageBar::Topic::comparison));
}

TEST_F(ComparingInWindow, saysThatItIsOutOfDateAndComparesAgain) {
    openOnTree();
    save();
    tree.write("a/big.bin", std::string(5000, 'x'));
    TemporaryFolder other;
    other.write("c/large.bin", std::string(9000, 'x'));
    const std::string second = (application / "second.mdb").string();
    scanAnew();
    window->compareWith(before());
    EXPECT_THAT(changes(), SizeIs(1));
    window->openPath(other.typed());
    EXPECT_FALSE(control<MessageBar>("messageBar").holds(MessageBar::Topic::outdatedComparison))
        << "a scan of another folder";
    EXPECT_THAT(label("lblComparison"), StartsWith("Compared is only " + tree.typed()));
    EXPECT_THAT(changes(), IsEmpty());
    EXPECT_THAT(label("lblChanges"), HasSubstr("is not in what was compared"));

    // Another database without what was compared.
    dialogs.file = second;
    command("ExportMDB");
    window->close();
    open().openPath(other.typed());
    dialogs.file = (application / "other.mdb").string();
    command("ExportMDB");
    window->openPath(tree.typed());
    window->compareWith(before());
    ASSERT_TRUE(isOpen());
    command("LoadMDB");
    EXPECT_TRUE(control<MessageBar>("messageBar").holds(MessageBar::Topic::outdatedComparison));
    EXPECT_EQ(label("lblMessage"), "The comparison is older than what is shown.");
    EXPECT_THAT(label("lblComparison"), StartsWith("Out of date. "));
    QApplication::processEvents();
    EXPECT_TRUE(isOpen());

    // The selected folder against one of the saved scan.
    click(modGlobal::addBackslash(other.internal()));
    bool asked = false;
    dialogs.chooseFolderBefore = [&](frmFolderBefore& box) {
        auto& folder = *box.findChild<QComboBox*>(QStringLiteral("cboFolderBefore"));
        EXPECT_EQ(folder.currentText().toStdString(), tree.typed());
        asked = true;
        box.accept();
    };
    control<QPushButton>("cmdMessage1").click();
    EXPECT_TRUE(asked);
    EXPECT_FALSE(control<MessageBar>("messageBar").holds(MessageBar::Topic::outdatedComparison));
    EXPECT_THAT(changes(), testing::Contains("c||8.8 Kb|+8.8 Kb|new|"));
    EXPECT_THAT(changes(), testing::Contains("a|2.9 Kb||-2.9 Kb|gone|"));
}

TEST_F(ComparingInWindow, chartShowsWhatHasGrownAndShrunk) {
    openOnChangedTree();
    EXPECT_FALSE(command("ViewChanges", QString())->isEnabled());
    click(key("a"));
    const std::vector<std::string> sizes = bars();
    window->compareWith(before());
    command("ViewPieChart");
    command("ViewChanges");
    auto& chart = control<FolderChart>("tc");
    EXPECT_EQ(chart.chartStyle(), ChartStyle::bar);
    EXPECT_EQ(tabs().currentIndex(), 0);
    EXPECT_THAT(bars(), ElementsAre("deep=-10", "|Files|=2000"));
    EXPECT_EQ(chart.valueText(-10).toStdString(), "-10 bytes");
    clickBar(0);
    EXPECT_EQ(tabs().currentIndex(), tabs().count() - 1) << "the tree does not have it";
    EXPECT_THAT(changes(), ElementsAre("x.txt|10 bytes||-10 bytes|gone|"));
    tabs().setCurrentIndex(0);
    click(key());
    EXPECT_THAT(bars(), ElementsAre("new=70", "b=-100", "a=1990"));
    clickBar(1);
    EXPECT_EQ(selected(), key("b"));
    EXPECT_TRUE(command("ViewChanges", QString())->isChecked());
    click(key("a"));
    command("ViewBarChart");
    EXPECT_FALSE(command("ViewChanges", QString())->isChecked());
    EXPECT_EQ(bars(), sizes);
    command("ViewChanges");
    command("CloseComparison");
    EXPECT_EQ(bars(), sizes);
    EXPECT_FALSE(command("ViewChanges", QString())->isChecked());
    EXPECT_FALSE(command("ViewChanges", QString())->isEnabled());
}

TEST_F(ComparingInWindow, withoutTheChartOfChangesTheLookIsAsBefore) {
    openOnChangedTree();
    click(key("a"));
    for (const char* end : {"ViewChanges", "CloseComparison"}) {
        for (const char* look : {"ViewBarChart", "ViewPieChart", "ViewTreemap"}) {
            window->compareWith(before());
            command(look);
            const bool isTreemap = control<Treemap>("tmp").isVisibleTo(window.get());
            const ChartStyle style = control<FolderChart>("tc").chartStyle();
            command("ViewChanges");
            ASSERT_TRUE(control<FolderChart>("tc").isVisibleTo(window.get()));
            tabs().setCurrentIndex(1);
            if (end == std::string_view("ViewChanges")) {
                command(end);
                EXPECT_EQ(tabs().currentIndex(), 0) << "first, what is wanted is seen";
                command(end);
            } else {
                command(end);
                EXPECT_EQ(tabs().currentIndex(), 1) << "nobody is taken to another tab";
                tabs().setCurrentIndex(0);
            }
            EXPECT_EQ(control<Treemap>("tmp").isVisibleTo(window.get()), isTreemap) << look << ' ' << end;
            EXPECT_EQ(control<FolderChart>("tc").chartStyle(), style) << look << ' ' << end;
        }
    }
}

TEST_F(ComparingInWindow, findKnowsWhatHasChanged) {
    openOnChangedTree();
    auto& state = control<QComboBox>("cboFindState");
    EXPECT_FALSE(state.isVisibleTo(window.get()));
    window->compareWith(before());
    tabs().setCurrentIndex(4);
    EXPECT_TRUE(state.isVisible());
    const std::pair<const char*, const char*> cases[] = {
        {"(no matter)", "4 files, 5.1 Kb."}, {"In any way", "4 files, 5.1 Kb."},
        {"New", "1 file, 70 bytes."},        {"Gone", "1 file, 10 bytes."},
        {"Grown", "1 file, 4.9 Kb."},        {"Shrunk", "1 file, 100 bytes."},
        {"Touched", "0 files, 0 bytes."},
    };
    for (const auto& [choice, expected] : cases) {
        state.setCurrentText(QString::fromUtf8(choice));
        Q_EMIT state.activated(state.currentIndex());
        EXPECT_TRUE(QTest::qWaitFor([&, wanted = expected] { return label("lblFound") == wanted; }))
            << choice << ": " << label("lblFound");
    }
    command("CloseComparison");
    EXPECT_FALSE(state.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return label("lblFound") == cases[0].second; })) << label("lblFound");
}

TEST_F(ComparingInWindow, offersForWhatIsGoneOnlyWhatMakesSense) {
    openOnChangedTree();
    window->compareWith(before());
    activate("a");
    auto& list = control<ListView>("lvwChanges");
    const auto offered = [&] {
        Q_EMIT command("Item", QString())->menu()->aboutToShow();
        std::string result;
        for (const char* key : {"ItemOpen", "ItemShow", "ItemCopyPath", "ItemProperties", "ItemScanAgain",
                                "ItemTrash", "ItemExclude"}) {
            result += command(key, QString())->isEnabled() ? std::string(key).substr(4) + " " : "";
        }
        return result;
    };
    list.selectRow(0);
    EXPECT_EQ(offered(), "Open Show CopyPath Properties Trash Exclude ");
    list.selectRow(1);
    EXPECT_EQ(offered(), "Open CopyPath ");
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_THAT(dialogs.questions, IsEmpty());
    EXPECT_THAT(panel(3), HasSubstr("is no longer there."));
    command("ItemCopyPath");
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), tree.typed("a/deep"));
    list.selectAll();
    EXPECT_EQ(offered(), "CopyPath ");
    command("ItemOpen");
    EXPECT_THAT(dialogs.opened, IsEmpty());
    list.selectRow(1);
    EXPECT_EQ(offered(), "Open CopyPath ");
    command("ItemOpen");
    EXPECT_THAT(changes(), ElementsAre("x.txt|10 bytes||-10 bytes|gone|"));
    list.clearSelection();
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "Name,Before,Now,Change,State\r\nx.txt,10 bytes,,-10 bytes,gone");
}

// The saved scan may be anybody's.
TEST_F(ComparingInWindow, copiesNoNameAsAFormula) {
    openOnTree();
    tree.write("b/=1+1", "x");
    scanAnew();
    save();
    testSystem::removeAll(tree / "b/=1+1");
    scanAnew();
    window->compareWith(before());
    activate("b");
    ASSERT_FALSE(window->database().holdsLoadedRows());
    QTest::keyClick(&control<ListView>("lvwChanges"), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "Name,Before,Now,Change,State\r\n'=1+1,1 bytes,,-1 bytes,gone");
}

} // namespace
