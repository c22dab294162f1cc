#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <array>
#include <string>
#include <vector>

#include "app/errorLog.h"
#include "support/recordingInterface.h"
#include "views/widgets/listView.h"
#include "views/widgets/lvsort.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr std::array<ListColumn, 5> columns{{{"Name", "", false, "name"},
                                             {"Size", "Size", true, "0"},
                                             {"Count", "NUMBER", true, "0"},
                                             {"Modified", "DATETIME", false, "0"},
                                             {"Day", "DATE", false, "0"}}};
constexpr int nameColumn = 1;
constexpr int sizeColumn = 2;
constexpr int countColumn = 3;
constexpr int modifiedColumn = 4;
constexpr int dayColumn = 5;

class ListSorting : public testing::Test {
protected:
    // Rows with the keys "1", "2", ... and these cells in one column; their other cells are empty.
    void fill(int column, const std::vector<ListCell>& cells) {
        std::vector<ListRow> rows;
        for (const ListCell& cell : cells) {
            std::array<ListCell, columns.size()> row;
            row[static_cast<std::size_t>(column - 1)] = cell;
            rows.emplace_back(std::to_string(rows.size() + 1), "", row);
        }
        list.rows().clear();
        list.rows().append(std::move(rows));
    }
    [[nodiscard]] std::string keys() const {
        std::string result;
        for (int i = 0; i < list.rows().rowCount(); ++i) {
            result += list.rows().row(i).key();
        }
        return result;
    }
    [[nodiscard]] std::vector<std::string> texts(int column) const {
        std::vector<std::string> result;
        for (int i = 0; i < list.rows().rowCount(); ++i) {
            result.emplace_back(list.rows().row(i).cell(column - 1).text);
        }
        return result;
    }

