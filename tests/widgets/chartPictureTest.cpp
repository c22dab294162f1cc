#include "widgets/chartPicture.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QRegularExpression>
#include <QTest>
#include <algorithm>
#include <string>

#include "widgets/chartEntries.h"

namespace {

using Format = ChartPicture::Format;
using Portion = ChartPicture::Portion;

QImage opaque(const QImage& image) {
    return image.convertToFormat(QImage::Format_RGB32);
}

QImage visiblePicture(const FolderChart& chart) {
    return opaque(QImage::fromData(ChartPicture(chart, Portion::visible, Format::png).bytes()));
}

} // namespace

TEST(ChartPicture, formatFollowsTheExtension) {
    for (const char* name : {"a.pdf", "A.PDF", "folder.png\\chart.Pdf"}) {
        EXPECT_EQ(ChartPicture::formatOf(name), Format::pdf) << name;
    }
    for (const char* name : {"a.png", "pdf", "a.pdf.png", "a.pdf\\chart", ""}) {
        EXPECT_EQ(ChartPicture::formatOf(name), Format::png) << name;
    }
}

TEST(ChartPicture, entireChartIsWidenedWithinBounds) {
    struct Case {
        int entries;
        ChartStyle style;
        QSize shown;
        double screenRatio;
        int width;
        double ratio;
    };
    for (const Case& c :
         {Case{40, ChartStyle::bar, {900, 600}, 2, 900, 2},
          Case{50, ChartStyle::bar, {900, 600}, 1.5, 1050, 1.5},
          Case{300, ChartStyle::bar, {900, 600}, 2, 6300, 1.25},
          Case{100, ChartStyle::pie, {900, 600}, 1, 2100, 1},
          Case{10'000, ChartStyle::pie, {900, 600}, 2, 32'000, 1},
          Case{10'000, ChartStyle::bar, {900, 600}, 2, 3125, 1},
          Case{0, ChartStyle::bar, {900, 600}, 1, 900, 1}, Case{3, ChartStyle::bar, {20, 20}, 1, 400, 1}}) {
        const std::vector<ChartEntry> entries = ascending(c.entries);
        const ChartPicture picture(stateOf(entries, c.style), c.shown, c.screenRatio, Portion::entire,
                                   Format::png);
        const QSizeF size = picture.layout().frame().panel.size();
        EXPECT_EQ(size.width(), c.width) << c.entries;
        EXPECT_TRUE(c.style == ChartStyle::bar || size.height() == c.shown.height()) << c.entries;
        EXPECT_EQ(picture.pixelRatio(), c.ratio) << c.entries;
        EXPECT_LE(size.height() * c.ratio, 32'000) << c.entries;
        EXPECT_LE(size.width() * size.height() * c.ratio * c.ratio, 100e6) << c.entries;
    }
}

// The picture has all bars, complete and in order, without overlaps; so are their texts. If there are fewer
// pixels than entries, every seventh entry has a bar.
TEST(ChartPicture, entireChartHasAllBars) {
    struct Case {
        int entries;
        QSize shown;
        double leastSlot;
        std::size_t bars;
        std::size_t leastTexts;
    };
    for (const Case& c :
         {Case{1, {900, 600}, 0, 1, 1}, Case{40, {200, 140}, 15, 40, 40}, Case{300, {900, 600}, 30, 300, 300},
          Case{5000, {900, 600}, 6, 5000, 1000}, Case{10'000, {900, 600}, 3, 10'000, 1000},
          Case{200'000, {900, 600}, 1, 28'572, 1000}}) {
        std::vector<ChartEntry> entries = ascending(c.entries);
        for (std::size_t i = 0; i < entries.size() / 3; ++i) {
            entries[i].size -= c.entries * 500'000.0; // some are negative
        }
        const ChartPicture picture(stateOf(entries), c.shown, 1, Portion::entire, Format::png);
        const ChartFrame& frame = picture.layout().frame();
        const std::vector<ChartBar>& bars = picture.layout().bars()->bars;
        ASSERT_EQ(bars.size(), c.bars);
        EXPECT_EQ(bars.back().index, c.entries - 1);
        EXPECT_GE(frame.plot.height(), c.leastSlot * static_cast<double>(c.bars));
        std::vector<ChartBar> withTexts;
        for (std::size_t i = 0; i < bars.size(); ++i) {
            ASSERT_TRUE(frame.plot.united(frame.backWall()).contains(bars[i].front)) << c.entries << ' ' << i;
            ASSERT_TRUE(i == 0 || bars[i - 1].front.top() > bars[i].front.bottom() - 1e-6)
                << c.entries << ' ' << i;
            if (bars[i].hasTexts()) {
                withTexts.push_back(bars[i]);
            }
        }
        EXPECT_TRUE(bars.back().hasTexts());
        EXPECT_GE(withTexts.size(), c.leastTexts);
        for (std::size_t i = 1; i < withTexts.size(); ++i) {
            const ChartBar& bar = withTexts[i];
            ASSERT_TRUE(frame.panel.contains(bar.mark) && frame.panel.contains(bar.labelArea)) << i;
            ASSERT_FALSE(withTexts[i - 1].mark.intersects(bar.mark)) << c.entries << ' ' << i;
            ASSERT_FALSE(withTexts[i - 1].labelArea.intersects(bar.labelArea)) << c.entries << ' ' << i;
        }
    }
}

TEST(ChartPicture, visiblePortionIsTheScreenWithoutHighlights) {
    FolderChart chart;
    chart.resize(700, 450);
    chart.setEntries(ascending(60));
    chart.setPosition(20);
    chart.show();
    const QImage plain = opaque(chart.grab().toImage());
    EXPECT_EQ(visiblePicture(chart), plain);

    QTest::mouseMove(&chart, {5, 5}); // otherwise it might not move at all
    QTest::mouseMove(&chart, chart.markOf(30).center().toPoint());
    const QImage highlighted = opaque(chart.grab().toImage());
    ASSERT_NE(highlighted, plain);
    EXPECT_EQ(visiblePicture(chart), plain);
    for (const Format format : {Format::png, Format::pdf}) {
        EXPECT_FALSE(ChartPicture(chart, Portion::entire, format).bytes().isEmpty());
    }
    EXPECT_EQ(opaque(chart.grab().toImage()), highlighted);
    EXPECT_EQ(chart.position(), 20);
}

TEST(ChartPicture, filesAreWhatTheyClaimToBe) {
    const std::vector<ChartEntry> entries = ascending(40);
    const ChartPicture png(stateOf(entries), QSize(300, 200), 1.5, Portion::entire, Format::png);
    const QImage image = QImage::fromData(png.bytes());
    EXPECT_EQ(image.size(), (png.layout().frame().panel.size() * 1.5).toSize());
    EXPECT_NEAR(image.dotsPerMeterX() * 0.0254, 96 * 1.5, 0.1);
    EXPECT_EQ(image.text(QStringLiteral("Title")), QStringLiteral("Spannory"));

    const QPageSize paper(ChartPicture::paperOf(QLocale::system()));
    const QSize points = paper.sizePoints().transposed();
    const QRegularExpression box(QStringLiteral("/MediaBox \\[0 0 %1(\\.0+)? %2(\\.0+)? ?\\]")
                                     .arg(points.width())
                                     .arg(points.height()));
    for (const ChartStyle style : {ChartStyle::bar, ChartStyle::pie}) {
        for (const QSize shown : {QSize(300, 200), QSize(16'000, 32'000)}) {
            for (const Portion portion : {Portion::visible, Portion::entire}) {
                const ChartPicture pdf(stateOf(entries, style), shown, 2, portion, Format::pdf);
                const bool several = style == ChartStyle::bar && portion == Portion::entire;
                const QByteArray bytes = pdf.bytes();
                EXPECT_TRUE(bytes.startsWith("%PDF"));
                EXPECT_TRUE(box.match(QString::fromLatin1(bytes)).hasMatch()) << box.pattern().toStdString();
                EXPECT_EQ(static_cast<std::size_t>(bytes.count("/Type /Page\n")), pdf.pageEnds().size());
                EXPECT_EQ(pdf.pageEnds().size() > 1, several);
                EXPECT_FALSE(bytes.contains("/SMask <<")); // the sign of a fading gradient
            }
        }
    }
}

TEST(ChartPicture, paperIsThatOfTheRegion) {
    EXPECT_EQ(ChartPicture::paperOf(QLocale(QLocale::English, QLocale::UnitedStates)), QPageSize::Letter);
    EXPECT_EQ(ChartPicture::paperOf(QLocale(QLocale::French, QLocale::Canada)), QPageSize::Letter);
    EXPECT_EQ(ChartPicture::paperOf(QLocale(QLocale::English, QLocale::UnitedKingdom)), QPageSize::A4);
    EXPECT_EQ(ChartPicture::paperOf(QLocale::c()), QPageSize::A4);
}

// No page ends within a text, nor, unless bars are too thin for texts of their own, within a bar.
TEST(ChartPicture, pagesEndBetweenBars) {
    for (const int count : {1, 15, 40, 300, 10'000}) {
        const std::vector<ChartEntry> entries = ascending(count);
        const ChartPicture picture(stateOf(entries), QSize(700, 500), 1, Portion::entire, Format::pdf);
        const ChartBars& bars = *picture.layout().bars();
        const std::vector<double> ends = picture.pageEnds();
        EXPECT_TRUE(std::is_sorted(ends.begin(), ends.end()));
        EXPECT_EQ(ends.back(), picture.layout().frame().panel.height());
        EXPECT_EQ(ends.size() > 1, count > 15);
        const bool whole = bars.bars.size() < 2 || bars.bars[bars.bars.size() - 2].hasTexts();
        for (const ChartBar& bar : bars.bars) {
            const QRectF box = bar.front.adjusted(0, bars.depth.y(), 0, 0);
            const QRectF texts = bar.mark.united(bar.labelArea);
            const QRectF all = whole ? texts.united(box) : texts;
            const auto page = std::upper_bound(ends.begin(), ends.end(), all.top());
            ASSERT_NE(page, ends.end());
            EXPECT_TRUE(!bar.hasTexts() || all.bottom() <= *page + 1) << count << ' ' << bar.index;
        }
    }
}

// Away from the screen, the line below the title is all that tells what was when.
TEST(ChartPicture, namesFolderAndDate) {
    FolderChart chart;
    chart.resize(900, 600);
    chart.setFolder(QStringLiteral("/here"));
    chart.setEntries(ascending(20));
    const QString date = QStringLiteral("11/22/26 04:05 PM");
    for (const auto& [portion, shown] : {std::pair(Portion::visible, 15), std::pair(Portion::entire, 20)}) {
        const ChartPicture picture(chart, portion, Format::png, date);
        EXPECT_EQ(picture.layout().heading().name, chart.state().folder);
        EXPECT_EQ(picture.layout().heading().figures,
                  QStringLiteral(" \u00b7 210.0 Mb \u00b7 %1 of 20 shown \u00b7 %2").arg(shown).arg(date));
    }
}
