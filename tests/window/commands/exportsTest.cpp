#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTest>
#include <algorithm>
#include <filesystem>

#include "platform/files.h"
#include "support/sqliteScript.h"
#include "support/testSystem.h"
#include "widgets/qtText.h"
#include "window/commands/listMenu.h"
#include "window/dialogs/fileFilter.h"
#include "window/menu/popMenu.h"
#include "window/windowFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

// The commands of the main menu that write files and load them again.
class Exports : public MainWindow {
protected:
    // Answers the options box with the button of that name, after choosing the option of that name, if any.
    void answerOptions(const char* button, const char* option = "") {
        dialogs.setExportOptions = [this, button, option](frmExport& box) {
            offered = box.findChild<QRadioButton*>(QStringLiteral("optDetail1"))->isChecked() ? 2 : 1;
            const auto& only = *box.findChild<QCheckBox*>(QStringLiteral("chkSelectedFolder"));
            offeredFolder =
                (only.isEnabled() ? "" : "grey ") + std::string(only.isChecked() ? "only " : "") +
                box.findChild<QLabel*>(QStringLiteral("lblSelectedFolder"))->toolTip().toStdString();
            if (auto* choice = box.findChild<QAbstractButton*>(QString::fromUtf8(option))) {
                choice->click();
            }
            if (*button == '\0') {
                box.close(); // with the title bar
            } else {
                box.findChild<QPushButton*>(QString::fromUtf8(button))->click();
            }
        };
    }
    // Runs the command and gives this answer to its file dialog.
    void save(const char* commandKey, const std::string& file) {
        dialogs.file = file;
        dialogs.messages.clear();
        dialogs.questions.clear();
        command(commandKey);
    }
    std::string output(const char* name) const { return application.typed(name); }
    bool isThere(const char* name) const { return std::filesystem::exists(application / name); }
    // The content of the tree: a line for each node, with its state.
    std::vector<std::string> treeLines() {
        auto& tvw = control<FolderTree>("tvw");
        std::vector<std::string> lines;
        for (const PlacedNode& node : tvw.allNodes()) {
            const std::string& key = node.content.key;
            lines.push_back(key + "|" + node.content.text.toStdString() + "|" + tvw.tag(key).toStdString() +
                            "|" + tvw.parentKey(key) + (tvw.isExpanded(key) ? "|open" : "") +
                            (tvw.findNode("DUMMY" + key) ? "|more" : "") +
                            (tvw.selectedKey() == key ? "|selected" : ""));
        }
        return lines;
    }

    int offered = 0; // the choice shown in the options box: 1 detailed, 2 summary
    std::string offeredFolder;
};

TEST_F(Exports, writeTheReportThatTheOptionsAskFor) {
    openOnTree();
    const QRegularExpression stampedName(
        QStringLiteral("^\\d\\d-\\d\\d-\\d{4}-\\d\\d-\\d\\d-\\d\\d\\.(\\w+)$"));
    const struct {
        const char* command;
        const char* file;
        const char* option;
        const char* extension;
        const char* filter;
        const char* holds;
        const char* lacks;
    } cases[] = {
        {"ExportHTML", "all.html", "optDetail0", "html", "HTML Files (*.html)|*.html|All Files (*.*)|*.*",
         "big.bin", "Summary"},
        {"ExportHTML", "folders.html", "optDetail1", "html", "HTML Files (*.html)|*.html|All Files (*.*)|*.*",
         "Spannory - Summary Report (", "big.bin"},
        {"ExportText", "all.csv", "optDetail0", "csv", "Text Files (*.csv)|*.csv|All Files (*.*)|*.*",
         "\"3000\",\"2.9 Kb\"", "<"},
        {"ExportXML", "tree.xml", "", "xml", "XML Files (*.xml)|*.xml|All Files (*.*)|*.*",
         "<sizeBytes>3010</sizeBytes>", "big.bin"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.file);
        answerOptions("cmdOK", each.option);
        save(each.command, output(each.file));
        const std::string report = application.read(each.file);
        EXPECT_THAT(report, HasSubstr(each.holds));
        EXPECT_THAT(report, Not(HasSubstr(each.lacks)));
        EXPECT_EQ(dialogs.requests.back().filter, each.filter);
        const QString offeredName = QString::fromStdString(dialogs.requests.back().fileName);
        EXPECT_EQ(stampedName.match(offeredName).captured(1).toStdString(), each.extension)
            << dialogs.requests.back().fileName;
        EXPECT_EQ(dialogs.opened.back(), output(each.file));
        EXPECT_THAT(panel(3), HasSubstr(each.file));
    }
    EXPECT_THAT(dialogs.messages, IsEmpty());
    EXPECT_FALSE(control<QProgressBar>("prg").isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);

    // The workbook has no file dialog.
    const std::size_t asked = dialogs.requests.size();
    answerOptions("cmdOK", "optDetail0");
    save("ExportExcel", "");
    EXPECT_THAT(dialogs.requests, SizeIs(asked));
    const std::string workbook = dialogs.opened.back();
    EXPECT_THAT(workbook, HasSubstr("Spannory-"));
    EXPECT_EQ(platform::readFile(workbook).substr(0, 2), "PK");
    platform::deleteFile(workbook);
}

