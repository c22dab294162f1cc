#pragma once

#include <QByteArray>
#include <QSize>
#include <string_view>
#include <vector>

#include "views/widgets/chartLayout.h"
#include "views/widgets/chartState.h"
#include "views/widgets/folderChart.h"

// The chart as the content of a picture file, drawn from what the chart shows and never on the screen; it
// shows no highlights. It holds a copy of all that it needs, so that its bytes can be made by another thread.
class ChartPicture {
public:
    enum class Format { png, pdf };
    enum class Portion {
        visible, // the chart as it is on the screen
        entire,  // all bars with readable labels, or the pie with its room for labels
    };

    // The entire chart is as wide as it is on the screen, or this for each data point where that is more:
    // 315 twentieths of a point, at the 96 pixels to an inch that an ordinary screen has.
    static constexpr double widthPerDataPoint = 315.0 / 20 / 72 * 96;

    // A picture is no larger: bars then become thinner, and some have no labels.
    static constexpr int longestSide = 32'000;        // pixels
    static constexpr double mostPixels = 100'000'000; // of a PNG picture; four bytes each while it is drawn
    static constexpr double longestPage = 14'400; // points, of a PDF page; larger pictures are scaled down

    // For a Save dialog, in the form of the reports' filters.
    static constexpr std::string_view filter =
        "PNG Pictures (*.png)|*.png|PDF Documents (*.pdf)|*.pdf|All Files (*.*)|*.*";
    // By the extension: PDF for ".pdf", however written, PNG for all else.
    [[nodiscard]] static Format formatOf(std::string_view fileName);

    ChartPicture(const FolderChart& chart, Portion portion, Format format);
    // The size of the chart on the screen, in its pixels, and the screen's device pixels for each of those.
    ChartPicture(const ChartState& state, const QSizeF& size, double pixelRatio, Portion portion,
                 Format format);
    ChartPicture(const ChartPicture&) = delete; // the state refers to the entries
    ChartPicture& operator=(const ChartPicture&) = delete;

    [[nodiscard]] const ChartLayout& layout() const noexcept { return layout_; }
    // Pixels of a PNG picture for each unit of the layout: the screen's, or fewer for a very large picture.
    [[nodiscard]] double pixelRatio() const noexcept { return pixelRatio_; }
    // Of the PDF page, in points.
    [[nodiscard]] QSize page() const;

    // The file's content. Throws 7 when there is no memory for it.
    [[nodiscard]] QByteArray bytes() const;

private:
    [[nodiscard]] QSizeF size() const { return layout_.frame().panel.size(); }
    void paint(QPainter& painter) const;
    [[nodiscard]] QByteArray png() const;
    [[nodiscard]] QByteArray pdf() const;

    Format format_;
    std::vector<ChartEntry> entries_;
    ChartState state_; // of the entries above
    ChartLayout layout_;
    double pixelRatio_;
};
