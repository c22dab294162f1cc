#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <array>
#include <cstdint>

#include "base/errorLog.h"
#include "support/recordingInterface.h"
#include "widgets/listView.h"
#include "widgets/lvsort.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr std::array<ListColumn, 6> columns{{{"Name", "", false, "name"},
                                             {"Size", "Size", true, "0"},
                                             {"Count", "NUMBER", true, "0"},
                                             {"Modified", "DATETIME", false, "0"},
                                             {"Day", "DATE", false, "0"},
                                             {"Change", "CHANGE", true, "0"}}};
enum Column : std::uint8_t {
    nameColumn = 1,
    sizeColumn,
    countColumn,
    modifiedColumn,
    dayColumn,
    changeColumn
};

struct ListSorting : testing::Test {
    // Rows with the keys "1", "2", ... and these cells in one column; the other cells are empty.
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
    // The rows' keys, or the texts of a column, each preceded by "|".
    [[nodiscard]] std::string shown(int column = 0) const {
        std::string result;
        for (int i = 0; i < list.rows().rowCount(); ++i) {
            result += column == 0 ? std::string(list.rows().row(i).key())
                                  : "|" + std::string(list.rows().row(i).cell(column - 1).text);
        }
        return result;
    }

    ListView list{columns, nullptr};
    QAbstractItemModelTester tester{&list.rows(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(ListSorting, changesAreOrderedByTheirSignAndKeepTheirTexts) {
    fill(changeColumn,
         {{"+2.0 Kb", 2048.0}, {"-9 bytes", -9.0}, {"", {}}, {"-1.0 Mb", -1048576.0}, {"0 bytes", 0.0}});
    modLvw::lvsort(list, changeColumn, 0, false);
    EXPECT_EQ(shown(changeColumn), "||-1.0 Mb|-9 bytes|0 bytes|+2.0 Kb");
    modLvw::lvsort(list, changeColumn, 1, false);
    EXPECT_EQ(shown(), "15243");
}

TEST_F(ListSorting, exactDatesAreMoments) {
    fill(modifiedColumn, {{"12/01/2004 12:00:00 AM"},
                          {"01/02/2005 01:00:00 PM"},
                          {"01/02/2005 12:30:00 PM"},
                          {"never"},
                          {"01/02/2005 02:00:00 AM"}});
    const std::string texts = shown(modifiedColumn);
    modLvw::lvsort(list, modifiedColumn, 0, false);
    EXPECT_EQ(shown(), "25314");
    list.setExactDates(true);
    modLvw::lvsort(list, modifiedColumn, 0, false);
    EXPECT_EQ(shown(), "41532") << "what is no date comes first";
    modLvw::lvsort(list, modifiedColumn, 1, false);
    EXPECT_EQ(shown(), "23514");
    EXPECT_EQ(shown(modifiedColumn).size(), texts.size()) << "the texts stay";
}

TEST_F(ListSorting, ordersEachKindOfColumnByItsKeys) {
    const std::string text(100, 's');
    const std::vector<ListCell> equal(100, ListCell{text, 1.0}); // too many to be sorted as a short list
    fill(nameColumn, equal);
    const std::string unchanged = shown();
    struct Case {
        int column;
        std::vector<ListCell> cells;
        std::string ascending;
        std::string descending;
        std::string texts;
    };
    const std::vector<Case> cases{
        {nameColumn, equal, unchanged, unchanged, {}},
        {sizeColumn, equal, unchanged, unchanged, {}},
        {nameColumn, {{"b"}, {"A"}, {"a"}, {""}, {"10"}, {"9"}}, "456231", "123654", "||10|9|A|a|b"},
        // By bytes, not by the text shown; a missing tag counts as an empty text.
        {sizeColumn,
         {{"1,000 bytes", 1000.0}, {"999 bytes", 999.0}, {"", "1024"}, {"x"}, {"", "no"}},
         "42135",
         "53124",
         "||999 bytes|1,000 bytes|1.0 Kb|no"},
        // As texts, so -5 comes before -7.
        {sizeColumn, {{"", 0.0}, {"", -7.0}, {"", -5.0}}, "321", "123", "|-5 bytes|-7 bytes|0 bytes"},
        {countColumn, {{"", "10"}, {"", "09"}, {"", 9.0}, {"", "100"}}, "2314", "4123", "|09|9|10|100"},
        // Odd on purpose: months first.
        {modifiedColumn, {{"12/01/2004 10:00:00 AM"}, {"01/02/2005 10:00:00 AM"}}, "21", "12", {}},
        {dayColumn,
         {{"01/02/2005 10:00:00 AM"}, {"12/01/2004 10:00:00 AM"}},
         "21",
         "12",
         "|12/01/2004|01/02/2005"},
    };
    for (const Case& test : cases) {
        fill(test.column, test.cells);
        modLvw::lvsort(list, test.column, 7, false);
        EXPECT_EQ(shown(), test.descending) << "column " << test.column;
        fill(test.column, test.cells);
        modLvw::lvsort(list, test.column, 0, false);
        modLvw::lvsort(list, test.column, 0, false); // by the texts that the first sort left
        EXPECT_EQ(shown(), test.ascending) << "column " << test.column;
        EXPECT_TRUE(test.texts.empty() || shown(test.column) == test.texts) << shown(test.column);
    }
}

TEST_F(ListSorting, aFirstClickSortsAscendingAndFurtherOnesReverse) {
    fill(nameColumn, {{"b"}, {"c"}, {"a"}});
    const std::vector<std::pair<int, int>> clicks{{nameColumn, 0}, {nameColumn, 1}, {nameColumn, 0},
                                                  {sizeColumn, 0}, {sizeColumn, 1}, {nameColumn, 0}};
    for (const auto& [column, order] : clicks) {
        modLvw::lvsort(list, column, -1, false);
        EXPECT_EQ(list.sort().key, column - 1);
        EXPECT_EQ(list.sort().order, order);
        EXPECT_EQ(list.header()->sortIndicatorSection(), column - 1);
    }
    EXPECT_EQ(shown(), "312");
}

TEST_F(ListSorting, whatIsRememberedMayBeAnything) {
    RecordingInterface userInterface;
    modGlobal::setErrorLog(&userInterface);
    for (const int column : {99, 0, -5, int{sizeColumn}}) {
        for (const int order : {0, 1, -1, 1000}) {
            modLvw::sortAsRemembered(list, column, order, sizeColumn, true);
            EXPECT_EQ(list.sort().key, sizeColumn - 1);
            EXPECT_EQ(list.sort().order, order == 0 ? 0 : 1);
        }
    }
    EXPECT_TRUE(userInterface.messages.empty());
    EXPECT_EQ(list.selectedRow(), -1) << "of an empty list";
    modLvw::lvsort(list, int{changeColumn} + 1, 0, true);
    EXPECT_THAT(userInterface.messages,
                ElementsAre(HasSubstr("35600 Index out of bounds\r\n[modLvw.lvsort]")));
    EXPECT_TRUE(list.viewport()->updatesEnabled());
    modGlobal::setErrorLog();
}

TEST_F(ListSorting, theSelectionAndTheViewStayUnlessTheFirstRowIsAskedFor) {
    std::vector<ListCell> cells;
    for (int i = 0; i < 500; ++i) {
        cells.push_back({{}, 500.0 - i});
    }
    fill(sizeColumn, cells);
    list.resize(300, 200);
    list.show();
    list.selectRow(30);
    list.verticalScrollBar()->setValue(4000);
    modLvw::lvsort(list, sizeColumn, 0, false);
    QApplication::processEvents();
    EXPECT_EQ(list.selectedRow(), 469);
    EXPECT_EQ(list.currentIndex().row(), 469);
    EXPECT_EQ(modLvw::itemIndex("31", list), 469);
    EXPECT_EQ(list.verticalScrollBar()->value(), 4000);
    modLvw::lvsort(list, sizeColumn, -1, true);
    EXPECT_EQ(list.selectedRow(), 0);
    EXPECT_EQ(list.verticalScrollBar()->value(), 0);
    EXPECT_EQ(modLvw::itemIndex("no such key", list), -1);
}
