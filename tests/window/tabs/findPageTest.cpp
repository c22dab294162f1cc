#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "platform/paths.h"
#include "support/testSystem.h"
#include "widgets/helpTopic.h"
#include "widgets/listView.h"
#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;

// The tree of MainWindow: a/big.bin 3000, a/deep/x.txt 10, b/note.txt 200, own.txt 50.
class FindInWindow : public MainWindow {
protected:
    static constexpr int findTab = 4;

    void openOnFind() {
        openOnTree();
        tabs().setCurrentIndex(findTab);
        settle();
    }
    // Until what was typed is answered.
    void settle() {
        for (const char* timer : {"tmrTyped", "tmrFind"}) {
            ASSERT_TRUE(QTest::qWaitFor([&] { return !control<QTimer>(timer).isActive(); })) << timer;
        }
    }
    void type(const char* box, const char* text) {
        control<QLineEdit>(box).setText(QString::fromUtf8(text));
        settle();
    }
    void choose(const char* box, int index) {
        auto& choice = control<QComboBox>(box);
        choice.setCurrentIndex(index);
        Q_EMIT choice.activated(index);
        settle();
    }
    std::vector<std::string> names(const char* list = "lvwFound") {
        std::vector<std::string> result;
        for (const std::string& row : rows(list)) {
            result.push_back(row.substr(0, row.find('|')));
        }
        return result;
    }
    std::string found() { return control<QLabel>("lblFound").text().toStdString(); }
    ListView& list() { return control<ListView>("lvwFound"); }
};

TEST_F(FindInWindow, showsWhatIsBelowTheSelectedFolder) {
    openOnFind();
    EXPECT_EQ(tabs().tabText(findTab), QStringLiteral("Find")) << "behind the others";
    EXPECT_THAT(names(), ElementsAre("big.bin", "note.txt", "own.txt", "x.txt"));
    EXPECT_EQ(found(), "4 files, 3.2 Kb.");
    EXPECT_THAT(rows("lvwFound")[1],
                HasSubstr("note.txt|" + platform::displayPath(key("b")) + "|200 bytes|"));
    EXPECT_EQ(list().selectedRow(), 0);
    click(key("a"));
    settle();
    EXPECT_THAT(names(), ElementsAre("big.bin", "x.txt"));
    EXPECT_EQ(found(), "2 files, 2.9 Kb.");
    for (const QWidget* const control : control<QWidget>("findBar").findChildren<QWidget*>()) {
        if (control->focusPolicy() != Qt::NoFocus && !control->objectName().isEmpty() &&
            !control->objectName().startsWith(QStringLiteral("qt_"))) {
            EXPECT_FALSE(control->toolTip().isEmpty()) << control->objectName().toStdString();
            EXPECT_EQ(modQt::helpTopic(*control), QStringLiteral("find.html"));
        }
    }
}

TEST_F(FindInWindow, answersWhatIsTyped) {
    openOnFind();
    type("txtFindName", "o");
    EXPECT_THAT(names(), ElementsAre("note.txt", "own.txt"));
    type("txtFindName", "?ig.*");
    EXPECT_THAT(names(), ElementsAre("big.bin"));
    type("txtFindName", "\"'[%;");
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(found(), "0 files, 0 bytes.");
    type("txtFindName", "");
    type("txtFindLarger", "50");
    type("txtFindExtension", "txt");
    EXPECT_THAT(names(), ElementsAre("note.txt"));
    type("txtFindLarger", "5 apples");
    EXPECT_THAT(found(), HasSubstr("Larger than: \u201c5 apples\u201d is no size"));
    EXPECT_THAT(names(), ElementsAre("note.txt")) << "as before";
    type("txtFindLarger", "");
    type("txtFindSmaller", "0.1k");
    EXPECT_THAT(names(), ElementsAre("own.txt", "x.txt"));
    type("txtFindOlder", "1d");
    EXPECT_THAT(names(), IsEmpty());
    QTest::mouseClick(&control<QWidget>("cmdFindClear"), Qt::LeftButton);
    settle();
    EXPECT_THAT(names(), SizeIs(4));
}

