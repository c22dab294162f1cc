#include "widgets/treemap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QContextMenuEvent>
#include <QImage>
#include <QTest>
#include <QToolTip>

#include "support/treemapMaker.h"
#include "widgets/qtText.h"
#include "widgets/treemapPicture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TreemapTest : public testing::Test {
protected:
    TreemapTest() {
        treemap.resize(800, 600);
        QObject::connect(&treemap, &Treemap::itemSelected, &treemap, [this] { ++selections; });
        QObject::connect(&treemap, &Treemap::itemEntered, &treemap,
                         [this](const std::string& path) { entered.push_back(path); });
        QObject::connect(&treemap, &Treemap::menuRequested, &treemap, [this] { ++menus; });
        treemap.show();
        treemap.setFocus();
        static_cast<void>(QTest::qWaitForWindowActive(&treemap));
    }

    // a: 1.txt 300, 2.iso 200; b: 3.txt 290, 4.iso 200; small.x 10
    static std::shared_ptr<const TreemapTree> sample() {
        TreemapMaker maker(2e6);
        const std::uint32_t a = maker.add(0, {TreemapMaker::folder("a", 500), TreemapMaker::folder("b", 490),
                                              maker.file("small.x", 10, "x")});
        maker.add(a, {maker.file("1.txt", 300), maker.file("2.iso", 200, "iso")});
        maker.add(a + 1, {maker.file("3.txt", 290), maker.file("4.iso", 200, "iso")});
        return maker.take();
    }
    [[nodiscard]] QPoint middleOf(const std::string& path) {
        for (int i = treemap.selectable(); i-- > 0;) {
            if (treemap.pathOf(i) == path) {
                return treemap.markOf(i).center().toPoint();
            }
        }
        throw std::out_of_range(path);
    }
    void click(const std::string& path) { QTest::mouseClick(&treemap, Qt::LeftButton, {}, middleOf(path)); }
    [[nodiscard]] QImage shown() { return treemap.grab().toImage(); }

    Treemap treemap;
    int selections = 0;
    int menus = 0;
    std::vector<std::string> entered;
};

TEST_F(TreemapTest, pointerSelectsAndEnters) {
    treemap.setTree(sample());
    click("C:\\a\\1.txt");
    EXPECT_EQ(treemap.selectedPath(), "C:\\a\\1.txt");
    EXPECT_EQ(treemap.selectedFolder(), "C:\\a\\");
    EXPECT_EQ(treemap.accessibleDescription(),
              modQt::shownPath("C:\\a\\1.txt") + QStringLiteral(", 300 bytes"));
    QTest::mouseClick(&treemap, Qt::LeftButton, {}, treemap.markOf(2).topLeft().toPoint() + QPoint(3, 3));
    EXPECT_EQ(treemap.selectedPath(), "C:\\b\\") << "its title";
    EXPECT_EQ(treemap.selectedFolder(), "C:\\b\\");
    EXPECT_EQ(selections, 2);

    QTest::mousePress(&treemap, Qt::LeftButton, {}, middleOf("C:\\a\\1.txt"));
    QTest::mouseRelease(&treemap, Qt::LeftButton, {}, middleOf("C:\\b\\3.txt"));
    EXPECT_EQ(selections, 2);
    QTest::mouseDClick(&treemap, Qt::LeftButton, {}, middleOf("C:\\b\\3.txt"));
    EXPECT_THAT(entered, IsEmpty()) << "the first click was on something else";
    click("C:\\b\\3.txt");
    QTest::mouseDClick(&treemap, Qt::LeftButton, {}, middleOf("C:\\b\\3.txt"));
    EXPECT_THAT(entered, ElementsAre("C:\\b\\3.txt"));

    QContextMenuEvent menu(QContextMenuEvent::Mouse, middleOf("C:\\a\\2.iso"), {});
    QApplication::sendEvent(&treemap, &menu);
    EXPECT_EQ(treemap.selectedPath(), "C:\\a\\2.iso");
    EXPECT_EQ(menus, 1);
}

