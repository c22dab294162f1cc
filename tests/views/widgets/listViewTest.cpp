#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QTest>
#include <array>
#include <string>
#include <vector>

#include "views/widgets/listView.h"
#include "views/widgets/systemIcons.h"

using testing::ElementsAre;

namespace {

constexpr std::array<ListColumn, 2> columns{
    {{"Name", "", false, "a name"}, {"Size", "SIZE", true, "1,023 bytes"}}};

class List : public testing::Test {
protected:
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
            rows.emplace_back("/\\" + name, "FILE", cells);
        }
        list.rows().append(std::move(rows));
    }
    [[nodiscard]] QPoint middleOf(int row, int column) const {
        return list.visualRect(list.rows().index(row, column)).center();
    }

    ImageList images;
    ListView list{columns, &images};
    QAbstractItemModelTester tester{&list.rows(), QAbstractItemModelTester::FailureReportingMode::Fatal};
    std::vector<std::string> heard;
    std::vector<QPoint> menuPlaces;
};

} // namespace

TEST_F(List, tellsWhatItsSelectedRowIsActivatedWith) {
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_TRUE(heard.empty()) << "nothing is selected";
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, middleOf(1, 1));
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, middleOf(1, 1));
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Enter);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, middleOf(2, 0));
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_THAT(heard, ElementsAre("/\\bananaFILE", "/\\cherryFILE")) << "a row taken out of the selection";
}

TEST_F(List, findsTheFirstColumnsTextsWhicheverCellWasClicked) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, middleOf(1, 1));
    QTest::keyClicks(&list, QStringLiteral("apr"));
    EXPECT_EQ(list.selectedRow(), 3);
}

TEST_F(List, tellsClicksOnHeadersAndKeepsItsColumnsInOrder) {
    QHeaderView& header = *list.header();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, {header.sectionViewportPosition(1) + 20, 5});
    EXPECT_THAT(heard, ElementsAre("2"));
    EXPECT_FALSE(header.sectionsMovable());
    EXPECT_GT(header.sectionSize(1), list.fontMetrics().horizontalAdvance(QStringLiteral("1,023 bytes")));
    header.resizeSection(0, 1000);
    QApplication::processEvents();
    list.horizontalScrollBar()->setValue(500);
    list.selectRow(3);
    EXPECT_EQ(list.horizontalScrollBar()->value(), 500);
}

TEST_F(List, asksForItsMenuByMouseAndByKeys) {
    const QPoint place = list.viewport()->mapToGlobal(middleOf(2, 0));
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, middleOf(2, 0), place);
    QApplication::sendEvent(list.viewport(), &byMouse);
    const QPoint corner = list.viewport()->mapToGlobal(QPoint());
    QTest::keyClick(&list, Qt::Key_F10, Qt::ShiftModifier);
    list.selectRow(1);
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(&list, &byKey);
    const QPoint belowRow =
        list.viewport()->mapToGlobal(list.visualRect(list.rows().index(1, 0)).bottomLeft());
    EXPECT_THAT(menuPlaces, ElementsAre(place, corner, belowRow));
}

TEST_F(List, showsPathsAndNumbersAsPeopleReadThem) {
    const ListModel& rows = list.rows();
    EXPECT_EQ(rows.index(0, 1).data(Qt::ToolTipRole).toString(), QStringLiteral("/apple"));
    EXPECT_TRUE(rows.index(0, 1).data(Qt::TextAlignmentRole).value<Qt::Alignment>().testFlag(Qt::AlignRight));
    EXPECT_EQ(rows.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Size"));
    EXPECT_FALSE(rows.data(rows.index(9, 9), Qt::DisplayRole).isValid());
}

TEST_F(List, knowsItsRowsAfterEveryChange) {
    append({"banana"});
    EXPECT_EQ(list.rows().find("/\\banana"), 1) << "the first of two";
    list.rows().setText(1, 0, "a text of another length");
    EXPECT_EQ(list.rows().find("/\\cherry"), 2);
    EXPECT_EQ(list.rows().row(1).cell(0).text, "a text of another length");
    EXPECT_EQ(std::get<double>(list.rows().row(1).cell(1).tag), 1.0);
    list.rows().reorder({4, 3, 2, 1, 0});
    EXPECT_EQ(list.rows().find("/\\banana"), 0);
    EXPECT_EQ(list.rows().find("/\\apple"), 4);
    list.rows().clear();
    EXPECT_EQ(list.rows().find("/\\apple"), -1);
    EXPECT_EQ(list.rowsInView(), std::pair(0, -1));
    append(std::vector<std::string>(1000, "same"));
    QApplication::processEvents();
    list.verticalScrollBar()->setValue(list.verticalScrollBar()->maximum());
    const auto [first, last] = list.rowsInView();
    EXPECT_EQ(last, 999);
    EXPECT_NEAR(last - first, list.viewport()->height() / list.visualRect(list.rows().index(999, 0)).height(),
                1);
}