TEST_F(FindInWindow, hasPresets) {
    std::filesystem::create_directories(tree / "hollow");
    openOnFind();
    Database& database = window->database().database();
    database.Execute("update details set dateModified=\"02/01/2001 10:00:00 AM\" where fileName=\"own.txt\"");
    database.Execute("update details set dateModified=\"12/01/1999 10:00:00 PM\" where fileName=\"x.txt\"");
    choose("cboFindPreset", 1);
    EXPECT_THAT(names(), SizeIs(4));
    EXPECT_EQ(names()[0], "x.txt");
    EXPECT_EQ(names()[1], "own.txt") << "by time, not by text";
    choose("cboFindPreset", 2);
    EXPECT_THAT(names(), UnorderedElementsAre("big.bin", "note.txt"));
    choose("cboFindPreset", 3);
    EXPECT_THAT(names(), ElementsAre("hollow"));
    EXPECT_EQ(found(), "1 folder, 0 bytes.");
    choose("cboFindPreset", 0);
    EXPECT_THAT(names(), ElementsAre("big.bin", "note.txt", "own.txt", "x.txt"));
    type("txtFindName", "x");
    EXPECT_EQ(control<QComboBox>("cboFindPreset").currentIndex(), -1) << "no preset any more";
}

TEST_F(FindInWindow, findsTheFilesOfATypeAndOfAnOwner) {
    openOnTree();
    window->database().database().Execute("update details set owner=NULL where fileName=\"note.txt\"");
    window->database().database().Execute("update details set owner=\"x*y\" where fileName=\"own.txt\"");
    const auto doubleClick = [this](int tab, const char* name, const std::string& first) {
        tabs().setCurrentIndex(tab);
        auto& groups = control<ListView>(name);
        for (int row = 0; row < groups.rows().rowCount(); ++row) {
            if (groups.rows().text(row, 0) == first) {
                groups.selectRow(row);
                Q_EMIT groups.itemActivated(std::string(groups.rows().row(row).key()), {});
            }
        }
        EXPECT_EQ(tabs().currentIndex(), findTab);
        settle();
    };
    doubleClick(2, "lvwT", "txt");
    EXPECT_THAT(names(), ElementsAre("note.txt", "own.txt", "x.txt"));
    EXPECT_EQ(control<QLineEdit>("txtFindExtension").text(), QStringLiteral("txt"));
    doubleClick(3, "lvwU", "");
    EXPECT_THAT(names(), ElementsAre("note.txt"));
    EXPECT_TRUE(control<QLineEdit>("txtFindExtension").text().isEmpty()) << "no other condition";
    doubleClick(3, "lvwU", "x*y");
    EXPECT_THAT(names(), ElementsAre("own.txt"));
}

TEST_F(FindInWindow, doesWithRowsWhatTheFilesListDoes) {
    openOnFind();
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_THAT(dialogs.opened, ElementsAre(key("a") + "big.bin"));
    command("ItemCopyPath");
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), tree.typed("a/big.bin"));
    command("ItemProperties");
    EXPECT_THAT(dialogs.shownProperties, SizeIs(1));
    QTest::keyClick(&list(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(),
                StartsWith("Name,Folder,Size,Owner,Modified,Accessed\r\nbig.bin,"));

    choose("cboFindKind", 1);
    EXPECT_THAT(names(), ElementsAre("a", "b", "deep"));
    list().selectRow(2);
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(selected(), key("a/deep")) << "also where the tree has not listed it";
    settle();
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(FindInWindow, sortsByValueAndRemembersIt) {
    openOnFind();
    window->database().database().Execute(
        "update details set dateModified=\"12/31/1999 10:00:00 PM\" where fileName=\"own.txt\"");
    clickHeader("lvwFound", 2);
    EXPECT_THAT(names(), ElementsAre("x.txt", "own.txt", "note.txt", "big.bin"));
    click(key());
    settle();
    EXPECT_EQ(names()[0], "x.txt");
    clickHeader("lvwFound", 4);
    click(key("b"));
    click(key());
    settle();
    EXPECT_EQ(names()[0], "own.txt") << "the oldest";
    list().header()->resizeSection(1, 333);
    window->close();
    close();
    open().openPath(tree.typed());
    settle();
    EXPECT_EQ(tabs().currentIndex(), findTab);
    EXPECT_EQ(list().header()->sectionSize(1), 333);
    EXPECT_EQ(list().header()->sortIndicatorSection(), 4);
}

TEST_F(FindInWindow, showsWhatAScanHasRecordedSoFar) {
    constexpr std::size_t all = 1000; // so many that the scan cannot be over before somebody looks
    for (std::size_t i = 0; i < all; ++i) {
        tree.write("many/" + std::to_string(i) + "/file", "x");
    }
    open();
    tabs().setCurrentIndex(findTab);
    std::size_t least = 2 * all;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, window.get(), [&] {
        if (window->search().processing) {
            if (auto& tick = control<QTimer>("tmrChart"); tick.interval() > 0) {
                tick.setInterval(0); // instead of a second
            }
            if (const std::size_t seen = names().size(); seen > 0) {
                least = std::min(least, seen);
            }
        }
    });
    watch.start(0);
    window->openPath(tree.typed());
    EXPECT_LT(least, all);
    settle();
    EXPECT_THAT(names(), SizeIs(all));
}

