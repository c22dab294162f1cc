#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>
#include <QToolButton>

#include "base/formatSize.h"
#include "support/testSystem.h"
#include "window/windowFixture.h"

namespace fs = std::filesystem;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const std::string noNetwork = "[startup]\r\ndontUseNetwork=1\r\n";
const std::string answered = noNetwork + "[APPLICATION_SETTINGS]\r\nexact=0\r\n";

class FigureNoticesInWindow : public MainWindow {
protected:
    void openAnswered() {
        application.write("settings.ini", answered);
        openOnTree();
    }
    void makeLargeFile() const {
        tree.write("big", "");
        fs::resize_file(tree / "big", 3ULL << 30);
    }
    // The message on show; empty for none.
    std::string shown() {
        return control<QFrame>("messageBar").isVisible() ? control<QLabel>("lblMessage").text().toStdString()
                                                         : std::string();
    }
    void press(const char* button) { control<QAbstractButton>(button).click(); }
    void escape() {
        control<QWidget>("tvw").setFocus();
        QTest::keyClick(&control<QWidget>("tvw"), Qt::Key_Escape);
    }
    bool isExactChecked() { return control<QAction>("ExactFigures").isChecked(); }
    std::vector<std::string> sizeOfBig() const {
        return query("select size from details where fileName=\"big\"");
    }
};

constexpr const char* wrapped = "1 file of 2 GB or more is counted with wrapped sizes.";

TEST_F(FigureNoticesInWindow, askOnlyOnceWhetherFiguresAreToBeExact) {
    const struct {
        const char* button;
        const char* stored;
    } cases[]{{"cmdMessage2", "exact=0"}, {"cmdMessage1", "exact=1"}};
    for (const auto& [button, stored] : cases) {
        application.write("settings.ini", noNetwork);
        open();
        EXPECT_THAT(shown(), StartsWith("Exact figures "));
        window->close();
        EXPECT_THAT(settingsFile(), Not(HasSubstr("exact="))) << "there was no answer";
        open();
        press(button);
        EXPECT_EQ(shown(), "");
        EXPECT_THAT(settingsFile(), HasSubstr(stored));
        EXPECT_EQ(isExactChecked(), window->settings().exact());
        open();
        EXPECT_EQ(shown(), "");
        EXPECT_EQ(isExactChecked(), std::string(stored) == "exact=1");
    }
    EXPECT_THAT(dialogs.questions, IsEmpty());
}

TEST_F(FigureNoticesInWindow, leadFromWrappedSizesToExactOnes) {
    makeLargeFile();
    openAnswered();
    click(key("a")); // a second scan, which meets none
    EXPECT_EQ(shown(), wrapped);
    EXPECT_THAT(sizeOfBig(), ElementsAre("-1073741824"));
    press("cmdMessage1");
    EXPECT_EQ(shown(), "");
    EXPECT_THAT(sizeOfBig(), ElementsAre("3221225472"));
    EXPECT_TRUE(isExactChecked());
    EXPECT_THAT(settingsFile(), HasSubstr("exact=1"));
    EXPECT_EQ(selected(), key("a"));
    EXPECT_THAT(bars(), ElementsAre("deep=10", "|Files|=3000"));
    EXPECT_THAT(query("select count(*) from details"), ElementsAre("9"));
}

TEST_F(FigureNoticesInWindow, offerToScanAgainWhenTheSwitchIsTurnedOn) {
    makeLargeFile();
    openAnswered();
    dialogs.answer = false;
    command("ExactFigures");
    EXPECT_TRUE(isExactChecked());
    EXPECT_EQ(dialogs.questions.size(), 1U);
    EXPECT_THAT(sizeOfBig(), ElementsAre("-1073741824"));
    command("ExactFigures");
    EXPECT_FALSE(isExactChecked());
    EXPECT_EQ(dialogs.questions.size(), 1U);
    dialogs.answer = true;
    command("ExactFigures");
    EXPECT_THAT(sizeOfBig(), ElementsAre("3221225472"));
    EXPECT_EQ(shown(), "");
}

