#include "widgets/folderChart.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <QWheelEvent>
#include <chrono>
#include <string>

#include "widgets/chartEntries.h"

namespace {

class FolderChartTest : public testing::Test {
protected:
    FolderChartTest() {
        window.resize(920, 600);
        chart.setGeometry(0, 0, 900, 600);
        scrollBar.setGeometry(900, 0, 20, 600);
        chart.attachScrollBar(&scrollBar);
        QObject::connect(&chart, &FolderChart::barActivated, &chart,
                         [this](const std::string& label) { activated.push_back(label); });
        window.show();
        chart.setFocus();
        static_cast<void>(QTest::qWaitForWindowActive(&window));
    }

    void click(QPointF place) { QTest::mouseClick(&chart, Qt::LeftButton, {}, place.toPoint()); }
    void press(Qt::Key key) { QTest::keyClick(&chart, key); }
    void wheel(int angle) {
        QWheelEvent event({100, 100}, chart.mapToGlobal(QPointF(100, 100)), {}, {0, angle}, {}, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&chart, &event);
    }

    QWidget window;
    FolderChart chart{&window};
    QScrollBar scrollBar{Qt::Vertical, &window};
    std::vector<std::string> activated;
};

} // namespace

TEST_F(FolderChartTest, clickActivatesWhatTheButtonWentDownOn) {
    chart.setEntries(ascending(20));
    click(chart.markOf(19).center());
    chart.setPosition(5);
    click(chart.markOf(0).center());
    EXPECT_EQ(activated, (std::vector<std::string>{"folder 19", "folder 0"}));

    QTest::mousePress(&chart, Qt::LeftButton, {}, chart.markOf(3).center().toPoint());
    QTest::mouseRelease(&chart, Qt::LeftButton, {}, chart.markOf(4).center().toPoint());
    click({5, 5});
    QTest::mouseClick(&chart, Qt::RightButton, {}, chart.markOf(3).center().toPoint());
    EXPECT_EQ(activated.size(), 2U);

    chart.setChartStyle(ChartStyle::pie);
    click(chart.markOf(10).center());
    click(chart.markOf(-1).center()); // the slice of the rest
    EXPECT_EQ(activated.size(), 3U);
    EXPECT_EQ(activated.back(), "folder 10");
}

// A handler of the click may set other entries.
TEST_F(FolderChartTest, entriesMayBeReplacedByTheReceiver) {
    QObject::connect(&chart, &FolderChart::barActivated, &chart, [this] { chart.setEntries({}); });
    chart.setEntries(ascending(2));
    click(chart.markOf(1).center());
    EXPECT_EQ(activated, std::vector<std::string>{"folder 1"});
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(activated.size(), 1U);
}

TEST_F(FolderChartTest, scrollBarFollowsAndLeads) {
    chart.setEntries(ascending(15));
    EXPECT_TRUE(scrollBar.isHidden());
    chart.setEntries(ascending(100));
    EXPECT_FALSE(scrollBar.isHidden());
    EXPECT_EQ(scrollBar.maximum(), 85);
    EXPECT_EQ(scrollBar.pageStep(), 25);
    EXPECT_TRUE(chart.markOf(84).isNull());
    scrollBar.setValue(10);
    EXPECT_EQ(chart.position(), 10);
    EXPECT_FALSE(chart.markOf(75).isNull());
    wheel(-120);
    EXPECT_EQ(scrollBar.value(), 13);
    for (int i = 0; i < 4; ++i) {
        wheel(10); // as from a touch pad: four make one bar
    }
    EXPECT_EQ(scrollBar.value(), 12);
    wheel(12000);
    EXPECT_EQ(scrollBar.value(), 0);
    chart.setPosition(1000);
    EXPECT_EQ(scrollBar.value(), 85);

    chart.setEntries(ascending(50), FolderChart::View::kept);
    EXPECT_EQ(scrollBar.value(), 35);
    chart.setChartStyle(ChartStyle::pie);
    EXPECT_TRUE(scrollBar.isHidden());
    chart.setChartStyle(ChartStyle::bar);
    EXPECT_EQ(scrollBar.value(), 35);
    chart.setEntries(ascending(50));
    EXPECT_EQ(scrollBar.value(), 0);
}

TEST_F(FolderChartTest, keysMoveTheSelectionAndKeepItInView) {
    chart.setEntries(ascending(100));
    struct Step {
        Qt::Key key;
        int selected;
        int position;
    };
    for (const Step& step :
         {Step{Qt::Key_Down, 99, 0}, Step{Qt::Key_Down, 98, 0}, Step{Qt::Key_Up, 99, 0},
          Step{Qt::Key_Up, 99, 0}, Step{Qt::Key_PageDown, 74, 25}, Step{Qt::Key_Up, 75, 24},
          Step{Qt::Key_End, 0, 85}, Step{Qt::Key_Down, 0, 85}, Step{Qt::Key_PageUp, 25, 60},
          Step{Qt::Key_Home, 99, 0}, Step{Qt::Key_Left, 99, 0}}) {
        press(step.key);
        EXPECT_EQ(chart.selected(), step.selected) << step.key;
        EXPECT_EQ(chart.position(), step.position) << step.key;
        EXPECT_FALSE(chart.markOf(chart.selected()).isNull()) << step.key;
    }
    EXPECT_EQ(chart.accessibleDescription(), QStringLiteral("folder 99, 100Mb"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        press(key);
    }
    EXPECT_EQ(activated, std::vector<std::string>(3, "folder 99"));

    // During a scan, new figures move the entry, and the selection stays with it.
    std::vector<ChartEntry> grown = ascending(100);
    std::swap(grown[99].label, grown[40].label);
    chart.setEntries(grown, FolderChart::View::kept);
    EXPECT_EQ(chart.selected(), 40);

    // Only existing slices can be selected.
    chart.setChartStyle(ChartStyle::pie);
    EXPECT_EQ(chart.selected(), -1);
    press(Qt::Key_End);
    EXPECT_EQ(chart.selected(), 85);
    press(Qt::Key_Left);
    EXPECT_EQ(chart.selected(), 86);
}

TEST_F(FolderChartTest, tipsComeAfterTheirDelayAndOnlyOverSomething) {
    std::vector<std::pair<double, int>> asked;
    chart.setTipProvider([&](double megabytes, int index) {
        asked.emplace_back(megabytes, index);
        return QStringLiteral("tip");
    });
    std::vector<ChartEntry> entries = ascending(3);
    entries[1].label = std::string(200, 'x');
    chart.setEntries(entries);
    chart.setTipDelay(std::chrono::hours(1));
    QTest::mouseMove(&chart, chart.markOf(2).center().toPoint());
    EXPECT_EQ(chart.cursor().shape(), Qt::PointingHandCursor);
    EXPECT_TRUE(asked.empty());
    chart.setTipDelay({});
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text() == QStringLiteral("tip"); }));
    EXPECT_EQ(asked, (std::vector<std::pair<double, int>>{{3, 2}}));

    // The tip beside the bar has the whole name, in several lines.
    QTest::mouseMove(&chart, {140, chart.markOf(1).center().toPoint().y() + 6});
    const QString whole(200, QLatin1Char('x'));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QToolTip::text().remove(QLatin1Char('\n')) == whole; }));
    EXPECT_GE(QToolTip::text().count(QLatin1Char('\n')), 3);

    QTest::mouseMove(&chart, {5, 5});
    EXPECT_EQ(chart.cursor().shape(), Qt::ArrowCursor);
    press(Qt::Key_Home);
    EXPECT_TRUE(QTest::qWaitFor([&] { return asked.size() == 2; }));
}
