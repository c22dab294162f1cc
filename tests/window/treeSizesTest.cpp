#include "window/treeSizes.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QStyledItemDelegate>
#include <QTest>

#include "platform/drives.h"
#include "support/testSystem.h"
#include "tree/modDriveEnum.h"
#include "window/windowFixture.h"

namespace {

// Gives access to what a delegate paints.
class OptionOf final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::initStyleOption;
};

class TreeSizesInWindow : public MainWindow {
protected:
    // The text behind the node's own.
    std::string remark(const std::string& node) {
        auto& tvw = control<FolderTree>("tvw");
        QStyleOptionViewItem option;
        const QModelIndex index = static_cast<TreeModel*>(tvw.model())->indexOf(node);
        const auto init = &OptionOf::initStyleOption;
        (static_cast<QStyledItemDelegate*>(tvw.itemDelegate())->*init)(&option, index);
        return option.text.mid(index.data().toString().size()).trimmed().toStdString();
    }
};

TEST_F(TreeSizesInWindow, standBehindTheNamesOfScannedFoldersAndAreRemembered) {
    openOnTree();
    EXPECT_EQ(remark(key("a")), "");
    command("TreeSizes");
    EXPECT_TRUE(control<QAction>("TreeSizes").isChecked());
    EXPECT_EQ(remark(key()), "3.2 Kb");
    EXPECT_EQ(remark(key("a")), "2.9 Kb");
    EXPECT_EQ(remark("ROOT"), "");
    const std::string drive = testSystem::root();
    window->database().database().Execute("insert into details (fileName,parentFolder,isFolder,size) "
                                          "values (\"x\\\",\"" +
                                          drive + "\",1,5)");
    EXPECT_EQ(remark(drive), "") << "it was not scanned, only a folder in it";
    window->database().database().Execute("delete * from details where fileName=\"x\\\"");
    EXPECT_EQ(control<FolderTree>("tvw").text(key("a")), QStringLiteral("a"));
    tree.write("a/more.bin", std::string(10'000, 'x'));
    tree.write("c/new", "x");
    EXPECT_EQ(remark(key("a")), "2.9 Kb") << "as recorded";
    pressF5();
    EXPECT_EQ(remark(key("a")), "12.7 Kb");
    EXPECT_EQ(remark(key("c")), "1 bytes");
    window->close();
    close();

    open();
    EXPECT_TRUE(control<QAction>("TreeSizes").isChecked());
    window->openPath(tree.typed("b"));
    EXPECT_EQ(remark(key("b")), "200 bytes");
    command("TreeSizes");
    EXPECT_FALSE(control<QAction>("TreeSizes").isChecked());
    EXPECT_EQ(remark(key("b")), "");
}

TEST_F(TreeSizesInWindow, drivesTellTheirSpaceInTheirTips) {
    openOnTree();
    auto& tvw = control<FolderTree>("tvw");
    const auto tipOf = [&](const std::string& node) {
        return static_cast<TreeModel*>(tvw.model())
            ->indexOf(node)
            .data(Qt::ToolTipRole)
            .toString()
            .toStdString();
    };
    int known = 0;
    for (const std::string& drive : modDriveEnum::driveRoots()) {
        const bool isKnown = platform::driveSpace(drive).has_value();
        if (tvw.findNode(drive)) {
            EXPECT_EQ(tipOf(drive).find(" free of ") != std::string::npos, isKnown) << drive;
            known += isKnown ? 1 : 0;
        }
    }
    EXPECT_GT(known, 0);
    EXPECT_EQ(tipOf(key()).find(" free of "), std::string::npos);
}

} // namespace
