#pragma once

#include <QString>
#include <vector>

#include "views/chartAxis.h"
#include "widgets/chartFrame.h"
#include "widgets/chartHit.h"
#include "widgets/chartState.h"

// One bar in view, with its label on the left and its mark at the end.
struct ChartBar {
    int index = 0; // the entry's index; if the bar stands for several entries, that of the largest
    double megabytes = 0;
    QString label; // shortened to fit
    QString value;
    QRectF labelArea;
    QRectF front; // of the front face
    QRectF mark;
    QPointF markFrom; // the start of the mark's line
    QPointF markTo;

    // Whether the bar has a label and a mark; every bar does if there is room.
    [[nodiscard]] bool hasTexts() const { return !mark.isNull(); }
};

// The places of the bars in view, smallest first (at the bottom); those of changes stand to both sides of the
// middle. The axis covers only the bars in view, so
// that even very small ones can be told apart after scrolling to them. If all bars of a large folder are in
// view, only some have texts; if there are more bars than pixels, one bar stands for several entries.
struct ChartBars {
    ChartBars(const ChartFrame& frame, const ChartState& state);

    std::vector<ChartBar> bars;
    ChartAxis axis;
    bool boxes = true; // false if bars are too thin for edges and sides
    QPointF depth;     // of a bar
    double zero = 0;   // x of the value 0 on the front plane
    double pixelsPerMegabyte = 0;

    [[nodiscard]] double x(double megabytes) const { return zero + megabytes * pixelsPerMegabyte; }
    [[nodiscard]] ChartHit hit(QPointF point) const;
    // The place for the tip of an entry; null if the entry is not in view.
    [[nodiscard]] QRectF markOf(int index) const;

private:
    double writeTexts(const ChartFrame& frame, const ChartState& state);
    void setRange(const ChartFrame& frame, double markWidth);
    [[nodiscard]] const ChartBar& longestBeside(std::size_t index, std::size_t besides) const;
    void place(const ChartFrame& frame);
    void placeMark(const ChartFrame& frame, std::size_t index);

    ChartValues values_;
    double slot_ = 0; // height of a bar and the gap above it
};
