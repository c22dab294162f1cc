#include "tree/folderTree.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "tree/treeFixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FolderTreeTest : public testing::Test {
protected:
    FolderTreeTest() { fixture.tree.setExpanded(fixture.key(), true); }

    void click(std::string_view name, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(tree.viewport(), button, modifiers, placeOf(name));
    }
    QPoint placeOf(std::string_view name) {
        const QModelIndex node = fixture.indexOf(fixture.key(name));
        // On a busy machine the layout is delayed.
        EXPECT_TRUE(QTest::qWaitFor([&] { return tree.visualRect(node).isValid(); }));
        return tree.visualRect(node).topLeft() + QPoint(5, 5);
    }
    void press(int key) { QTest::keyClick(&tree, static_cast<Qt::Key>(key)); }

    TreeFixture fixture{"a/deep/deeper", "my documents", "my downloads", "z"};
    FolderTree& tree = fixture.tree;
};

TEST_F(FolderTreeTest, tellsOfEachClick) {
    click("z");
    click("z");
    click("z", Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(tree.selectedKey(), fixture.key("z")) << "Ctrl does not leave the tree without a selection";
    EXPECT_THAT(fixture.clicked, ElementsAre(fixture.key("z"), fixture.key("z"), fixture.key("z")));

    fixture.clicked.clear();
    click("a", Qt::RightButton);
    EXPECT_EQ(tree.selectedKey(), fixture.key("z")) << "the right button asks for a menu only";
    EXPECT_THAT(fixture.clicked, IsEmpty());

    fixture.clicked.clear();
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, placeOf("z"));
    EXPECT_THAT(fixture.clicked, IsEmpty());
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, placeOf("a"));
    EXPECT_THAT(fixture.clicked, ElementsAre(tree.selectedKey())) << "the selection has been announced";

    fixture.clicked.clear();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, placeOf("a") - QPoint(tree.indentation(), 0));
    EXPECT_TRUE(tree.isExpanded(fixture.key("a")));
    EXPECT_THAT(fixture.clicked, IsEmpty()) << "clicking the expand mark does not click the node";
}

TEST_F(FolderTreeTest, tellsOfTheKeyboardsSelectionOnceItRests) {
    tree.setRestInterval({}); // until events are handled
    tree.selectNode(fixture.key("a"));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_THAT(fixture.clicked, IsEmpty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !fixture.clicked.empty(); }));
    EXPECT_THAT(fixture.clicked, ElementsAre(fixture.key("my downloads")));

    press(Qt::Key_Up);
    press(Qt::Key_Return);
    press(Qt::Key_Space);
    EXPECT_THAT(fixture.clicked, ElementsAre(fixture.key("my downloads"), fixture.key("my documents"),
                                             fixture.key("my documents")));
    press(Qt::Key_Down);
    tree.selectNode(fixture.key("z"));
    QApplication::processEvents();
    EXPECT_EQ(fixture.clicked.size(), 3U) << "the program's selection is no click";
}

