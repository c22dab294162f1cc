#include <gmock/gmock.h>

#include <QTest>
#include <QTimer>
#include <algorithm>
#include <filesystem>

#include "window/windowFixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// With a trash folder of its own.
class Trash : public MainWindow {
protected:
    void SetUp() override { qputenv("XDG_DATA_HOME", QByteArray::fromStdString(home.typed())); }
    void TearDown() override { qunsetenv("XDG_DATA_HOME"); }

    // Moves the rows with these names of the files list, or of another.
    void trashRows(const std::vector<std::string>& names, int tab = 1, const char* listName = "lvwF") {
        tabs().setCurrentIndex(tab);
        auto& list = control<ListView>(listName);
        list.setFocus();
        list.clearSelection();
        for (int row = 0; row < list.model()->rowCount(); ++row) {
            const QModelIndex index = list.model()->index(row, 0);
            if (std::find(names.begin(), names.end(), index.data().toString().toStdString()) != names.end()) {
                list.selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
                list.selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
            }
        }
        QTest::keyClick(&list, Qt::Key_Delete);
    }
    bool isInTrash(const char* name) const { return std::filesystem::exists(home / "Trash/files" / name); }
    std::string sizeOf(const char* folder) const {
        return query("select size from details where isFolder=1 and fileName=\"" + std::string(folder) +
                     "\\\"")
            .at(0);
    }

    TemporaryFolder home;
};

TEST_F(Trash, takesFilesAndFoldersOutOfAllTotals) {
    openOnTree();
    click(key("a"));
    const auto stamps = [this] {
        return query("select count(*) from details where scanCompleteTime is not null");
    };
    const std::vector<std::string> before = stamps();
    trashRows({"big.bin"});
    EXPECT_THAT(dialogs.questions,
                ElementsAre("Move " + tree.typed("a/big.bin") + " (2.9 Kb) to the trash?"));
    EXPECT_EQ(dialogs.confirmed.size(), 1U) << "Enter moves nothing";
    EXPECT_TRUE(isInTrash("big.bin"));
    EXPECT_FALSE(std::filesystem::exists(tree / "a/big.bin"));
    EXPECT_EQ(panel(3), "Moved to the trash: " + tree.typed("a/big.bin"));
    EXPECT_EQ(sizeOf("a"), "10");
    EXPECT_THAT(rows("lvwF"), ElementsAre(HasSubstr("deep|10 bytes")));
    EXPECT_EQ(stamps(), before) << "what is above stays scanned";

    trashRows({"deep"});
    EXPECT_THAT(dialogs.questions.back(), HasSubstr("(10 bytes, 1 file, 0 folders)"));
    EXPECT_TRUE(isInTrash("deep"));
    EXPECT_FALSE(control<FolderTree>("tvw").findNode(key("a/deep")));
    EXPECT_EQ(sizeOf("a"), "0");

    click(key());
    tabs().setCurrentIndex(0);
    EXPECT_EQ(bars(), (std::vector<std::string>{"a=0", "|Files|=50", "b=200"}));
    trashRows({"a", "own.txt"});
    EXPECT_THAT(dialogs.questions.back(), HasSubstr("Move these 2 items (50 bytes) to the trash?"));
    EXPECT_EQ(panel(3), "Moved to the trash: 2 items");
    EXPECT_EQ(query("select count(*) from details where isFolder=0"), std::vector<std::string>{"1"});
    EXPECT_THAT(dialogs.messages, IsEmpty());
}

TEST_F(Trash, ofTheSelectedFolderGoesToTheOneAbove) {
    openOnTree();
    click(key("b"));
    control<FolderTree>("tvw").setFocus();
    QTest::keyClick(&control<FolderTree>("tvw"), Qt::Key_Delete);
    EXPECT_TRUE(isInTrash("b"));
    EXPECT_EQ(selected(), key());
    EXPECT_EQ(bars(), (std::vector<std::string>{"|Files|=50", "a=3010"}));
}

TEST_F(Trash, asksFirstAndNamesWhatFailed) {
    openOnTree();
    dialogs.answer = false;
    trashRows({"own.txt"});
    EXPECT_TRUE(std::filesystem::exists(tree / "own.txt"));
    EXPECT_THAT(rows("lvwF"), Contains(HasSubstr("own.txt")));

    dialogs.answer = true;
    std::filesystem::remove(tree / "own.txt");
    trashRows({"own.txt", "b"});
    EXPECT_THAT(dialogs.messages,
                ElementsAre(HasSubstr("Not moved to the trash:\n" + tree.typed("own.txt") + ": ")));
    EXPECT_THAT(rows("lvwF"), Contains(HasSubstr("own.txt"))) << "it is for a scan to find out";
    EXPECT_THAT(rows("lvwF"), Not(Contains(StartsWith("b|"))));
}

// What stood below it is selected then or, at the end, what stood above; what could not be moved stays so.
TEST_F(Trash, leavesTheSelectionInPlace) {
    constexpr int findTab = 4;
    for (const auto& [tab, list] : {std::pair(1, "lvwF"), std::pair(findTab, "lvwFound")}) {
        SCOPED_TRACE(list);
        dialogs.messages.clear();
        for (const auto& [name, size] : {std::pair("1", 500), std::pair("2", 400), std::pair("3", 350),
                                         std::pair("4", 300), std::pair("5", 250)}) {
            tree.write(std::string("files/") + name, std::string(static_cast<std::size_t>(size), 'x'));
        }
        openOnTree();
        window->openPath(tree.typed("files"));
        tabs().setCurrentIndex(tab);
        const auto selectedNames = [&, list = list] {
            EXPECT_TRUE(QTest::qWaitFor([&] { return !control<QTimer>("tmrFind").isActive(); }));
            std::string names;
            for (const int row : control<ListView>(list).selectedRows()) {
                names += control<ListView>(list).rows().text(row, 0);
            }
            return names;
        };
        ASSERT_EQ(selectedNames(), "1");
        trashRows({"2", "3"}, tab, list);
        EXPECT_EQ(selectedNames(), "4");
        trashRows({"5"}, tab, list);
        EXPECT_EQ(selectedNames(), "4");
        std::filesystem::remove(tree / "files/4");
        trashRows({"4"}, tab, list);
        EXPECT_EQ(selectedNames(), "4");
        EXPECT_THAT(dialogs.messages, ElementsAre(HasSubstr("files/4: ")));
        close();
    }
}

// A trash folder that is missing is made, with all above it. If it cannot be, nothing is moved: least of all
// to the working directory.
TEST_F(Trash, isNeverTheWorkingFolder) {
    home.write("file", "x");
    home.write("without/Trash", "x");
    TemporaryFolder working;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(working.path());
    struct Case {
        const char* data;
        bool isMoved;
    };
    for (const auto& [data, isMoved] :
         {Case{"file/data", false}, Case{"without", false}, Case{"new/data", true}}) {
        SCOPED_TRACE(data);
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString(home.typed(data)));
        dialogs.messages.clear();
        openOnTree();
        trashRows({"own.txt"});
        EXPECT_EQ(std::filesystem::exists(tree / "own.txt"), !isMoved);
        EXPECT_EQ(std::filesystem::exists(home / data / "Trash/files/own.txt"), isMoved);
        if (isMoved) {
            EXPECT_THAT(dialogs.messages, IsEmpty());
        } else {
            EXPECT_THAT(dialogs.messages, ElementsAre(HasSubstr("Trash was not created.")));
        }
        EXPECT_TRUE(std::filesystem::is_empty(working.path()));
        close();
    }
    std::filesystem::current_path(before);
}

} // namespace
