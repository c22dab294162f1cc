#pragma once

#include <QByteArray>
#include <QLocale>
#include <QPageSize>
#include <QString>
#include <string_view>
#include <vector>

#include "widgets/chartLayout.h"
#include "widgets/chartState.h"
#include "widgets/folderChart.h"

// The chart as the content of a picture file, drawn from the chart's state without the screen and without
// highlights. It copies everything it needs, so that another thread can create the bytes.
class ChartPicture {
public:
    enum class Format { png, pdf };
    enum class Portion {
        visible, // what the chart shows on the screen
        entire,  // all bars with readable labels, or the pie with its room for labels
    };

    // A PDF document has pages of paper, landscape: the visible portion fills one; the entire chart is drawn
    // for them and continues from one to the next.

    // The entire chart as a PNG picture is at least as wide as on the screen, and has at least this width per
    // data point: 315 twentieths of a point at the 96 pixels per inch of an ordinary screen.
    static constexpr double widthPerDataPoint = 315.0 / 20 / 72 * 96;

    // A picture is never larger than this; instead, bars get thinner and some have no labels.
    static constexpr int longestSide = 32'000;        // pixels
    static constexpr double mostPixels = 100'000'000; // of a PNG picture, drawn with four bytes per pixel

    // For a save dialog, in the form of the reports' filters.
    static constexpr std::string_view filter =
        "PNG Pictures (*.png)|*.png|PDF Documents (*.pdf)|*.pdf|All Files (*.*)|*.*";
    // From the extension: PDF for ".pdf" in any case, PNG for everything else.
    [[nodiscard]] static Format formatOf(std::string_view fileName);

    // Letter where that is the paper in use, A4 elsewhere.
    [[nodiscard]] static QPageSize::PageSizeId paperOf(const QLocale& locale);

    // The date is shown behind the folder and its total.
    ChartPicture(const FolderChart& chart, Portion portion, Format format, const QString& date = {});
    // `size` is the size of the chart on the screen in its pixels; `pixelRatio` is the number of device
    // pixels per pixel.
    ChartPicture(const ChartState& state, const QSizeF& size, double pixelRatio, Portion portion,
                 Format format, const QString& date = {});
    ChartPicture(const ChartPicture&) = delete; // the state refers to the entries
    ChartPicture& operator=(const ChartPicture&) = delete;

    [[nodiscard]] const ChartLayout& layout() const noexcept { return layout_; }
    // Pixels of a PNG picture per unit of the layout: those of the screen, or fewer for a very large picture.
    [[nodiscard]] double pixelRatio() const noexcept { return pixelRatio_; }
    // Where the pages of a PDF document end, in units of the layout; none parts a bar with its texts.
    [[nodiscard]] std::vector<double> pageEnds() const;

    // The file's content. Throws 7 if there is not enough memory.
    [[nodiscard]] QByteArray bytes() const;

private:
    [[nodiscard]] QSizeF size() const { return layout_.frame().panel.size(); }
    void paint(QPainter& painter, const ChartLayout& layout) const;
    [[nodiscard]] double pageScale() const;
    [[nodiscard]] QByteArray png() const;
    [[nodiscard]] QByteArray pdf() const;

    Format format_;
    std::vector<ChartEntry> entries_;
    ChartState state_; // refers to the entries above
    ChartLayout layout_;
    double pixelRatio_;
};