TEST_F(FigureNoticesInWindow, areClosedByEscapeWhichFirstEndsAScan) {
    makeLargeFile();
    makeTree();
    application.write("settings.ini", answered);
    open();
    duringScan([this] {
        EXPECT_FALSE(control<QAction>("ExactFigures").isEnabled());
        escape();
    });
    window->openPath(tree.typed());
    EXPECT_EQ(panel(4), "The scan was cancelled.");
    pressF5();
    EXPECT_EQ(panel(4), "");
    EXPECT_EQ(shown(), wrapped);
    escape();
    EXPECT_EQ(shown(), "");
    EXPECT_FALSE(window->search().CancelScan);
}

TEST_F(FigureNoticesInWindow, listTheFoldersThatCouldNotBeRead) {
    tree.write("deep/er/closed/file", "x");
    const std::string closed = key("deep/er/closed");
    application.write("settings.ini", answered);
    open();
    {
        const testSystem::ClosedFolder folder(tree / "deep/er/closed");
        if (!folder.isClosed()) {
            GTEST_SKIP() << "the superuser cannot become another user here";
        }
        window->openPath(tree.typed());
    }
    EXPECT_EQ(shown(), "1 folder could not be read.");
    EXPECT_EQ(panel(4), "1 folder could not be read.");
    press("cmdMessage1");
    auto& list = control<ListView>("lvwUnreadable");
    ASSERT_EQ(list.rows().rowCount(), 1);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(selected(), closed) << "the tree had not listed it";
    pressF5();
    EXPECT_EQ(panel(4), "");
    EXPECT_EQ(list.rows().rowCount(), 0);
}

// Two names of one file, and one that is mostly empty.
TEST_F(FigureNoticesInWindow, countWhatIsTakenOnTheDiskWhereAsked) {
    tree.write("a/data", std::string(20'000, 'x'));
    fs::create_hard_link(tree / "a/data", tree / "again");
    tree.write("sparse", "");
    fs::resize_file(tree / "sparse", 1 << 30);
    openAnswered();
    const auto columnOf = [this](const char* list) {
        std::vector<std::string> sizes;
        for (const std::string& row : rows(list)) {
            const std::size_t end = row.find('|');
            sizes.push_back(row.substr(0, row.find('|', end + 1)));
        }
        return sizes;
    };
    const auto figures = [this] { return control<QLabel>("lblFigures").text().toStdString(); };
    const auto onDisk = [this](const std::string& condition) {
        return std::stod(query("select sum(sizeOnDisk) from details where isFolder=0 and " + condition)[0]);
    };
    EXPECT_THAT(figures(), StartsWith("1.0 Gb, 7 files"));
    control<QTabWidget>("XTab").setCurrentIndex(1);
    EXPECT_THAT(columnOf("lvwF"), testing::Contains("sparse|1.0 Gb"));
    command("SizeOnDisk");
    EXPECT_TRUE(control<QAction>("SizeOnDisk").isChecked());
    EXPECT_THAT(settingsFile(), HasSubstr("onDisk=1"));
    EXPECT_THAT(figures(), HasSubstr(" on disk, 7 files"));
    EXPECT_THAT(columnOf("lvwF"),
                testing::Contains("sparse|" + modLvw::formatSize(onDisk("fileName=\"sparse\""))));
    EXPECT_LE(onDisk("fileName=\"sparse\""), 1 << 20);
    EXPECT_LE(onDisk("fileName=\"data\" or fileName=\"again\""), 30'000) << "it counts once";
    for (const auto& [tab, list] : {std::pair(2, "lvwT"), {3, "lvwU"}}) {
        control<QTabWidget>("XTab").setCurrentIndex(tab);
        EXPECT_THAT(columnOf(list), Not(testing::Contains(HasSubstr("Gb")))) << list;
    }
    window->close();
    close();

    open();
    EXPECT_TRUE(control<QAction>("SizeOnDisk").isChecked());
    window->openPath(tree.typed());
    EXPECT_THAT(figures(), HasSubstr(" on disk, "));
    const std::string old = application.typed("old.mdb");
    window->database().database().Execute("update details set sizeOnDisk=null");
    dialogs.file = old;
    command("ExportMDB");
    command("LoadMDB");
    EXPECT_THAT(shown(), HasSubstr("does not tell what files take on the disk"));
    escape();
    click(key("b"));
    pressF5();
    EXPECT_EQ(shown(), "") << "it was closed";
    click(key());
    EXPECT_THAT(figures(), StartsWith("1.0 Gb, 7 files"));
    command("SizeOnDisk");
    EXPECT_EQ(shown(), "");
}

} // namespace
