#include "widgets/chartColours.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <array>
#include <cmath>

#include "widgets/chartEntries.h"
#include "widgets/chartPicture.h"

namespace {

QPalette paletteOf(QRgb window, QRgb text) {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor::fromRgb(window));
    palette.setColor(QPalette::WindowText, QColor::fromRgb(text));
    return palette;
}

// As WCAG has it: 1 to 21; texts that can be read well have 4.5 and more.
double contrast(QRgb one, QRgb other) {
    const auto luminance = [](QRgb colour) {
        const auto linear = [](int value) {
            const double share = value / 255.0;
            return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) +
               0.0722 * linear(qBlue(colour));
    };
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

TEST(ChartColours, areTheUsualOnesInEveryLightPalette) {
    for (const auto& [window, text] :
         {std::pair(0xffffffffU, 0xff000000U), std::pair(0xffefefefU, 0xff303030U),
          std::pair(0xff808080U, 0xff808080U)}) {
        EXPECT_EQ(ChartColours::of(paletteOf(window, text)), ChartColours()) << window;
    }
}

TEST(ChartColours, canBeReadInDarkPalettes) {
    constexpr double readable = 4.5;
    constexpr double visible = 1.8;
    for (const auto& [window, text] :
         {std::pair(0xff353535U, 0xffffffffU), std::pair(0xff000000U, 0xffffffffU),
          std::pair(0xff1e1e2eU, 0xffcdd6f4U), std::pair(0xff2a2a2aU, 0xffd0d0d0U)}) {
        const ChartColours c = ChartColours::of(paletteOf(window, text));
        SCOPED_TRACE(window);
        EXPECT_TRUE(c.dark);
        for (const QRgb ground : {c.panelStart, c.panelEnd}) {
            for (const QRgb ink : {c.titleText, c.labelText, c.quietText, c.accentText}) {
                EXPECT_GT(contrast(ink, ground), readable) << ink << ' ' << ground;
            }
        }
        EXPECT_GT(contrast(c.labelText, c.markFill), readable);
        EXPECT_GT(contrast(c.labelText, c.hoveredFill), readable);
        EXPECT_GT(contrast(c.selectedText, c.selectedFill), readable);
        for (const QRgb bar : {c.barStart, c.barEnd, c.thinStart, c.thinEnd, c.highlightEnd}) {
            EXPECT_GT(contrast(bar, c.backWallStart), visible) << bar;
        }
        EXPECT_LT(contrast(c.panelEnd, window), 1.3) << "the panel is as dark as the window";
    }
}

// What was painted before the change does not stay, and a document gets none of it.
TEST(ChartColours, followThePaletteWhileTheWindowIsOpen) {
    const QPalette before = QApplication::palette();
    for (const ChartStyle style : {ChartStyle::bar, ChartStyle::pie}) {
        FolderChart chart;
        chart.resize(700, 450);
        chart.setChartStyle(style);
        chart.setEntries(ascending(20));
        chart.setFolder(QStringLiteral("/here"));
        chart.show();
        const auto picture = [&] {
            return ChartPicture(chart, ChartPicture::Portion::visible, ChartPicture::Format::png).bytes();
        };
        const QImage light = chart.grab().toImage();
        const QByteArray pictured = picture();
        QApplication::setPalette(paletteOf(0xff303030U, 0xffffffffU));
        QApplication::processEvents();
        const QImage dark = chart.grab().toImage();
        for (const QPoint corner : {QPoint(5, 5), QPoint(694, 5), QPoint(5, 444), QPoint(694, 444)}) {
            EXPECT_LT(qGray(dark.pixel(corner)), 100);
            EXPECT_GT(qGray(light.pixel(corner)), 190);
        }
        EXPECT_EQ(picture(), pictured);
        QApplication::setPalette(before);
        QApplication::processEvents();
        EXPECT_EQ(chart.grab().toImage(), light);
    }
}

} // namespace