TEST_F(TreemapTest, keysGoToNeighboursAndThroughFolders) {
    treemap.setTree(sample());
    struct Step {
        Qt::Key key;
        const char* path;
    };
    for (const Step& step :
         {Step{Qt::Key_Right, "C:\\a\\1.txt"}, Step{Qt::Key_Down, "C:\\a\\2.iso"},
          Step{Qt::Key_Down, "C:\\a\\2.iso"}, Step{Qt::Key_Right, "C:\\b\\4.iso"},
          Step{Qt::Key_Up, "C:\\b\\3.txt"}, Step{Qt::Key_Left, "C:\\a\\1.txt"},
          Step{Qt::Key_PageUp, "C:\\a\\"}, Step{Qt::Key_PageUp, "C:\\"}, Step{Qt::Key_PageUp, "C:\\"},
          Step{Qt::Key_PageDown, "C:\\a\\"}, Step{Qt::Key_PageDown, "C:\\a\\1.txt"},
          Step{Qt::Key_PageDown, "C:\\a\\1.txt"}, Step{Qt::Key_Home, "C:\\a\\1.txt"}}) {
        QTest::keyClick(&treemap, step.key);
        EXPECT_EQ(treemap.selectedPath(), step.path) << QKeySequence(step.key).toString().toStdString();
    }
    QTest::keyClick(&treemap, Qt::Key_Return);
    EXPECT_THAT(entered, ElementsAre("C:\\a\\1.txt"));
    QTest::keyClick(&treemap, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(menus, 1);

    treemap.setTree(nullptr);
    QTest::keyClick(&treemap, Qt::Key_Down);
    QTest::keyClick(&treemap, Qt::Key_Return);
    EXPECT_EQ(treemap.selectedPath(), "");
    EXPECT_EQ(entered.size(), 1U);
}

TEST_F(TreemapTest, homeGoesToTheLargestItemInWhateverFolder) {
    TreemapMaker maker;
    const std::uint32_t folder =
        maker.add(0, {TreemapMaker::folder("many", 2000), maker.file("one.x", 1000)});
    maker.add(folder, {maker.file("a.x", 700), maker.file("b.x", 700), maker.file("c.x", 600)});
    treemap.setTree(maker.take());
    QTest::keyClick(&treemap, Qt::Key_Home);
    EXPECT_EQ(treemap.selectedPath(), "C:\\one.x");
}

TEST_F(TreemapTest, selectionFollowsTheItem) {
    treemap.setTree(sample());
    click("C:\\small.x");
    selections = 0;
    TreemapMaker maker(2e6);
    maker.add(0, {maker.file("larger.x", 900), maker.file("small.x", 90)});
    treemap.setTree(maker.take());
    EXPECT_EQ(treemap.selectedPath(), "C:\\small.x");
    treemap.resize(300, 200);
    QTRY_VERIFY_WITH_TIMEOUT(treemap.markOf(0).width() < 300, 2000);
    EXPECT_EQ(treemap.selectedPath(), "C:\\small.x");
    selections = 0;
    TreemapMaker other(2e6);
    other.add(0, {other.file("larger.x", 900)});
    treemap.setTree(other.take());
    EXPECT_EQ(treemap.selectedPath(), "");
    EXPECT_EQ(selections, 1) << "whoever shows it is told";
}

TEST_F(TreemapTest, tellsItemsUnderThePointer) {
    treemap.setTree(sample());
    QTest::mouseMove(&treemap, middleOf("C:\\a\\2.iso"));
    QTRY_VERIFY_WITH_TIMEOUT(QToolTip::isVisible(), 2000);
    EXPECT_EQ(QToolTip::text(), modQt::shownPath("C:\\a\\2.iso") +
                                    QStringLiteral("\n200 bytes \u00b7 20.0% of ") +
                                    modQt::shownPath("C:\\"));
}

TEST_F(TreemapTest, namesTheColoursItUses) {
    TreemapMaker maker(2e6);
    std::vector<TreemapNode> files;
    for (int i = 0; i < 40; ++i) {
        const std::string extension = "e" + std::to_string(i);
        files.push_back(maker.file("f." + extension, 100 - i, extension.c_str()));
    }
    maker.add(0, files);
    treemap.setTree(maker.take());
    for (const QSizeF& size : {QSizeF(1200, 700), QSizeF(260, 300), QSizeF(90, 80)}) {
        const TreemapScene scene = treemap.sceneFor(size, treemap.font());
        std::size_t coloured = 0;
        for (std::size_t type = 1; type < scene.colours.size(); ++type) {
            coloured += scene.colours[type] != 0 ? 1U : 0U;
        }
        if (scene.legend.empty()) {
            EXPECT_EQ(coloured, 0U);
            continue;
        }
        EXPECT_EQ(scene.legend.size(), coloured + 1);
        EXPECT_EQ(scene.legend.front().name, coloured > 0 ? QStringLiteral("e0") : QStringLiteral("Other"));
        EXPECT_TRUE(coloured > 0 || size.width() < 100);
        EXPECT_EQ(scene.legend.back().name, QStringLiteral("Other"));
        for (const TreemapScene::LegendEntry& entry : scene.legend) {
            EXPECT_TRUE(QRectF(QPointF(), size).contains(entry.swatch.united(entry.label)))
                << size.width() << " " << entry.name.toStdString();
            EXPECT_GT(entry.swatch.top(), scene.map.tiles().front().area.bottom());
        }
    }
}

TEST_F(TreemapTest, typesKeepTheirColours) {
    const auto colourOf = [&](const char* extension) {
        for (const TreemapScene::LegendEntry& entry : treemap.sceneFor({800, 600}, treemap.font()).legend) {
            if (entry.name == QString::fromUtf8(extension)) {
                return entry.colour;
            }
        }
        return QRgb{};
    };
    treemap.setTree(sample());
    const QRgb iso = colourOf("iso");
    const QRgb txt = colourOf("txt");
    EXPECT_NE(iso, txt);
    TreemapMaker maker(2e6);
    maker.add(0,
              {maker.file("new.log", 900, "log"), maker.file("2.iso", 400, "iso"), maker.file("1.txt", 40)});
    treemap.setTree(maker.take());
    EXPECT_EQ(colourOf("iso"), iso);
    EXPECT_EQ(colourOf("txt"), txt);
    EXPECT_NE(colourOf("log"), iso);
    EXPECT_NE(colourOf("log"), txt);
}

TEST_F(TreemapTest, paintsCushionsAndMarksInLightAndDark) {
    treemap.setTree(sample());
    QPalette dark(QColor(40, 40, 40), QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    for (const QPalette& palette : {QPalette(QColor(240, 240, 240)), dark}) {
        treemap.setPalette(palette);
        const QImage before = shown();
        const QRect area = treemap.markOf(3).toAlignedRect();
        const auto light = [&](QPoint place) { return qGray(before.pixel(place)); };
        const QPoint nearCorner = area.bottomRight() - QPoint(3, 3);
        EXPECT_GT(light(area.topLeft() + QPoint(area.width() / 3, area.height() / 4)), light(nearCorner))
            << "it falls from the left above";
        treemap.selectRank(3);
        EXPECT_NE(shown(), before);
        treemap.selectRank(-1);
        EXPECT_EQ(shown(), before);
    }
    treemap.setTree(nullptr);
    treemap.setHint(QStringLiteral("Scanning..."));
    const QImage hint = shown();
    treemap.setHint(QStringLiteral("Nothing"));
    EXPECT_NE(shown(), hint);
}

TEST_F(TreemapTest, isSavedAsAPicture) {
    using Format = ChartPicture::Format;
    using Portion = ChartPicture::Portion;
    treemap.setTree(sample());
    const QImage light = shown().convertToFormat(QImage::Format_RGB32);
    treemap.selectRank(3);
    QPalette dark(QColor(40, 40, 40), QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    treemap.setPalette(dark);
    const QImage visible =
        QImage::fromData(TreemapPicture(treemap, Portion::visible, Format::png, {}).bytes());
    EXPECT_EQ(visible.size(), QSize(800, 600));
    EXPECT_EQ(visible.pixel(400, 400), light.pixel(400, 400)) << "in the colours of documents, without marks";
    EXPECT_EQ(QImage::fromData(TreemapPicture(treemap, Portion::entire, Format::png, {}).bytes()).size(),
              Treemap::usualSize);
    const TreemapPicture dated(treemap, Portion::entire, Format::pdf, QStringLiteral("today"));
    EXPECT_EQ(dated.scene().sizeOf(0), QStringLiteral("1,000 bytes \u00b7 today"));
    EXPECT_TRUE(dated.bytes().startsWith("%PDF"));
}

TEST_F(TreemapTest, assistiveTechnologyFindsItsItems) {
    treemap.setTree(sample());
    QAccessibleInterface& told = *QAccessible::queryAccessibleInterface(&treemap);
    ASSERT_EQ(told.childCount(), 8);
    QAccessibleInterface& item = *told.child(4);
    EXPECT_EQ(item.text(QAccessible::Name), modQt::shownPath("C:\\a\\1.txt"));
    EXPECT_EQ(told.childAt(item.rect().center().x(), item.rect().center().y()), &item);
    EXPECT_EQ(told.focusChild(), nullptr);
    item.actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(told.focusChild(), &item);
    EXPECT_EQ(treemap.selectedPath(), "C:\\a\\1.txt");
    item.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(entered, ElementsAre("C:\\a\\1.txt"));
    treemap.setTree(nullptr);
    EXPECT_EQ(told.childCount(), 0);
    EXPECT_FALSE(item.isValid());
}

} // namespace
