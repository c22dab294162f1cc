#include "widgets/historyChart.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <string>

#include "base/dateFormat.h"

namespace {

using modTimeChart::Line;
using modTimeChart::Place;

constexpr platform::Seconds day = 86400;
constexpr platform::Seconds start = 1'767'268'800;

Line line(const char* name, std::size_t group, const std::vector<double>& sizes) {
    Line result{name, group, 0, {}, true};
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        result.points.push_back(
            {start + static_cast<platform::Seconds>(i) * 5 * day, sizes[i], true, true, i});
    }
    return result;
}

class HistoryChartTest : public testing::Test {
protected:
    HistoryChartTest() {
        std::vector<Line> lines{line("all", 0, {3000, 5000, 9000}), line("src", 1, {1000, 1000, 2000})};
        lines[1].points[0].isThere = false;
        lines[1].points[1].isComplete = false;
        chart.resize(700, 400);
        chart.setChart(modTimeChart::TimeChart(std::move(lines)), [](const Place& place) {
            return QStringLiteral("<b>%1/%2").arg(place.line).arg(place.point);
        });
        chart.show();
        chart.setFocus();
        static_cast<void>(QTest::qWaitForWindowActive(&chart));
    }
    [[nodiscard]] QPoint middleOf(int index) const { return chart.markOf(index).center().toPoint(); }

    HistoryChart chart;
    QSignalSpy selected{&chart, &HistoryChart::pointSelected};
    QSignalSpy activated{&chart, &HistoryChart::pointActivated};
};

TEST_F(HistoryChartTest, keysSelectAndActivate) {
    QTest::keyClick(&chart, Qt::Key_Return);
    EXPECT_EQ(activated.count(), 0);
    const std::pair<Qt::Key, Place> steps[] = {
        {Qt::Key_Left, {0, 2}}, {Qt::Key_Left, {0, 1}},  {Qt::Key_Down, {1, 1}}, {Qt::Key_Home, {1, 0}},
        {Qt::Key_End, {1, 2}},  {Qt::Key_Right, {1, 2}}, {Qt::Key_Up, {0, 2}},   {Qt::Key_Up, {0, 2}},
    };
    for (const auto& [key, place] : steps) {
        QTest::keyClick(&chart, key);
        EXPECT_EQ(chart.selectedPlace(), place) << key;
    }
    EXPECT_EQ(selected.count(), 6);
    QTest::keyClick(&chart, Qt::Key_Return);
    QTest::keyClick(&chart, Qt::Key_Space);
    EXPECT_EQ(activated.count(), 2);
}

TEST_F(HistoryChartTest, clicksActivateThePointUnderThePointer) {
    QTest::mouseClick(&chart, Qt::LeftButton, {}, middleOf(4));
    EXPECT_EQ(chart.selectedPlace(), (Place{1, 1}));
    EXPECT_EQ(activated.count(), 1);
    QTest::mousePress(&chart, Qt::LeftButton, {}, middleOf(0));
    QTest::mouseRelease(&chart, Qt::LeftButton, {}, middleOf(2));
    QTest::mouseClick(&chart, Qt::LeftButton, {}, middleOf(0) - QPoint(0, 60));
    QTest::mouseClick(&chart, Qt::RightButton, {}, middleOf(0));
    EXPECT_EQ(activated.count(), 1);
    QTest::mouseMove(&chart, middleOf(5));
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text().contains(QStringLiteral("1/2")); }));
    EXPECT_FALSE(Qt::mightBeRichText(QToolTip::text()) && QToolTip::text().startsWith(QStringLiteral("<b>")));
}

TEST_F(HistoryChartTest, hiddenLinesAreNotThere) {
    QTest::mouseClick(&chart, Qt::LeftButton, {}, middleOf(1));
    const QPoint before = middleOf(5);
    chart.setLineShown(0, false);
    EXPECT_EQ(chart.selectedPlace(), std::nullopt);
    EXPECT_EQ(chart.selectable(), 3);
    EXPECT_LT(middleOf(2).y(), before.y()) << "the axis ends at what is shown";
    QTest::keyClick(&chart, Qt::Key_Up);
    EXPECT_EQ(chart.selectedPlace(), (Place{1, 2}));
    chart.setLineShown(1, false);
    QTest::keyClick(&chart, Qt::Key_Up);
    EXPECT_EQ(chart.selected(), -1);
    EXPECT_FALSE(chart.grab().isNull());
}

TEST_F(HistoryChartTest, pointsHaveNamesValuesAndPlaces) {
    QAccessibleInterface& told = *QAccessible::queryAccessibleInterface(&chart);
    EXPECT_EQ(told.text(QAccessible::Name), QStringLiteral("Sizes over time"));
    ASSERT_EQ(told.childCount(), 6);
    const std::string date = modFormat::formatDate(platform::localTime(start), modFormat::storedDatePicture);
    EXPECT_EQ(told.child(0)->text(QAccessible::Name).toStdString(), "all, " + date);
    const char* const values[] = {"2.9 Kb", "4.9 Kb", "8.8 Kb", "not there", "1,000 bytes, cancelled",
                                  "2.0 Kb"};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(told.child(i)->text(QAccessible::Value).toStdString(), values[i]);
        const QPoint middle = told.child(i)->rect().center();
        EXPECT_EQ(told.childAt(middle.x(), middle.y()), told.child(i));
    }
    told.child(4)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(chart.selectedPlace(), (Place{1, 1}));
    EXPECT_EQ(activated.count(), 1);
    EXPECT_EQ(told.focusChild(), told.child(4));
}

double luminance(const QColor& colour) {
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& left, const QColor& right) {
    const double a = luminance(left) + 0.05;
    const double b = luminance(right) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

TEST_F(HistoryChartTest, linesStandOutFromLightAndDarkGrounds) {
    std::vector<Line> lines;
    for (std::size_t group = 0; group < 9; ++group) {
        lines.push_back(line("one", group, {1}));
    }
    chart.setChart(modTimeChart::TimeChart(std::move(lines)), {});
    for (const bool isDark : {false, true}) {
        QPalette palette;
        palette.setColor(QPalette::Window, isDark ? QColor(35, 38, 41) : QColor(240, 240, 240));
        palette.setColor(QPalette::WindowText, isDark ? Qt::white : Qt::black);
        chart.setPalette(palette);
        const QColor ground = chart.grab().toImage().pixelColor(3, 3);
        EXPECT_EQ(luminance(ground) < 0.2, isDark);
        for (std::size_t group = 0; group < 9; ++group) {
            const QImage sample = chart.sampleOf(group).toImage();
            const QColor colour = sample.pixelColor(sample.width() / 2, sample.height() / 2);
            EXPECT_GE(contrast(colour, ground), 3) << group << (isDark ? " dark" : " light");
        }
    }
}

} // namespace
