#include "widgets/chartPainting.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QImage>
#include <QRegularExpression>
#include <cmath>
#include <string>

#include "widgets/chartEntries.h"

namespace {

QImage painted(const ChartState& state, QSize size) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    chartPainting::paint(painter, QRectF(QPointF(), size), state);
    return image;
}

} // namespace

TEST(ChartPainting, barsFollowTheirValues) {
    std::vector<ChartEntry> entries = ascending(40);
    entries[0].size = -8 * 1048576.0; // a file whose recorded size wrapped
    ChartState state = stateOf(entries);
    const ChartFrame frame(QRectF(0, 0, 900, 600), state);
    state.position = 25;
    const ChartBars bars(frame, state);
    ASSERT_EQ(bars.bars.size(), 15U);
    EXPECT_EQ(bars.bars.front().index, 0);
    EXPECT_EQ(bars.bars.back().index, 14);
    EXPECT_LE(bars.axis.first, -1);
    for (std::size_t i = 0; i < bars.bars.size(); ++i) {
        const ChartBar& bar = bars.bars[i];
        const bool negative = i == 0;
        EXPECT_NEAR(bar.front.width(), std::fabs(bar.megabytes) * bars.pixelsPerMegabyte, 1.5);
        EXPECT_NEAR(negative ? bar.front.left() - bar.mark.right() : bar.mark.left() - bar.front.right(),
                    20 + (negative ? 0 : bars.depth.x()), 1);
        EXPECT_TRUE(frame.panel.contains(bar.mark)) << i;
        EXPECT_TRUE(i == 0 || bar.front.bottom() < bars.bars[i - 1].front.top());
    }
}

TEST(ChartPainting, changesStandToBothSidesOfTheMiddle) {
    for (const int count : {1, 2, 15, 200}) {
        std::vector<ChartEntry> entries = ascending(count); // the largest shrinks
        for (std::size_t i = 1; i <= entries.size(); i += 2) {
            entries[entries.size() - i].size *= -1;
        }
        ChartState state = stateOf(entries);
        state.values = ChartValues::changes;
        state.entire = true;
        const ChartFrame frame(QRectF(0, 0, 900, 600), state);
        const ChartBars bars(frame, state);
        EXPECT_NEAR(bars.zero, frame.plot.center().x(), 1);
        std::vector<QRectF> marks;
        for (const ChartBar& bar : bars.bars) {
            EXPECT_EQ(bar.front.center().x() < bars.zero + frame.depth.x() / 2, bar.megabytes < 0) << count;
            EXPECT_NEAR(bar.front.width(), std::max(std::fabs(bar.megabytes) * bars.pixelsPerMegabyte, 1.0),
                        1.5);
            if (bar.hasTexts()) {
                EXPECT_EQ(bar.mark.center().x() < bars.zero, bar.megabytes < 0) << count;
                EXPECT_TRUE(bar.value.startsWith(bar.megabytes < 0 ? u'-' : u'+'));
                EXPECT_TRUE(frame.panel.contains(bar.mark)) << count;
                for (const QRectF& other : marks) {
                    EXPECT_FALSE(bar.mark.intersects(other)) << count;
                }
                marks.push_back(bar.mark);
            }
        }
    }
}

// Whatever the size and the entries, marks and labels stay within the panel and do not overlap.
TEST(ChartPainting, nothingOverlapsOrLeavesThePanel) {
    std::vector<ChartEntry> names = ascending(15);
    names[3].label = std::string(255, 'W');
    names[7].label = "\u0645\u062c\u0644\u062f \U0001f600";
    for (const QSize size : {QSize(400, 250), QSize(900, 600), QSize(3000, 1800)}) {
        for (const std::vector<ChartEntry>& entries : {ascending(1), names, ascending(10000)}) {
            for (const ChartStyle style : {ChartStyle::bar, ChartStyle::pie}) {
                ChartState state = stateOf(entries, style);
                state.folder = QStringLiteral("/folder").repeated(40);
                const ChartFrame frame(QRectF(QPointF(), size), state);
                const ChartLayout layout(frame, state);
                const ChartHeading& heading = layout.heading();
                std::vector<QRectF> texts{heading.nameArea, heading.figuresArea};
                EXPECT_FALSE(heading.nameArea.isEmpty());
                if (layout.bars()) {
                    for (const ChartBar& bar : layout.bars()->bars) {
                        texts.insert(texts.end(), {bar.labelArea, bar.mark});
                    }
                } else {
                    for (const ChartPieSlice& slice : layout.pie()->slices) {
                        ASSERT_FALSE(slice.label.isNull());
                        texts.push_back(slice.label);
                    }
                    texts.push_back(layout.pie()->top);
                }
                for (std::size_t i = 0; i < texts.size(); ++i) {
                    EXPECT_TRUE(frame.panel.contains(texts[i])) << size.width() << ' ' << i;
                    for (std::size_t j = 0; j < i; ++j) {
                        EXPECT_FALSE(texts[i].intersects(texts[j])) << size.width() << ' ' << i << ' ' << j;
                    }
                }
            }
        }
    }
}

