#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QProxyStyle>
#include <QScrollBar>
#include <QTest>
#include <array>

#include "support/expected.h"
#include "widgets/listView.h"
#include "widgets/systemIcons.h"

using testing::ElementsAre;

namespace {

constexpr std::array<ListColumn, 2> columns{
    {{"Name", "", false, "a name"}, {"Size", "SIZE", true, "1,023 bytes"}}};

struct List : testing::Test {
    List() {
        append({"apple", "banana", "cherry", "apricot"});
        list.resize(200, 150);
        list.show();
        QObject::connect(
            &list, &ListView::itemActivated, &list,
            [this](const std::string& key, const std::string& tag) { heard.push_back(key + tag); });
        QObject::connect(&list, &ListView::columnClicked, &list,
                         [this](int column) { heard.push_back(std::to_string(column)); });
        QObject::connect(&list, &ListView::menuRequested, &list,
                         [this](const QPoint& place) { menuPlaces.push_back(place); });
    }
    void append(const std::vector<std::string>& names) {
        std::vector<ListRow> rows;
        for (const std::string& name : names) {
            const std::array<ListCell, 2> cells{{{name, {}}, {"1 bytes", 1.0}}};
            rows.emplace_back(testSystem::root() + name, "FILE", cells);
        }
        list.rows().append(std::move(rows));
    }
    [[nodiscard]] QRect place(int row, int column) const {
        return list.visualRect(list.rows().index(row, column));
    }

    ImageList images;
    ListView list{columns, &images};
    QAbstractItemModelTester tester{&list.rows(), QAbstractItemModelTester::FailureReportingMode::Fatal};
    std::vector<std::string> heard;
    std::vector<QPoint> menuPlaces;
};

// As on some desktops: the style's own selection colours, whatever the palette says.
struct RedSelection : QProxyStyle {
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        if (element == CE_ItemViewItem) {
            QStyleOptionViewItem red = *static_cast<const QStyleOptionViewItem*>(option);
            red.palette.setColor(QPalette::Highlight, Qt::red);
            red.palette.setColor(QPalette::HighlightedText, Qt::red);
            QProxyStyle::drawControl(element, &red, painter, widget);
        } else {
            QProxyStyle::drawControl(element, option, painter, widget);
        }
    }
};

} // namespace

TEST_F(List, tellsWhatItsSelectedRowIsActivatedWith) {
    QTest::keyClick(&list, Qt::Key_Return); // nothing is selected
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place(1, 1).center());
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place(1, 1).center());
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Enter);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, place(2, 0).center());
    QTest::keyClick(&list, Qt::Key_Return); // the row is no longer selected
    EXPECT_THAT(heard, ElementsAre(testSystem::root() + "bananaFILE", testSystem::root() + "cherryFILE"));
}

TEST_F(List, findsTheFirstColumnsTextsWhicheverCellWasClicked) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place(1, 1).center());
    const int before = QApplication::keyboardInputInterval();
    QApplication::setKeyboardInputInterval(60'000); // however busy the machine is
    QTest::keyClicks(&list, QStringLiteral("apr"));
    QApplication::setKeyboardInputInterval(before);
    EXPECT_EQ(list.selectedRow(), 3);
    EXPECT_EQ(list.rows().index(3, 1).data(Qt::ToolTipRole).toString().toStdString(), shown("apricot"));
}

TEST_F(List, tellsClicksOnHeadersAndDoesNotJumpSideways) {
    QHeaderView& header = *list.header();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, {header.sectionViewportPosition(1) + 20, 5});
    EXPECT_THAT(heard, ElementsAre("2"));
    header.resizeSection(0, 1000);
    QApplication::processEvents();
    list.horizontalScrollBar()->setValue(500);
    list.selectRow(3);
    EXPECT_EQ(list.horizontalScrollBar()->value(), 500);
}

TEST_F(List, showsItsSelectedRowPalerWhileTheKeyboardIsElsewhere) {
    const auto ground = [&] {
        return list.viewport()->grab().toImage().pixelColor(place(1, 0).bottomRight() - QPoint(9, 9));
    };
    list.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&list));
    list.clearFocus();
    const QColor bare = ground();
    list.selectRow(1);
    const QColor pale = ground();
    list.setFocus();
    EXPECT_NE(pale, bare);
    EXPECT_GT(pale.lightness(), ground().lightness() + 20);
}

