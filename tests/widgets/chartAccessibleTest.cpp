#include <gtest/gtest.h>

#include <QAccessible>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "widgets/chartEntries.h"
#include "widgets/folderChart.h"

namespace {

class ChartAccessibleTest : public testing::Test {
protected:
    ChartAccessibleTest() {
        chart.resize(900, 600);
        QObject::connect(&chart, &FolderChart::barActivated, &chart,
                         [this](const std::string& label) { activated.push_back(label); });
        chart.show();
        chart.setFocus();
        static_cast<void>(QTest::qWaitForWindowActive(&chart));
    }

    [[nodiscard]] QAccessibleInterface& told() { return *QAccessible::queryAccessibleInterface(&chart); }
    [[nodiscard]] std::string text(int rank, QAccessible::Text kind) {
        return told().child(rank)->text(kind).toStdString();
    }

    FolderChart chart;
    std::vector<std::string> activated;
};

TEST_F(ChartAccessibleTest, barsHaveNamesValuesAndPlaces) {
    chart.setEntries(ascending(40));
    EXPECT_EQ(told().text(QAccessible::Name), QStringLiteral("Folder chart"));
    ASSERT_EQ(told().childCount(), 40);
    EXPECT_EQ(told().child(40), nullptr);
    EXPECT_EQ(text(0, QAccessible::Name), "folder 39");
    EXPECT_EQ(text(0, QAccessible::Value), "40Mb");
    EXPECT_EQ(text(39, QAccessible::Name), "folder 0");
    for (const int rank : {0, 7, 14}) {
        QAccessibleInterface& bar = *told().child(rank);
        EXPECT_TRUE(QRect(chart.mapToGlobal(QPoint()), chart.size()).contains(bar.rect()));
        EXPECT_EQ(told().childAt(bar.rect().center().x(), bar.rect().center().y()), &bar);
        EXPECT_EQ(told().indexOfChild(&bar), rank);
        EXPECT_EQ(bar.parent(), &told());
        EXPECT_FALSE(bar.state().offscreen);
    }
    EXPECT_TRUE(told().child(15)->state().offscreen);
    EXPECT_EQ(told().childAt(chart.mapToGlobal(QPoint()).x() + 2, chart.mapToGlobal(QPoint()).y() + 2),
              nullptr);
}

TEST_F(ChartAccessibleTest, focusAndActionsAreThoseOfTheKeyboard) {
    chart.setEntries(ascending(40));
    EXPECT_EQ(told().focusChild(), nullptr);
    QTest::keyClick(&chart, Qt::Key_End);
    ASSERT_EQ(told().focusChild(), told().child(39));
    EXPECT_TRUE(told().child(39)->state().focused);
    EXPECT_FALSE(told().child(38)->state().selected);

    told().child(20)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(chart.selected(), 19);
    EXPECT_FALSE(told().child(20)->state().offscreen) << "it was scrolled to";
    EXPECT_TRUE(activated.empty());
    told().child(3)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(activated, std::vector<std::string>{"folder 36"});
}

// An interface may be kept while the chart shows something else, or is gone.
TEST_F(ChartAccessibleTest, itemsFollowTheChart) {
    chart.setEntries(ascending(40));
    QAccessibleInterface* const second = told().child(1);
    QAccessibleInterface* const last = told().child(39);
    chart.setChartStyle(ChartStyle::pie);
    ASSERT_EQ(told().childCount(), 16);
    EXPECT_EQ(text(15, QAccessible::Name), "Other (25)");
    EXPECT_EQ(text(15, QAccessible::Value), "325Mb");
    EXPECT_FALSE(last->isValid());
    EXPECT_EQ(last->text(QAccessible::Name), QString());
    told().child(15)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(second->text(QAccessible::Name), QStringLiteral("folder 23"));
    chart.setEntries({});
    EXPECT_EQ(told().childCount(), 0);
    EXPECT_TRUE(second->state().invalid);

    auto other = std::make_unique<FolderChart>();
    other->setEntries(ascending(3));
    const QAccessible::Id id =
        QAccessible::uniqueId(QAccessible::queryAccessibleInterface(other.get())->child(0));
    other.reset();
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
}

} // namespace