TEST_F(Exports, keepTheirOptionsFromOneToTheNext) {
    openOnTree();
    answerOptions("cmdOK", "optDetail1");
    save("ExportText", output("1.csv"));
    EXPECT_EQ(offered, 1) << "detailed at first";
    answerOptions("cmdCancel", "optDetail0");
    save("ExportText", output("2.csv"));
    EXPECT_EQ(offered, 2) << "what was chosen last";
    EXPECT_FALSE(isThere("2.csv"));
    save("ExportXML", output("2.xml"));
    EXPECT_FALSE(isThere("2.xml")) << "Cancel applies to it as well";
    window->settings().setExact(true);
    save("ExportXML", output("exact.xml"));
    EXPECT_TRUE(isThere("exact.xml"));
    window->settings().setExact(false);
    answerOptions("cmdCancel", "optDetail0");
    save("ExportText", output("2.csv"));
    answerOptions("");
    save("ExportText", output("3.csv"));
    EXPECT_FALSE(isThere("3.csv")) << "closing the box leaves it cancelled";
    answerOptions("cmdOK");
    save("ExportText", output("4.csv"));
    EXPECT_EQ(application.read("4.csv"), application.read("1.csv"));
    answerOptions("", "optDetail0");
    save("ExportText", output("5.csv"));
    EXPECT_EQ(application.read("5.csv"), application.read("1.csv")) << "closing changes nothing and goes on";
    save("ExportXML", output("2.xml"));
    EXPECT_TRUE(isThere("2.xml"));
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(Exports, coverOnlyTheSelectedFolderOnDemand) {
    openOnTree();
    const std::string a = tree.typed("a");
    const std::string b = tree.typed("b");
    const struct {
        const char* selected;
        const char* button; // empty: the title bar
        const char* clicked;
        std::string offered;
        std::vector<std::string> holds; // of the files; none if nothing is written
    } steps[] = {
        {"a", "cmdOK", "", a, {"big.bin", "x.txt", "note.txt", "own.txt"}},
        {"a", "cmdOK", "chkSelectedFolder", a, {"big.bin", "x.txt"}},
        {"b", "cmdOK", "", "only " + b, {"note.txt"}},
        {"b", "cmdOK", "optDetail1", "only " + b, {}},
        {"b", "cmdOK", "optDetail0", "only " + b, {"note.txt"}},
        {"a", "cmdCancel", "chkSelectedFolder", "only " + a, {}},
        {nullptr,
         "cmdOK",
         "",
         "grey No folder that was scanned is selected.",
         {"big.bin", "x.txt", "note.txt", "own.txt"}},
        {"a", "", "chkSelectedFolder", "only " + a, {"big.bin", "x.txt"}},
        {"a", "cmdOK", "chkSelectedFolder", "only " + a, {"big.bin", "x.txt", "note.txt", "own.txt"}},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(&step - steps);
        if (step.selected == nullptr) {
            control<FolderTree>("tvw").setCurrentIndex({});
        } else {
            click(key(step.selected));
        }
        answerOptions(step.button, step.clicked);
        std::filesystem::remove(application / "x.csv");
        save("ExportText", output("x.csv"));
        EXPECT_EQ(offeredFolder, step.offered);
        const std::string report = isThere("x.csv") ? application.read("x.csv") : "";
        for (const char* file : {"big.bin", "x.txt", "note.txt", "own.txt"}) {
            const bool expected = std::find(step.holds.begin(), step.holds.end(), file) != step.holds.end();
            EXPECT_EQ(report.find(file) != std::string::npos, expected) << file;
        }
    }
}

TEST_F(Exports, endSilentlyWhenThePersonDoesNotGoOn) {
    openOnTree();
    application.write("there", "old");
    for (const char* each : {"ExportHTML", "ExportText", "ExportXML", "ExportMDB", "ExportChartEntire",
                             "ExportChartVisible", "LoadMDB"}) {
        SCOPED_TRACE(each);
        save(each, ""); // Cancel in the file dialog
        EXPECT_THAT(dialogs.questions, IsEmpty());
        if (std::string_view(each) != "LoadMDB") {
            dialogs.answer = false;
            save(each, output("there"));
            EXPECT_THAT(dialogs.questions, ElementsAre("Overwrite existing file?"));
            EXPECT_THAT(dialogs.confirmed.back(), testing::AllOf(testing::StartsWith(output("there") + " ("),
                                                                 testing::EndsWith("M, 3 bytes)")));
            EXPECT_EQ(application.read("there"), "old");
            dialogs.answer = true;
            save(each, output("main.dat"));
            EXPECT_THAT(dialogs.messages, SizeIs(1)) << "the working database is refused as a target";
            dialogs.messages.clear();
        }
        EXPECT_THAT(dialogs.messages, IsEmpty());
    }
    EXPECT_THAT(dialogs.opened, IsEmpty());
    EXPECT_THAT(query("select count(*) from details"), ElementsAre("8"));
}

TEST_F(Exports, tellWhyTheyFailAndGoOn) {
    openOnTree();
    application.write("folder.d/x", "");
    const struct {
        const char* command;
        std::string file;
        const char* message;
    } cases[] = {
        {"ExportHTML", output("folder.d"), "[modGlobal.exportHTMLSizeReport]"},
        {"ExportText", output("missing/x.csv"), "[modGlobal.exportTextSizeReport]"},
        {"ExportXML", output("missing/x.xml"), "[modGlobal.exportXMLSizeReport]"},
        {"ExportMDB", output("missing/x.mdb"), "Error 76 exporting to Access.  Please try again."},
        {"ExportMDB", output("folder.d"), "Error 75 exporting to Access.  Please try again."},
        {"ExportChartVisible", output("missing/x.png"), "[frmMain.cp_Click]"},
        {"LoadMDB", output("missing.mdb"), "[frmMain.cp_Click]"},
        {"LoadMDB", output("settings.ini"), "[frmMain.cp_Click]"},
        {"LoadMDB", output("main.dat"), "[frmMain.cp_Click]"},
        {"ExportHTML", testSystem::fullDevice(), "[modGlobal.exportHTMLSizeReport]"},
        {"ExportMDB", testSystem::fullDevice(), "Error 61 exporting to Access.  Please try again."},
    };
    for (const auto& each : cases) {
        if (each.file.empty()) {
            continue; // no file is always full here
        }
        SCOPED_TRACE(each.file);
        dialogs.subjects.clear();
        save(each.command, each.file);
        EXPECT_THAT(dialogs.messages, ElementsAre(HasSubstr(each.message)));
        const std::string reason =
            dialogs.messages[0] + (dialogs.subjects.empty() ? "" : dialogs.subjects[0]);
        EXPECT_THAT(reason, HasSubstr(": " + each.file + " was not "));
        EXPECT_THAT(application.read("errorLog.txt"), Not(IsEmpty()));
        EXPECT_THAT(query("select count(*) from details"), ElementsAre("8"));
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }
    window->database().database().Execute("delete * from details");
    save("ExportHTML", output("x.html"));
    EXPECT_THAT(dialogs.messages, ElementsAre("No data to export."));
    EXPECT_FALSE(isThere("x.html"));
}

TEST_F(Exports, areGreyWhileAScanRunsAndNothingElseBeginsWhileTheyRun) {
    makeTree();
    open();
    std::vector<bool> enabled;
    duringScan([&] {
        for (const char* each : {"ExportHTML", "ExportMDB", "LoadMDB", "Refresh"}) {
            enabled.push_back(window->findChild<QAction*>(QString::fromUtf8(each))->isEnabled());
        }
    });
    window->openPath(tree.typed());
    EXPECT_THAT(enabled, ElementsAre(false, false, false, true));
    EXPECT_TRUE(window->findChild<QAction*>(QStringLiteral("ExportHTML"))->isEnabled());

    // During an export, anything that would start a scan waits, and so does closing the window.
    tree.write("c/late.txt", "1");
    bool closedAtOnce = true;
    std::string scanned = "?";
    dialogs.setExportOptions = [&](frmExport& box) {
        window->openPath(tree.typed("c"));
        scanned = query("select count(*) from details").front();
        box.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    };
    save("ExportText", output("x.csv"));
    EXPECT_EQ(scanned, "8");
    EXPECT_THAT(application.read("x.csv"), Not(HasSubstr("late.txt")));
    EXPECT_THAT(query("select count(*) from details"), ElementsAre("10")) << "it was handled afterwards";
    dialogs.setExportOptions = [&](frmExport& box) {
        closedAtOnce = window->close();
        box.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    };
    save("ExportText", output("y.csv"));
    EXPECT_FALSE(closedAtOnce);
    EXPECT_THAT(application.read("y.csv"), HasSubstr("late.txt"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->isVisible(); }));
}

