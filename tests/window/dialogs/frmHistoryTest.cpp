#include "window/dialogs/frmHistory.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSplitter>
#include <QTest>
#include <filesystem>

#include "base/modGlobal.h"
#include "platform/paths.h"
#include "support/sqliteScript.h"
#include "widgets/helpTopic.h"
#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class HistoryWindow : public MainWindow {
protected:
    // The tree, and what is there on that day of January.
    void save(const char* day, const std::string& script = {}) {
        command("Refresh");
        const std::string file = saved.typed(std::string(day) + ".mdb");
        dialogs.file = file;
        command("ExportMDB");
        ASSERT_TRUE(std::filesystem::exists(file));
        runSqliteScript(file, "update scans set host='vm', finished='2026-01-" + std::string(day) +
                                  " 12:00:00';" + script);
    }
    frmHistory& show() {
        command("History");
        auto& box = control<frmHistory>("frmHistory");
        box.setScans(QString::fromStdString(saved.typed()));
        waitForAnswer();
        return box;
    }
    void waitForAnswer() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !remark().starts_with("Reading the"); }));
    }
    [[nodiscard]] std::string remark() { return control<QLabel>("lblHistory").text().toStdString(); }
    [[nodiscard]] std::string listed() { return control<QLabel>("lblListed").text().toStdString(); }
    [[nodiscard]] HistoryChart& chart() { return control<HistoryChart>("hst"); }
    // Those of a column.
    [[nodiscard]] std::vector<std::string> cells(std::size_t column) {
        std::vector<std::string> result;
        for (const std::string& row : rows("lvwHistory")) {
            result.push_back(
                QString::fromStdString(row).split(u'|').value(static_cast<int>(column)).toStdString());
        }
        return result;
    }
    void threeScans() {
        openOnTree();
        save("01");
        tree.write("a/more", std::string(500, 'x'));
        save("02");
        std::filesystem::remove_all(tree / "b");
        save("03");
    }

    TemporaryFolder saved;
};

TEST_F(HistoryWindow, showsTheSelectedFolderAndItsSubfoldersAndFollows) {
    threeScans();
    frmHistory& box = show();
    EXPECT_EQ(remark(), "3 saved scans of this folder.");
    EXPECT_TRUE(control<QSplitter>("splHistory").isVisible());
    ASSERT_THAT(chart().chart().lines(), SizeIs(2));
    EXPECT_EQ(chart().chart().lines()[1].name, "a");
    EXPECT_EQ(chart().chart().count(), 6U);
    EXPECT_THAT(cells(1), ElementsAre("3.5 Kb", "3.7 Kb", "3.2 Kb")) << "the newest first";
    EXPECT_THAT(cells(2), ElementsAre("-200 bytes", "+500 bytes", ""));
    EXPECT_THAT(cells(3), ElementsAre("4", "5", "4"));

    click(key("a"));
    waitForAnswer();
    EXPECT_TRUE(QTest::qWaitFor([this] { return listed().find("a: 3") != std::string::npos; })) << listed();
    EXPECT_THAT(cells(1), ElementsAre("3.4 Kb", "3.4 Kb", "2.9 Kb"));
    EXPECT_EQ(chart().chart().lines().back().name, "deep");

    box.close();
    click(key());
    EXPECT_THAT(listed(), HasSubstr("a: 3")) << "nothing is read for a closed window";
    command("History");
    EXPECT_TRUE(QTest::qWaitFor([this] { return listed().find("a: 3") == std::string::npos; }));
}

TEST_F(HistoryWindow, pointsRowsAndKeysGoTogether) {
    threeScans();
    frmHistory& box = show();
    QSignalSpy opened(&box, &frmHistory::openAsBefore);
    box.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
    EXPECT_TRUE(chart().hasFocus());
    auto& list = control<ListView>("lvwHistory");
    QTest::keyClick(&chart(), Qt::Key_Left);
    EXPECT_EQ(list.selectedRow(), 0);
    QTest::keyClick(&chart(), Qt::Key_Left);
    EXPECT_EQ(list.selectedRow(), 1);
    QTest::keyClick(&chart(), Qt::Key_Return);
    ASSERT_EQ(opened.count(), 1);
    EXPECT_EQ(opened.back().front().value<std::string>(), platform::toInternal(saved.typed("02.mdb")));
    EXPECT_THAT(control<QLabel>("lblComparison").text().toStdString(), HasSubstr("02.mdb"));
    QTest::keyClick(&chart(), Qt::Key_Down);
    EXPECT_THAT(listed(), HasSubstr("a: 3 saved scans"));
    EXPECT_EQ(list.selectedRow(), 1);
    list.selectRow(2);
    EXPECT_EQ(chart().selectedPlace(), (modTimeChart::Place{1, 0}));
    QTest::keyClick(&list, Qt::Key_Return);
    control<QPushButton>("cmdCompare").click();
    EXPECT_EQ(opened.count(), 3);
    EXPECT_EQ(opened.back().front().value<std::string>(), platform::toInternal(saved.typed("01.mdb")));

    QTest::mouseMove(&chart(), chart().markOf(0).center().toPoint());
    control<QCheckBox>("chkLine0").click();
    EXPECT_EQ(chart().chart().count(), 3U);
    EXPECT_EQ(chart().selectedPlace(), (modTimeChart::Place{1, 0}));
}