TEST_F(List, leavesTheColoursOfItsSelectionToTheStyle) {
    RedSelection style;
    list.setStyle(&style);
    QPalette palette = list.palette();
    palette.setColor(QPalette::HighlightedText, Qt::white);
    list.setPalette(palette);
    list.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&list));
    list.setFocus();
    list.selectRow(1);
    for (int column = 0; column < 2; ++column) {
        const QImage cell = list.viewport()->grab(place(1, column).adjusted(9, 4, -3, -4)).toImage();
        for (int x = 0; x < cell.width(); ++x) {
            const QColor middle = cell.pixelColor(x, cell.height() / 2);
            ASSERT_LT(middle.green(), 100) << "column " << column << ", x " << x;
        }
    }
    list.setStyle(nullptr);
}

TEST_F(List, givesItsFirstColumnTheRoomThatIsLeft) {
    QHeaderView& header = *list.header();
    const auto lengthInRoomOf = [&](int width) {
        list.resize(width, 150);
        return header.length() - list.viewport()->width();
    };
    EXPECT_EQ(lengthInRoomOf(500), 0);
    EXPECT_EQ(lengthInRoomOf(400), 0);
    EXPECT_GT(lengthInRoomOf(60), 0) << "it does not vanish";
    EXPECT_EQ(lengthInRoomOf(400), 0);
    header.resizeSection(0, 600);
    lengthInRoomOf(300);
    EXPECT_EQ(header.sectionSize(0), 600) << "made wider by hand";
}

TEST_F(List, takesAltAndAColumnsNumberForAClickOnItsHeader) {
    for (const auto& [key, modifier] : {std::pair{Qt::Key_2, Qt::AltModifier},
                                        {Qt::Key_1, Qt::AltModifier},
                                        {Qt::Key_3, Qt::AltModifier},
                                        {Qt::Key_0, Qt::AltModifier},
                                        {Qt::Key_1, Qt::NoModifier},
                                        {Qt::Key_1, Qt::ControlModifier}}) {
        QTest::keyClick(&list, key, modifier);
    }
    EXPECT_THAT(heard, ElementsAre("2", "1"));
}

TEST_F(List, asksForItsMenuByMouseAndByKeys) {
    const QPoint pointer = list.viewport()->mapToGlobal(place(2, 0).center());
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, place(2, 0).center(), pointer);
    QApplication::sendEvent(list.viewport(), &byMouse);
    QTest::keyClick(&list, Qt::Key_F10, Qt::ShiftModifier);
    list.selectRow(1);
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(&list, &byKey);
    EXPECT_THAT(menuPlaces, ElementsAre(pointer, list.viewport()->mapToGlobal(QPoint()),
                                        list.viewport()->mapToGlobal(place(1, 0).bottomLeft())));
}

TEST_F(List, knowsItsRowsAfterEveryChange) {
    append({"banana"});
    ListModel& rows = list.rows();
    EXPECT_EQ(rows.find(testSystem::root() + "banana"), 1) << "the first of two";
    rows.setText(1, 0, "a text of another length");
    EXPECT_EQ(rows.find(testSystem::root() + "banana"), 1);
    EXPECT_EQ(rows.row(1).cell(0).text, "a text of another length");
    EXPECT_EQ(std::get<double>(rows.row(1).cell(1).tag), 1.0);
    rows.reorder({4, 3, 2, 1, 0});
    EXPECT_EQ(rows.find(testSystem::root() + "banana"), 0);
    EXPECT_EQ(rows.find(testSystem::root() + "apple"), 4);
    rows.clear();
    EXPECT_EQ(rows.find(testSystem::root() + "apple"), -1);
    EXPECT_EQ(list.rowsInView(), std::pair(0, -1));
    append(std::vector<std::string>(1000, "same"));
    QApplication::processEvents();
    list.verticalScrollBar()->setValue(list.verticalScrollBar()->maximum());
    const auto [first, last] = list.rowsInView();
    EXPECT_EQ(last, 999);
    const int fitting = list.viewport()->height() / place(999, 0).height();
    EXPECT_NEAR(last - first, fitting, 1);
}