    ListView list{columns, nullptr};
    QAbstractItemModelTester tester{&list.rows(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(ListSorting, ordersEachKindOfColumnByItsKeys) {
    struct Case {
        int column;
        std::vector<ListCell> cells;
        std::string ascending;
        std::string descending;
    };
    const std::vector<Case> cases{
        // Whatever their case, and equal ones in the order they had.
        {nameColumn, {{"b"}, {"A"}, {"a"}, {"B"}, {""}, {"10"}, {"9"}}, "5672314", "1423765"},
        // By bytes, not by what is shown; a cell without tag as an empty text.
        {sizeColumn,
         {{"1,000 bytes", 1000.0}, {"999 bytes", 999.0}, {"1.0 Kb", "1024"}, {"x"}},
         "4213",
         "3124"},
        // As texts, of which that of the larger negative number is the later one.
        {sizeColumn, {{"", 0.0}, {"", -7.0}, {"", -5.0}, {"", 1e18}}, "3214", "4123"},
        {countColumn, {{"", "10"}, {"", "9"}, {"", 9.0}, {"", "100"}}, "2314", "4123"},
        // Months first, deliberately.
        {modifiedColumn, {{"12/01/2004 10:00:00 AM"}, {"01/02/2005 10:00:00 AM"}}, "21", "12"},
        {dayColumn, {{"01/02/2005 10:00:00 AM"}, {"12/01/2004 10:00:00 AM"}, {"no day"}}, "213", "312"},
    };
    for (const Case& test : cases) {
        for (const int order : {0, 7}) {
            fill(test.column, test.cells);
            modLvw::lvsort(list, test.column, order, false);
            EXPECT_EQ(keys(), order == 0 ? test.ascending : test.descending) << "column " << test.column;
            EXPECT_EQ(list.sort().order, order == 0 ? 0 : 1);
        }
    }
}

TEST_F(ListSorting, leavesTheTextsThatTheTagsStandFor) {
    fill(sizeColumn, {{"stale", 1536.0}, {"stale", "2048"}, {"stale", "unknown"}, {"stale"}});
    modLvw::lvsort(list, sizeColumn, 0, false);
    EXPECT_THAT(texts(sizeColumn), ElementsAre("", "1.5 Kb", "2.0 Kb", "unknown"));
    fill(countColumn, {{"stale", 12.0}, {"stale", "007"}});
    modLvw::lvsort(list, countColumn, 0, false);
    EXPECT_THAT(texts(countColumn), ElementsAre("007", "12"));
    // A date loses its time, and is a date still when the list is sorted again.
    fill(dayColumn, {{"01/02/2005 10:00:00 AM"}, {"12/01/2004 10:00:00 AM"}});
    modLvw::lvsort(list, dayColumn, 0, false);
    modLvw::lvsort(list, dayColumn, 1, false);
    EXPECT_THAT(texts(dayColumn), ElementsAre("01/02/2005", "12/01/2004"));
}

TEST_F(ListSorting, aFirstClickSortsAscendingAndFurtherOnesReverse) {
    fill(nameColumn, {{"b"}, {"c"}, {"a"}});
    for (const auto& [column, order] : std::vector<std::pair<int, int>>{{nameColumn, 0},
                                                                        {nameColumn, 1},
                                                                        {nameColumn, 0},
                                                                        {sizeColumn, 0},
                                                                        {sizeColumn, 1},
                                                                        {nameColumn, 0}}) {
        modLvw::lvsort(list, column, -1, false);
        EXPECT_EQ(list.sort().key, column - 1);
        EXPECT_EQ(list.sort().order, order);
        EXPECT_EQ(list.header()->sortIndicatorSection(), column - 1);
    }
    EXPECT_EQ(keys(), "312");
}

TEST_F(ListSorting, whatIsRememberedMayBeAnything) {
    RecordingInterface userInterface;
    modGlobal::setErrorLogSurroundings({}, nullptr, &userInterface);
    for (const int column : {99, 0, -5, sizeColumn}) {
        for (const int order : {0, 1, -1, 1000}) {
            modLvw::sortAsRemembered(list, column, order, sizeColumn, true);
            EXPECT_EQ(list.sort().key, sizeColumn - 1);
            EXPECT_EQ(list.sort().order, order == 0 ? 0 : 1);
        }
    }
    EXPECT_TRUE(userInterface.messages.empty());
    EXPECT_EQ(list.selectedRow(), -1) << "of an empty list";
    modLvw::lvsort(list, 6, 0, true);
    EXPECT_THAT(userInterface.messages,
                ElementsAre(HasSubstr("35600 Index out of bounds\r\n[modLvw.lvsort]")));
    EXPECT_TRUE(list.viewport()->updatesEnabled());
    modGlobal::setErrorLogSurroundings({}, nullptr, nullptr);
}

TEST_F(ListSorting, theSelectionAndTheViewStayUnlessTheFirstRowIsAskedFor) {
    std::vector<std::string> names;
    std::vector<ListCell> cells;
    for (int i = 0; i < 500; ++i) {
        names.push_back(std::to_string(999 - i));
    }
    for (const std::string& name : names) {
        cells.push_back({name, {}});
    }
    fill(nameColumn, cells);
    list.resize(300, 200);
    list.show();
    list.selectRow(30);
    const std::string selected(list.rows().row(30).key());
    list.verticalScrollBar()->setValue(4000);
    modLvw::lvsort(list, nameColumn, 0, false);
    QCoreApplication::processEvents();
    EXPECT_EQ(list.rows().row(list.selectedRow()).key(), selected);
    EXPECT_EQ(list.selectedRow(), 469);
    EXPECT_EQ(list.currentIndex().row(), 469);
    EXPECT_EQ(list.verticalScrollBar()->value(), 4000);
    modLvw::lvsort(list, nameColumn, -1, true);
    EXPECT_EQ(list.selectedRow(), 0);
    EXPECT_EQ(list.verticalScrollBar()->value(), 0);
    EXPECT_EQ(modLvw::itemIndex(selected, list), 30);
    EXPECT_EQ(modLvw::itemIndex("no such key", list), -1);
}