// A query that is on its way while the rows go, or the window.
TEST_F(FindInWindow, survivesWhatHappensMeanwhile) {
    openOnFind();
    control<QLineEdit>("txtFindName").setText(QStringLiteral("o"));
    Q_EMIT control<QLineEdit>("txtFindName").returnPressed();
    ASSERT_TRUE(control<QTimer>("tmrFind").isActive());
    window->database().database().Execute("delete * from details");
    settle();
    EXPECT_THAT(names(), IsEmpty());
    Q_EMIT control<QLineEdit>("txtFindName").returnPressed();
    window->close();
    close();
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

// --- The filter -----------------------------------------------------------------------------------------

class FilterInWindow : public FindInWindow {
protected:
    void filter(const char* text) {
        command("FilterList");
        auto& box = control<QLineEdit>("txtFilter");
        box.setText(QString::fromUtf8(text));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !control<QTimer>("tmrFilter").isActive(); }));
    }
    std::string count() { return control<QLabel>("lblFilter").text().toStdString(); }
    bool isOpen() { return control<QWidget>("filterBar").isVisible(); }
};

TEST_F(FilterInWindow, narrowsEveryList) {
    openOnTree();
    const struct {
        int tab;
        const char* list;
        const char* text;
        std::vector<std::string> shown;
        std::string count;
    } table[] = {{1, "lvwF", "OWN", {"own.txt"}, "1 of 3"},
                 {2, "lvwT", "b", {"bin"}, "1 of 2"},
                 {3, "lvwU", "no such owner", {}, "0 of 1"},
                 {4, "lvwFound", "deep", {"x.txt"}, "1 of 4"}};
    for (const auto& each : table) {
        tabs().setCurrentIndex(each.tab);
        settle();
        filter(each.text);
        EXPECT_EQ(names(each.list), each.shown) << each.list;
        EXPECT_EQ(count(), each.count) << each.list;
        click(key("b"));
        click(key());
        settle();
        EXPECT_EQ(names(each.list), each.shown) << each.list << ": also of new rows";
        QTest::keyClick(&control<QLineEdit>("txtFilter"), Qt::Key_Escape);
        EXPECT_FALSE(isOpen());
        EXPECT_GE(names(each.list).size(), 1U);
        EXPECT_EQ(count(), "");
    }
}

TEST_F(FilterInWindow, leavesPlacesOrderAndSelection) {
    openOnTree();
    tabs().setCurrentIndex(1);
    auto& files = control<ListView>("lvwF");
    const std::vector<std::string> before = rows("lvwF");
    files.selectRow(2); // own.txt
    filter("own.");
    EXPECT_THAT(names("lvwF"), ElementsAre("own.txt"));
    EXPECT_EQ(files.selectedRow(), 0) << "selected as before";
    files.selectAll();
    QTest::keyClick(&files, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().count(QStringLiteral("\r\n")), 1) << "what is shown";
    filter("");
    EXPECT_EQ(rows("lvwF"), before);
    EXPECT_THAT(files.selectedRows(), ElementsAre(2)) << "and nothing that was hidden";
    filter("own.");
    clickHeader("lvwF", 0);
    filter("");
    EXPECT_THAT(names("lvwF"), ElementsAre("a", "b", "own.txt")) << "all rows were sorted";
    filter("zzz");
    tabs().setCurrentIndex(0);
    EXPECT_FALSE(isOpen());
    tabs().setCurrentIndex(2);
    EXPECT_TRUE(isOpen());
    EXPECT_THAT(names("lvwT"), IsEmpty());
    EXPECT_THAT(names("lvwF"), SizeIs(3)) << "only what is shown is narrowed";
}

TEST_F(FilterInWindow, takesItsKeysFromNobody) {
    openActive();
    window->openPath(tree.typed());
    tabs().setCurrentIndex(1);
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    auto& box = control<QLineEdit>("txtFilter");
    EXPECT_TRUE(box.hasFocus());
    QTest::keyClicks(&box, QStringLiteral("b"));
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_FALSE(isOpen()) << "also where Escape has another use";
    EXPECT_TRUE(control<ListView>("lvwF").hasFocus());
    tabs().setCurrentIndex(0);
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(tabs().currentIndex(), findTab) << "from the chart";
    EXPECT_TRUE(control<QLineEdit>("txtFindName").hasFocus());
}

} // namespace
