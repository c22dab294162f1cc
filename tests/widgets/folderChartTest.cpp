#include "widgets/folderChart.h"

#include <gtest/gtest.h>

#include <QKeyEvent>
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
    click(chart.markOf(ChartSlice::rest).center());
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
    EXPECT_EQ(chart.selected(), ChartSlice::rest);
    press(Qt::Key_Left);
    EXPECT_EQ(chart.selected(), 85);
    press(Qt::Key_Left);
    EXPECT_EQ(chart.selected(), 86);
    press(Qt::Key_End);
    chart.setChartStyle(ChartStyle::bar);
    EXPECT_EQ(chart.selected(), -1);
}

// What a second click finds may be there only since the first.
TEST_F(FolderChartTest, doubleClickEntersOnlyWhatStayed) {
    std::vector<std::string> entered;
    QObject::connect(&chart, &FolderChart::barEntered, &chart,
                     [&](const std::string& label) { entered.push_back(label); });
    const auto doubleClick = [&] {
        const QPoint place = chart.markOf(4).center().toPoint();
        click(place);
        QTest::mouseDClick(&chart, Qt::LeftButton, {}, place);
    };
    chart.setEntries(ascending(5));
    doubleClick();
    EXPECT_EQ(entered, std::vector<std::string>{"folder 4"});
    const std::size_t before = activated.size();
    const auto opening = QObject::connect(&chart, &FolderChart::barActivated, &chart,
                                          [this] { chart.setEntries(ascending(5)); });
    doubleClick();
    EXPECT_EQ(entered.size(), 1U);
    EXPECT_EQ(activated.size(), before + 1) << "nor does it open a folder within the one just opened";
    QObject::disconnect(opening);
    press(Qt::Key_Home);
    press(Qt::Key_Return);
    EXPECT_EQ(entered, (std::vector<std::string>{"folder 4", "folder 4"}));
}

TEST_F(FolderChartTest, restIsAPieOfItsOwn) {
    const QSignalSpy depths(&chart, &FolderChart::depthChanged);
    const auto part = [this] { return chart.state().part.toStdString(); };
    const auto drawn = [this] { return chart.grab().toImage(); };
    chart.setChartStyle(ChartStyle::pie);
    chart.setEntries(ascending(40));
    chart.setFolder(QStringLiteral("/here"));
    const QImage whole = drawn();
    EXPECT_FALSE(chart.up());

    const QPoint rest = chart.markOf(ChartSlice::rest).center().toPoint();
    click(rest);
    EXPECT_EQ(chart.depth(), 0);
    QTest::mouseDClick(&chart, Qt::LeftButton, {}, rest);
    EXPECT_EQ(part(), "Other (25)");
    EXPECT_EQ(chart.state().entries.size(), 25U);
    EXPECT_EQ(chart.entries().size(), 40U);
    EXPECT_EQ(chart.markOf(25), QRectF());
    click(chart.markOf(24).center());
    EXPECT_EQ(activated, std::vector<std::string>{"folder 24"});

    press(Qt::Key_End);
    press(Qt::Key_Return);
    EXPECT_EQ(part(), "Other (10)");
    EXPECT_EQ(chart.selected(), 9);
    press(Qt::Key_End);
    EXPECT_EQ(chart.selected(), 0) << "these have no rest";

    // A refresh keeps the level as far as there is one, another folder does not.
    chart.setEntries(ascending(60), FolderChart::View::kept);
    EXPECT_EQ(part(), "Other (30)");
    chart.setEntries(ascending(20), FolderChart::View::kept);
    EXPECT_EQ(part(), "Other (5)");
    chart.setEntries(ascending(40), FolderChart::View::kept);
    EXPECT_EQ(chart.depth(), 1);

    QTest::keyClick(&chart, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(chart.depth(), 0);
    press(Qt::Key_End);
    press(Qt::Key_Return);
    press(Qt::Key_Backspace);
    EXPECT_EQ(chart.selected(), ChartSlice::rest) << "where it came from";
    chart.clearFocus();
    EXPECT_EQ(drawn(), whole);
    chart.setFocus();
    press(Qt::Key_Return);
    const ChartState state = chart.state();
    click(ChartLayout(ChartFrame(chart.rect(), state), state).heading().nameArea.center());
    EXPECT_EQ(chart.depth(), 0) << "the line below the title leads back";
    press(Qt::Key_Return);
    chart.setEntries(ascending(40));
    EXPECT_EQ(chart.depth(), 0);
    press(Qt::Key_End);
    press(Qt::Key_Return);
    chart.setChartStyle(ChartStyle::bar);
    EXPECT_EQ(chart.state().entries.size(), 40U);

    std::vector<int> seen;
    for (const QList<QVariant>& each : depths) {
        seen.push_back(each.at(0).toInt());
    }
    EXPECT_EQ(seen, (std::vector<int>{1, 2, 1, 0, 1, 0, 1, 0, 1, 0, 1, 0}));
}

// The walls' picture is kept, but not when longer names move them.
TEST_F(FolderChartTest, wallsFollowTheLabels) {
    std::vector<ChartEntry> entries = ascending(4);
    chart.setEntries(entries);
    const QImage before = chart.grab().toImage();
    entries[2].label = std::string(40, 'n');
    chart.setEntries(entries, FolderChart::View::kept);
    const QImage moved = chart.grab().toImage();
    FolderChart fresh;
    fresh.resize(chart.size());
    fresh.setEntries(entries);
    EXPECT_NE(moved, before);
    EXPECT_EQ(moved, fresh.grab().toImage());
}

// The window's own commands may use these keys when the chart does not.
TEST_F(FolderChartTest, keysWithoutUsePassOn) {
    chart.setEntries(ascending(5));
    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_Backspace, Qt::NoModifier), std::pair(Qt::Key_Up, Qt::AltModifier),
          std::pair(Qt::Key_Left, Qt::AltModifier), std::pair(Qt::Key_Home, Qt::AltModifier)}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&chart, &event);
        EXPECT_FALSE(event.isAccepted()) << key;
    }
    EXPECT_EQ(chart.selected(), -1);
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
