#include "widgets/chartPainting.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
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
    const ChartFrame frame(QRectF(0, 0, 900, 600), QApplication::font());
    ChartState state = stateOf(entries);
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

// Whatever the size and the entries, marks and labels stay within the panel and do not overlap.
TEST(ChartPainting, nothingOverlapsOrLeavesThePanel) {
    std::vector<ChartEntry> names = ascending(15);
    names[3].label = std::string(255, 'W');
    names[7].label = "\u0645\u062c\u0644\u062f \U0001f600";
    for (const QSize size : {QSize(400, 250), QSize(900, 600), QSize(3000, 1800)}) {
        const ChartFrame frame(QRectF(QPointF(), size), QApplication::font());
        for (const std::vector<ChartEntry>& entries : {ascending(1), names, ascending(10000)}) {
            for (const ChartStyle style : {ChartStyle::bar, ChartStyle::pie}) {
                const ChartLayout layout(frame, stateOf(entries, style));
                std::vector<QRectF> texts;
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

TEST(ChartPainting, pointsFindTheirEntries) {
    const std::vector<ChartEntry> entries = ascending(30);
    const ChartFrame frame(QRectF(0, 0, 900, 600), QApplication::font());
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