TEST_F(Exports, showTheirProgressAndAskBeforeALargeReportIsOpened) {
    open();
    Database& database = window->database().database();
    database.BeginTrans();
    const auto details = database.OpenRecordset("details");
    for (int row = 0; row < 10001; ++row) {
        details->AddNew();
        details->Fields("size").setNumber(1);
        details->Update();
    }
    database.CommitTrans();
    std::set<int> shown;
    auto& prg = control<QProgressBar>("prg");
    QObject::connect(&prg, &QProgressBar::valueChanged, &prg, [&](int value) {
        EXPECT_TRUE(prg.isVisible() || value == 0);
        shown.insert(value);
    });
    dialogs.answer = false;
    save("ExportText", output("x.csv"));
    EXPECT_TRUE(shown.contains(prg.maximum()));
    EXPECT_THAT(dialogs.confirmed, IsEmpty()) << "nothing is lost";
    EXPECT_THAT(
        dialogs.questions,
        ElementsAre("The file was saved successfully, but it may take a while to open.  Do you want to "
                    "open the file?"));
    EXPECT_THAT(dialogs.opened, IsEmpty());
    dialogs.questions.clear();
    save("ExportExcel", "");
    EXPECT_THAT(dialogs.questions, ElementsAre(HasSubstr("There are more than 10,000 items to export.")));
    EXPECT_THAT(dialogs.opened, IsEmpty());
}