// Labels take what their names need, but no less than 100 pixels (or three tenths of a narrow chart) and no
// more than a third of the chart.
TEST(ChartPainting, labelsTakeTheRoomThatNamesNeed) {
    constexpr double gap = 6;
    for (const int width : {300, 900, 1600}) {
        for (const int letters : {3, 25, 400}) {
            std::vector<ChartEntry> entries = ascending(15);
            entries[4].label = std::string(static_cast<std::size_t>(letters), 'n');
            const ChartState state = stateOf(entries);
            const ChartFrame frame(QRectF(0, 0, width, 600), state);
            const double least = std::min(100.0 * frame.scale, width * 0.3);
            const double most = std::max(width / 3.0, least);
            const double name =
                QFontMetricsF(frame.labelFont).horizontalAdvance(QString::fromStdString(entries[4].label));
            const double wanted = std::clamp(name, least, most);
            EXPECT_NEAR(frame.labelWidth, wanted, 1) << width << ' ' << letters;
            EXPECT_NEAR(frame.plot.left(), width * 0.05 + wanted + gap * frame.scale, 2);
            const ChartBars bars(frame, state);
            EXPECT_EQ(bars.bars[4].label.contains(QChar(0x2026)), name > most + 1) << width << ' ' << letters;
        }
    }
    // While the chart is scrolled, its walls stay.
    std::vector<ChartEntry> many = ascending(40);
    many[10].label = std::string(60, 'n');
    ChartState state = stateOf(many);
    const ChartFrame frame(QRectF(0, 0, 900, 600), state);
    state.position = 25;
    EXPECT_EQ(ChartFrame(QRectF(0, 0, 900, 600), state).plot, frame.plot);
}

// The line counts what is in view, and is left out where it would say nothing or take the room of bars.
TEST(ChartPainting, lineBelowTheTitleFollowsTheView) {
    const std::vector<ChartEntry> many = ascending(40);
    const std::vector<ChartEntry> empty{{"a", 0}, {"b", 0}};
    const QString folder =
        QStringLiteral("/home/") + QStringLiteral("long/").repeated(60) + QStringLiteral("end");
    struct Case {
        const std::vector<ChartEntry>& entries;
        ChartStyle style;
        bool entire;
        QSize size;
        const char* shown; // a pattern; null for no line
    };
    for (const Case& c : {Case{many, ChartStyle::bar, false, {900, 600}, "15 of 40 shown"},
                          Case{many, ChartStyle::bar, false, {900, 240}, "[5-9] of 40 shown"},
                          Case{many, ChartStyle::bar, true, {900, 2000}, "40 of 40 shown"},
                          Case{many, ChartStyle::pie, false, {900, 600}, "15 of 40 shown"},
                          Case{many, ChartStyle::bar, false, {900, 180}, nullptr},
                          Case{empty, ChartStyle::pie, false, {900, 600}, nullptr},
                          Case{{}, ChartStyle::bar, false, {900, 600}, nullptr}}) {
        ChartState state = stateOf(c.entries, c.style);
        state.entire = c.entire;
        state.folder = folder;
        const ChartLayout layout(ChartFrame(QRectF(QPointF(), c.size), state), state);
        const ChartHeading& heading = layout.heading();
        EXPECT_EQ(heading.nameArea.isNull(), c.shown == nullptr);
        if (c.shown != nullptr) {
            const QRegularExpression end(QStringLiteral(" %1$").arg(QString::fromUtf8(c.shown)));
            EXPECT_TRUE(end.match(heading.figures).hasMatch()) << heading.figures.toStdString();
            EXPECT_TRUE(heading.name.startsWith(QStringLiteral("/home/")) &&
                        heading.name.endsWith(QStringLiteral("end")) && heading.name.size() < folder.size())
                << heading.name.toStdString();
        }
    }
}

TEST(ChartPainting, pointsFindTheirEntries) {
    const std::vector<ChartEntry> entries = ascending(30);
    const ChartFrame frame(QRectF(0, 0, 900, 600), stateOf(entries));
    const ChartLayout bars(frame, stateOf(entries));
    for (const ChartBar& bar : bars.bars()->bars) {
        for (const QPointF point : {bar.front.center(), bar.mark.center(), (bar.markFrom + bar.markTo) / 2}) {
            EXPECT_EQ(bars.hit(point).index, bar.index);
            EXPECT_EQ(bars.hit(point).part, ChartHit::Part::value);
        }
        EXPECT_EQ(bars.hit(bar.labelArea.center()).part, ChartHit::Part::label);
    }
    EXPECT_EQ(bars.hit({5, 5}), ChartHit());

    const ChartLayout pie(frame, stateOf(entries, ChartStyle::pie));
    ASSERT_EQ(pie.pie()->slices.size(), 16U);
    for (const ChartPieSlice& slice : pie.pie()->slices) {
        const QPointF middle = (pie.pie()->top.center() + pie.pie()->onEdge(slice.middle())) / 2;
        EXPECT_EQ(pie.hit(middle).part, ChartHit::Part::value);
        EXPECT_EQ(pie.hit(middle).index, slice.index);
        EXPECT_EQ(pie.hit(slice.label.center()).index, slice.index);
    }
    EXPECT_EQ(pie.hit({5, 5}), ChartHit());
}

TEST(ChartPainting, nothingToShowAndNoRoomAreFine) {
    const std::vector<ChartEntry> none;
    const std::vector<ChartEntry> zeros{{"a", 0}, {"b", 0}};
    for (const QSize size : {QSize(8, 8), QSize(60, 30), QSize(200, 140)}) {
        for (const ChartStyle style : {ChartStyle::bar, ChartStyle::pie}) {
            for (const std::vector<ChartEntry>& entries : {none, zeros, ascending(3)}) {
                EXPECT_NE(painted(stateOf(entries, style), size).pixel(0, 0), QColor(Qt::magenta).rgb());
            }
        }
    }
}
