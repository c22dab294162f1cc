#include "window/comparing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAction>
#include <QLabel>
#include <QTest>
#include <QToolButton>

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

} // namespace