TEST_F(Exports, pictureTheChartAsItIsOnTheScreenThoughAnotherTabIsShown) {
    application.write("window.ini", "[General]\nXTab=1\n");
    openOnTree();
    window->resize(900, 600);
    save("ExportChartVisible", output("behind.png"));
    const QImage behind(QString::fromStdString(output("behind.png")));
    tabs().setCurrentIndex(0);
    auto& chart = control<FolderChart>("tc");
    EXPECT_EQ(behind.size(), chart.size());
    const QString below =
        QRegularExpression::escape(modQt::shownPath(key())) +
        QStringLiteral(" \u00b7 3\\.2 Kb \u00b7 3 of 3 shown \u00b7 \\d\\d/\\d\\d/\\d\\d .*M");
    EXPECT_TRUE(QRegularExpression(below).match(behind.text(QStringLiteral("Description"))).hasMatch())
        << behind.text().toStdString();
    const QImage onScreen = chart.grab().toImage();
    save("ExportChartEntire", output("chart.pdf"));
    EXPECT_EQ(application.read("chart.pdf").substr(0, 4), "%PDF");
    EXPECT_EQ(chart.grab().toImage(), onScreen);
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

// --- Saved scans ----------------------------------------------------------------------------------------

TEST_F(Exports, bringASavedScanBackAsItWas) {
    openOnTree();
    answerOptions("cmdOK", "optDetail0");
    control<FolderTree>("tvw").setExpanded(key(), true);
    click(key("a"));
    tabs().setCurrentIndex(1);
    const auto treeBefore = treeLines();
    const auto rowsBefore = rows("lvwF");
    const auto barsBefore = bars();
    save("ExportMDB", output("scan.mdb"));
    EXPECT_EQ(dialogs.requests.back().filter, "Access Databases (*.mdb)|*.mdb|All Files (*.*)|*.*");
    save("ExportText", output("before.csv"));
    save("ExportXML", output("before.xml"));
    close();

    tree.write("a/new.txt", "was not there"); // the current content of the disk does not matter
    open();
    tabs().setCurrentIndex(1);
    save("LoadMDB", output("scan.mdb"));
    EXPECT_TRUE(dialogs.requests.back().fileName.empty());
    EXPECT_THAT(dialogs.messages, IsEmpty());
    EXPECT_EQ(treeLines(), treeBefore);
    EXPECT_EQ(rows("lvwF"), rowsBefore);
    EXPECT_EQ(panel(1), "8 items.");
    save("ExportText", output("after.csv"));
    save("ExportXML", output("after.xml"));
    EXPECT_EQ(application.read("after.csv"), application.read("before.csv"));
    tabs().setCurrentIndex(0);
    EXPECT_EQ(bars(), barsBefore);
    click(key("b"));
    click(key("a"));
    EXPECT_EQ(bars(), barsBefore);
    EXPECT_THAT(query("select count(*) from details"), ElementsAre("8")) << "nothing is scanned again";

    // Again, from the copy of the copy, and over a scan of something else.
    save("ExportMDB", output("again.mdb"));
    TemporaryFolder other;
    other.write("else.txt", "1");
    window->openPath(other.typed());
    save("LoadMDB", output("again.mdb"));
    EXPECT_EQ(treeLines(), treeBefore) << "the tree's earlier content is gone";
    save("ExportText", output("after.csv"));
    EXPECT_EQ(application.read("after.csv"), application.read("before.csv"));
    pressF5();
    EXPECT_THAT(query("select fileName from details where fileName=\"new.txt\""), ElementsAre("new.txt"))
        << "a refresh reads the disk";
}

TEST_F(Exports, copyNoLoadedNameAsAFormula) {
    tree.write("=1+1", "");
    openOnTree();
    tabs().setCurrentIndex(1);
    const auto copied = [this] {
        control<PopMenu>("cPLvw").action(ListMenu::copyItem).trigger();
        return QGuiApplication::clipboard()->text().toStdString();
    };
    EXPECT_THAT(copied(), HasSubstr("\r\n=1+1,"));
    save("ExportMDB", output("scan.mdb"));
    save("LoadMDB", output("scan.mdb"));
    EXPECT_THAT(copied(), HasSubstr("\r\n'=1+1,"));
}

TEST_F(Exports, keepTheScanAsOneOfThisComputerWhenALoadIsRefused) {
    openOnTree();
    const std::string inA = "select idx from details where parentFolder=\"" + key("a") + "\"";
    EXPECT_THAT(query(inA), Not(IsEmpty()));
    runSqliteScript(output("late.mdb"), "create table details (size); create table nodes (nodeKey);"
                                        "insert into details values (1), ('not a size');");
    save("LoadMDB", output("late.mdb"));
    EXPECT_THAT(dialogs.messages, ElementsAre(HasSubstr("late.mdb")));
    EXPECT_THAT(query("select count(*) from details"), ElementsAre("8"));
    std::filesystem::remove_all(tree / "a");
    click(key("a"));
    EXPECT_THAT(query(inA), IsEmpty()) << "loaded rows would have stayed";
}

TEST_F(Exports, showAScanThatWasSavedWithoutATree) {
    openOnTree();
    save("ExportMDB", output("scan.mdb"));
    runSqliteScript(output("scan.mdb"), "delete from nodes");
    close();
    open();
    tabs().setCurrentIndex(1);
    save("LoadMDB", output("scan.mdb"));
    EXPECT_THAT(dialogs.messages, IsEmpty());
    EXPECT_EQ(control<FolderTree>("tvw").allNodes().front().content.key, "ROOT");
    EXPECT_EQ(selected(), key());
    EXPECT_THAT(rows("lvwF"), SizeIs(3));
    click(key());
    EXPECT_THAT(query("select count(*) from details"), ElementsAre("8"));

    // Its folders may be those of another machine.
    std::filesystem::remove_all(tree.path());
    save("LoadMDB", output("scan.mdb"));
    tabs().setCurrentIndex(0);
    clickBar(2);
    EXPECT_EQ(selected(), key("a"));
    EXPECT_EQ(control<FolderTree>("tvw").text(key("a")), QStringLiteral("a"));
    EXPECT_THAT(bars(), ElementsAre("deep=10", "|Files|=3000"));
    control<FolderTree>("tvw").setExpanded(key("a"), true);
    click(key("a/deep"));
    EXPECT_THAT(bars(), ElementsAre("|Files|=10"));
    EXPECT_THAT(query("select count(*) from details"), ElementsAre("8"));
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST(FileFilters, becomeThoseOfQtInOnePlace) {
    const auto filters = fileFilters("PNG Pictures (*.png)|*.png|PDF (*.pdf)|*.pdf|All Files (*.*)|*.*");
    ASSERT_THAT(filters, SizeIs(3));
    EXPECT_EQ(filters[0].shown, QStringLiteral("PNG Pictures (*.png)"));
    EXPECT_EQ(filters[2].shown, QStringLiteral("All Files (*)"));
    const std::tuple<const char*, int, const char*> names[] = {
        {"chart.png", 1, "chart.pdf"}, {"chart.PNG", 1, "chart.pdf"},           {"chart", 1, "chart"},
        {"chart.txt", 1, "chart.txt"}, {"v1.2.chart.pdf", 0, "v1.2.chart.png"}, {"chart.png", 2, "chart.png"},
    };
    for (const auto& [name, filter, expected] : names) {
        EXPECT_EQ(underFilter(QString::fromUtf8(name), filters[static_cast<std::size_t>(filter)], filters)
                      .toStdString(),
                  expected);
    }
}

} // namespace