TEST_F(HistoryWindow, saysWhyThereIsNoCurve) {
    openOnTree();
    frmHistory& box = show();
    const auto says = [&](const char* folder, const std::string& text) {
        box.setScans(QString::fromStdString(saved.typed(folder)));
        waitForAnswer();
        EXPECT_THAT(remark(), HasSubstr(text));
        EXPECT_FALSE(control<QSplitter>("splHistory").isVisible()) << folder;
        EXPECT_FALSE(control<QPushButton>("cmdExport").isEnabled()) << folder;
    };
    box.setScans({});
    EXPECT_THAT(remark(), HasSubstr("Choose a folder of saved scans."));
    std::filesystem::create_directory(saved / "empty");
    saved.write("bad/x.mdb", "no scan");
    says("empty", "There is no saved scan (*.mdb) in this folder");
    says("missing", "None of the files could be read as a saved scan.");
    says("bad", "None of the files could be read as a saved scan.");
    save("05", "update scans set path='/elsewhere\\'; delete from details;");
    std::filesystem::create_directory(saved / "other");
    std::filesystem::rename(saved / "05.mdb", saved / "other" / "05.mdb");
    says("other", "None of the 1 saved scan there is of this folder.");

    save("06");
    box.setScans(QString::fromStdString(saved.typed()));
    waitForAnswer();
    EXPECT_THAT(remark(), HasSubstr("There is one saved scan of this folder"));
    EXPECT_TRUE(control<QSplitter>("splHistory").isVisible());
    save("07", "update scans set host='elsewhere';");
    QTest::keyClick(&box, Qt::Key_F5);
    waitForAnswer();
    EXPECT_THAT(remark(),
                HasSubstr("They are of several machines, each with lines of its own: vm, elsewhere."));
    EXPECT_TRUE(control<QCheckBox>("chkLine1").accessibleName().endsWith(QStringLiteral("(elsewhere)")));
}

TEST_F(HistoryWindow, listIsSortedCopiedAndExported) {
    threeScans();
    show();
    clickHeader("lvwHistory", 2);
    EXPECT_THAT(cells(2), ElementsAre("", "-200 bytes", "+500 bytes"));
    clickHeader("lvwHistory", 2);
    EXPECT_THAT(cells(2), ElementsAre("+500 bytes", "-200 bytes", ""));
    control<QPushButton>("cmdCopyHistory").click();
    const QString copied = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith(QStringLiteral("\"Date\",\"Size\"")) ||
                copied.startsWith(QStringLiteral("Date,Size")))
        << copied.toStdString();
    EXPECT_EQ(copied.count(QStringLiteral(".mdb")), 3);

    const std::pair<const char*, const char*> cases[] = {
        {"h.csv", "Date,Size (Bytes),Change (Bytes)"}, {"h.html", "<polyline"}, {"h.xlsx", "PK"}};
    for (const auto& [name, text] : cases) {
        dialogs.file = application.typed(name);
        control<QPushButton>("cmdExport").click();
        EXPECT_THAT(application.read(name), HasSubstr(text));
        EXPECT_EQ(dialogs.opened.back(), application.typed(name));
    }
    dialogs.file.clear();
    control<QPushButton>("cmdExport").click();
    EXPECT_THAT(dialogs.opened, SizeIs(testing::Ge(3U)));
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(HistoryWindow, keepsItsFolderAndSizeAndProposesTheLastSavedOne) {
    openOnTree();
    save("01");
    command("History");
    waitForAnswer();
    auto& scans = control<QLineEdit>("txtScans");
    EXPECT_EQ(modGlobal::addBackslash(platform::toInternal(scans.text().toStdString())),
              modGlobal::addBackslash(saved.internal()));
    EXPECT_EQ(remark(), "There is one saved scan of this folder; a curve begins with the second.");
    EXPECT_EQ(modQt::helpTopic(scans), QStringLiteral("history.html"));
    dialogs.file = application.typed();
    control<QPushButton>("cmdBrowse").click();
    waitForAnswer();
    EXPECT_EQ(scans.text().toStdString(), application.typed());
    control<frmHistory>("frmHistory").resize(700, 500);
    window->close();
    open().openPath(tree.typed());
    EXPECT_EQ(control<QLineEdit>("txtScans").text().toStdString(), application.typed());
    EXPECT_EQ(control<frmHistory>("frmHistory").size(), QSize(700, 500));
}

// The last question counts, however quickly they follow each other.
TEST_F(HistoryWindow, answersTheLastQuestionAndCanBeClosedWhileItReads) {
    threeScans();
    frmHistory& box = show();
    for (int i = 0; i < 20; ++i) {
        box.showFolder(key(i % 2 == 0 ? "a" : ""));
        QApplication::processEvents();
    }
    box.showFolder(key("a"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return listed().find("a: 3") != std::string::npos; })) << listed();
    box.showFolder(key());
    control<QPushButton>("cmdCancelReading").click();
    waitForAnswer();
    EXPECT_THAT(remark(), HasSubstr("saved scans"));
    box.showFolder(key("a"));
    close();
}

} // namespace
