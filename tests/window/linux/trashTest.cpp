#include <gmock/gmock.h>

#include <QTest>
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

    // Moves the rows with these names of the files list.
    void trashRows(const std::vector<std::string>& names) {
        tabs().setCurrentIndex(1);
        auto& list = control<ListView>("lvwF");
        list.setFocus();
        list.clearSelection();
        for (int row = 0; row < list.model()->rowCount(); ++row) {
            const QModelIndex index = list.model()->index(row, 0);
            if (std::find(names.begin(), names.end(), index.data().toString().toStdString()) != names.end()) {
                list.selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
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

} // namespace