TEST_F(FolderTreeTest, findsWhatIsTypedBlanksIncluded) {
    const int before = QApplication::keyboardInputInterval();
    QApplication::setKeyboardInputInterval(60'000); // however busy the machine is
    QTest::keyClicks(&tree, QStringLiteral("my do"));
    EXPECT_EQ(tree.selectedKey(), fixture.key("my documents"));
    QTest::keyClicks(&tree, QStringLiteral("w"));
    EXPECT_EQ(tree.selectedKey(), fixture.key("my downloads"));
    QApplication::setKeyboardInputInterval(before);
}

TEST_F(FolderTreeTest, expandsOneLevelByKeys) {
    tree.selectNode(fixture.key("a"));
    press(Qt::Key_Asterisk);
    EXPECT_TRUE(tree.isExpanded(fixture.key("a")));
    EXPECT_FALSE(tree.findNode(fixture.key("a/deep/deeper"))) << "not the whole disk";
    press(Qt::Key_Left);
    EXPECT_FALSE(tree.isExpanded(fixture.key("a")));
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_EQ(fixture.children(fixture.key("a/deep")), "deeper");
    tree.setExpanded(fixture.key("a/deep/deeper"), true);
    tree.setExpanded(fixture.key("a/deep/deeper"), true);
    EXPECT_FALSE(fixture.hasPlaceholder(fixture.key("a/deep/deeper"))) << "it turned out to be empty";
    EXPECT_FALSE(tree.model()->hasChildren(fixture.indexOf(fixture.key("a/deep/deeper"))));
}

TEST_F(FolderTreeTest, selectsADeepNodeBehindCollapsedOnes) {
    tree.setExpanded(fixture.key("a"), true);
    tree.setExpanded(fixture.key("a/deep"), true);
    tree.setExpanded(fixture.key("a"), false);
    tree.setExpanded(fixture.key(), false);
    tree.selectNode(fixture.key("a/deep/deeper"));
    EXPECT_EQ(tree.selectedKey(), fixture.key("a/deep/deeper"));
    EXPECT_TRUE(
        tree.viewport()->rect().intersects(tree.visualRect(fixture.indexOf(fixture.key("a/deep/deeper")))));
    EXPECT_TRUE(tree.isFirstNode(fixture.key()) && !tree.isFirstNode(fixture.key("a")));
    EXPECT_THAT(fixture.clicked, IsEmpty());
}

TEST_F(FolderTreeTest, showsTheNodeAboveASelectedOneIfThereIsRoomForBoth) {
    constexpr int before = 60;
    for (const int children : {5, 100}) {
        SCOPED_TRACE(children);
        const std::string parent = "parent of " + std::to_string(children) + "\\";
        for (int i = 0; i < before; ++i) {
            tree.addNode({}, {parent + "before\\" + std::to_string(i), QStringLiteral("x"), {}, {}});
        }
        tree.addNode({}, {parent, QStringLiteral("parent"), {}, {}});
        std::string last;
        for (int i = 0; i < children; ++i) {
            last = parent + std::to_string(i) + "\\";
            tree.addNode(parent, {last, QStringLiteral("child"), {}, {}});
        }
        tree.setExpanded(parent, true);
        for (int i = 0; i < before; ++i) {
            tree.addNode({}, {parent + "after\\" + std::to_string(i), QStringLiteral("x"), {}, {}});
        }
        const auto placeOf = [&](const std::string& key) { return tree.visualRect(fixture.indexOf(key)); };
        for (const bool fromBelow : {false, true}) { // only the child would come into sight
            fromBelow ? tree.scrollToBottom() : tree.scrollToTop();
            tree.selectNode(last);
            EXPECT_TRUE(tree.viewport()->rect().top() <= placeOf(last).top() &&
                        placeOf(last).bottom() <= tree.viewport()->rect().bottom());
            EXPECT_EQ(placeOf(parent).top() >= 0, children == 5);
        }
    }
}

TEST_F(FolderTreeTest, asksForRemarksOnlyOnNodesInSightAndOnlyOnce) {
    constexpr int many = 1000;
    for (int i = 0; i < many; ++i) {
        tree.addNode({}, {"node " + std::to_string(i) + "\\", QStringLiteral("node"), {}, {}});
    }
    int asked = 0;
    QString remark = QStringLiteral("12.0 Gb, or a remark of some length that makes the row wider");
    tree.setRemarks([&](const std::string&) {
        ++asked;
        return remark;
    });
    const auto settle = [] { QTest::qWait(50); };
    settle();
    const int inSight = asked;
    EXPECT_GT(inSight, 3);
    EXPECT_LT(inSight, 200);
    EXPECT_GT(tree.columnWidth(0), tree.fontMetrics().horizontalAdvance(remark)) << "there is room for it";
    tree.viewport()->repaint();
    settle();
    EXPECT_EQ(asked, inSight);
    EXPECT_EQ(tree.text("node 1\\"), QStringLiteral("node"));
    tree.forgetRemarks();
    settle();
    EXPECT_EQ(asked, 2 * inSight);
    tree.setRemarks({});
    settle();
    EXPECT_EQ(asked, 2 * inSight);
}

TEST_F(FolderTreeTest, bearsTheTreeChangingWhileANodeExpands) {
    bool within = false;
    fixture.userInterface.onYield = [&] {
        if (std::exchange(within, true)) {
            return;
        }
        QApplication::processEvents();
        click("z");
        modGlobal::addNode(fixture.key("0") + "new", tree, fixture.key(), fixture.images);
        tree.selectNode(fixture.key("my documents"));
        tree.setExpanded(fixture.key("a"), false);
        tree.setExpanded(fixture.key("z"), true);
        QApplication::processEvents();
    };
    click("a");
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, placeOf("a"));
    QApplication::processEvents();
    EXPECT_EQ(fixture.children(fixture.key()), "a,my documents,my downloads,new,z");
    EXPECT_EQ(fixture.children(fixture.key("a")), "deep");
    EXPECT_THAT(fixture.clicked, ElementsAre(fixture.key("a"), fixture.key("z")));
    EXPECT_THAT(fixture.userInterface.messages, IsEmpty());
}

// The scroll bar that a wide row needs covers that row; it must not disappear because the row is then out of
// sight.
TEST(FolderTree, comesToRestWithAScrollBar) {
    constexpr int rows = 12;
    FolderTree tree;
    for (int row = 0; row < rows; ++row) {
        tree.addNode({}, {std::to_string(row), QString(row == rows / 2 ? 90 : 3, QLatin1Char('x')), {}, {}});
    }
    tree.show();
    const QSignalSpy changes(tree.horizontalScrollBar(), &QScrollBar::rangeChanged);
    const auto comesToRest = [&changes] { // a delayed layout may come late
        for (int turn = 0, quiet = 0; turn < 200; ++turn) {
            const qsizetype before = changes.count();
            QApplication::processEvents();
            quiet = changes.count() == before ? quiet + 1 : 0;
            if (quiet == 5) {
                return true;
            }
        }
        return false;
    };
    for (int height = 60; height < 200; ++height) {
        for (const int position : {0, 3, rows}) {
            tree.resize(200, height);
            tree.verticalScrollBar()->setValue(position);
            EXPECT_TRUE(comesToRest()) << height << " " << position;
        }
    }
}

TEST(FolderTree, showsASelectedNodeWithItsOtherImage) {
    const auto icon = [](Qt::GlobalColor color) {
        QPixmap pixmap(16, 16);
        pixmap.fill(color);
        return QIcon(pixmap);
    };
    FolderTree tree;
    tree.addNode({}, {"/\\", QStringLiteral("/"), icon(Qt::green), icon(Qt::red)});
    const auto redder = [&] {
        const QColor color = tree.grab().toImage().pixelColor(
            tree.visualRect(tree.model()->index(0, 0)).topLeft() + QPoint(12, 9));
        return color.red() > color.green();
    };
    EXPECT_FALSE(redder());
    tree.selectNode("/\\");
    EXPECT_TRUE(redder());
}

} // namespace
